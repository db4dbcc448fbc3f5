// Carries out the commands on the open article that captions, keys and the menu give. User-interface thread.
#pragma once

#include <functional>

#include "app/article_view.h"
#include "app/key_dispatch.h"
#include "app/quill_doc.h"
#include "render/article_bar.h"

namespace quillet {

class ArticleCommands {
 public:
  // All outlive the object. `refused` is called when a command is of no use now.
  ArticleCommands(CQuillDoc& doc, ArticleView& article, KeyDispatch& keys, std::function<void()> refused)
      : doc_(doc), article_(article), keys_(keys), refused_(std::move(refused)) {}

  void Perform(ArticleCommand command);
  // The command whose caption names the key; kNone for another key.
  static ArticleCommand OfKey(const KeyPress& press);

 private:
  CQuillDoc& doc_;
  ArticleView& article_;
  KeyDispatch& keys_;
  std::function<void()> refused_;
};

}  // namespace quillet
