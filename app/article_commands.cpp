#include "app/article_commands.h"

namespace quillet {
namespace {

// The BBS's own key for pushing the article that is open.
constexpr std::string_view kPushKey = "X";

}  // namespace

ArticleCommand ArticleCommands::OfKey(const KeyPress& press) {
  if (press.control || press.alt) return ArticleCommand::kNone;
  if (press.text == u"m") return ArticleCommand::kBookmark;
  if (press.text == u"p") return ArticleCommand::kPush;
  return ArticleCommand::kNone;
}

void ArticleCommands::Perform(ArticleCommand command) {
  switch (command) {
    case ArticleCommand::kBookmark:
      article_.OnUserKey();
      if (!doc_.ToggleBookmark()) refused_();
      break;
    case ArticleCommand::kPush:
      keys_.Perform({.kind = KeyActionKind::kSendBytes, .bytes = std::string(kPushKey)});
      break;
    case ArticleCommand::kFirstPush:
      article_.GoToFirstPush();
      break;
    case ArticleCommand::kGiveMoney:
    case ArticleCommand::kPushOn:
    case ArticleCommand::kNone:
      break;
  }
}

}  // namespace quillet
