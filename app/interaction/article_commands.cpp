#include "app/interaction/article_commands.h"

#include "platform/clock.h"

namespace quillet {

void ArticleCommands::Offer(CommandRunner& runner) {
  runner.On(Command::kBookmark, [this] { ToggleBookmark(); });
  runner.On(Command::kPush, [this] { Push(); });
  runner.On(Command::kFirstPush, [this] { article_.GoToFirstPush(); });
  runner.On(Command::kPushOn, handlers_.pushOn);
  runner.On(Command::kGiveMoney, handlers_.giveMoney);
}

void ArticleCommands::ToggleBookmark() {
  article_.OnUserKey();
  if (!bookmarks_.ToggleOpenArticle()) handlers_.refused();
}

void ArticleCommands::OnScreen() {
  gate_.OnScreen(handlers_.screen(), SteadyMilliseconds());
}

void ArticleCommands::Push() {
  // Given twice before the BBS asks, the second one would answer its question.
  const std::int64_t now = SteadyMilliseconds();
  const ScreenSnapshot& screen = handlers_.screen();
  if (gate_.IsWaiting(screen, now)) return;
  gate_.Sent(screen, now);
  keys_.SendBytes(std::string(SiteKeyOf(Command::kPush)));
}

}  // namespace quillet
