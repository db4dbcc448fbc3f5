#include "app/interaction/article_commands.h"

namespace quillet {
namespace {

// The BBS's own key for pushing the article that is open.
constexpr std::string_view kPushKey = "X";

}  // namespace

void ArticleCommands::Perform(ArticleCommand command) {
  switch (command) {
    case ArticleCommand::kBookmark:
      article_.OnUserKey();
      if (!bookmarks_.ToggleOpenArticle()) handlers_.refused();
      break;
    case ArticleCommand::kPush:
      keys_.Perform({.kind = KeyActionKind::kSendBytes, .bytes = std::string(kPushKey)});
      break;
    case ArticleCommand::kFirstPush:
      article_.GoToFirstPush();
      break;
    case ArticleCommand::kPushOn:
      handlers_.pushOn();
      break;
    case ArticleCommand::kGiveMoney:
      handlers_.giveMoney();
      break;
    case ArticleCommand::kNone:
      break;
  }
}

}  // namespace quillet
