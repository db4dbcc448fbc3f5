// What the commands on the open article do, whatever they are given by: its captions, keys, the menu, the
// buttons beside the page. User-interface thread.
#pragma once

#include <functional>
#include <utility>

#include "app/document/bookmarks.h"
#include "app/interaction/command_runner.h"
#include "app/interaction/key_dispatch.h"
#include "app/page/article_view.h"
#include "input/answer_gate.h"

namespace quillet {

class ArticleCommands {
 public:
  // What needs a window of its own, or the window's own screen. All must be set.
  struct Handlers {
    std::function<void()> refused;    // a command is of no use now
    std::function<void()> pushOn;     // asks for a longer text to push
    std::function<void()> giveMoney;  // asks for whom to give money to
    std::function<const ScreenSnapshot&()> screen;
  };
  // All outlive the object.
  ArticleCommands(Bookmarks& bookmarks, ArticleView& article, KeyDispatch& keys, Handlers handlers)
      : bookmarks_(bookmarks), article_(article), keys_(keys), handlers_(std::move(handlers)) {}

  // The object outlives the runner's last command.
  void Offer(CommandRunner& runner);
  // The view has taken another screen over.
  void OnScreen();

 private:
  void ToggleBookmark();
  void Push();

  Bookmarks& bookmarks_;
  ArticleView& article_;
  KeyDispatch& keys_;
  Handlers handlers_;
  AnswerGate gate_;
};

}  // namespace quillet
