// Carries out the commands on the open article that captions, keys and the menu give. User-interface thread.
#pragma once

#include <functional>
#include <utility>

#include "app/document/quill_doc.h"
#include "app/interaction/key_dispatch.h"
#include "app/page/article_view.h"
#include "render/article_bar.h"

namespace quillet {

class ArticleCommands {
 public:
  // What needs a window of its own. All must be set.
  struct Handlers {
    std::function<void()> refused;    // a command is of no use now
    std::function<void()> pushOn;     // asks for a longer text to push
    std::function<void()> giveMoney;  // asks for whom to give money to
  };
  // All outlive the object.
  ArticleCommands(CQuillDoc& doc, ArticleView& article, KeyDispatch& keys, Handlers handlers)
      : doc_(doc), article_(article), keys_(keys), handlers_(std::move(handlers)) {}

  void Perform(ArticleCommand command);

 private:
  CQuillDoc& doc_;
  ArticleView& article_;
  KeyDispatch& keys_;
  Handlers handlers_;
};

}  // namespace quillet
