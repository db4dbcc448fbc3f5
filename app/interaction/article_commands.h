// Carries out the commands on the open article that captions, keys and the menu give. User-interface thread.
#pragma once

#include <functional>
#include <utility>

#include "app/document/bookmarks.h"
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
  ArticleCommands(Bookmarks& bookmarks, ArticleView& article, KeyDispatch& keys, Handlers handlers)
      : bookmarks_(bookmarks), article_(article), keys_(keys), handlers_(std::move(handlers)) {}

  void Perform(ArticleCommand command);

 private:
  Bookmarks& bookmarks_;
  ArticleView& article_;
  KeyDispatch& keys_;
  Handlers handlers_;
};

}  // namespace quillet
