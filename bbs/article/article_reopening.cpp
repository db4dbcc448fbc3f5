#include "bbs/article/article_reopening.h"

#include <utility>

#include "bbs/article/article_lines.h"

namespace quillet {
namespace {

// Pages on which the keys of the way would do something else.
constexpr std::uint32_t kUnexpected = PF_PUSH_LINE | PF_MAIL_MENU | PF_ANIMATION_PROMPT | PF_PAUSE |
                                      PF_INPUT_FIELD | PF_STAR_LINE | PF_EDITOR | PF_ANYKEY_BANNER |
                                      PF_DISPUTED_NOTICE;

}  // namespace

void ArticleReopening::Begin(std::u16string author, std::int64_t now) {
  state_ = State::kLeaving;
  author_ = std::move(author);
  since_ = now;
}

ArticleReopening::Step ArticleReopening::OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page,
                                                  std::int64_t now) {
  const auto end = [this](Step step) {
    Stop();
    return step;
  };
  if (page.Shows(kUnexpected)) return end(Step::kFailed);
  if (state_ == State::kOpening) return IsWholeReaderPage(screen) ? end(Step::kArrived) : OnTick(now);
  if (!page.Shows(PF_ARTICLE_LIST_CURSOR)) return OnTick(now);
  if (ListedAuthor(screen, page, screen.cursorRow) != author_) return end(Step::kFailed);
  state_ = State::kOpening;
  since_ = now;
  return Step::kOpen;
}

ArticleReopening::Step ArticleReopening::OnTick(std::int64_t now) {
  if (now - since_ < kNoAnswer) return Step::kWait;
  Stop();
  return Step::kFailed;
}

}  // namespace quillet
