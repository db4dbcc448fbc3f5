#include "bbs/article/push_watch.h"

#include <utility>

#include "bbs/page_flags.h"
#include "core/charset.h"

namespace quillet {
PushWatch::PushWatch() : question_(ToBig5(u" 確定[y/N]:")) {}

bool PushWatch::Look(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  if (page.Shows(PF_STAR_LINE)) return false;  // lies over whatever it was
  if (page.Shows(PF_PUSH_CONFIRM)) {
    confirmed_ = true;
    return false;
  }
  // While the page is drawn anew, no flag says anything; the prompt and a refusal have one.
  if (page.Shows(PF_PUSH_LINE)) {
    confirmed_ = false;
    asked_ = AskedFor(screen);
    return false;
  }
  if (!page.Shows(PF_READING | PF_LIST_CURSOR)) return false;
  // An answer may come and go within one piece of what the BBS sends; then only the new line tells of it, on
  // this page or on one that follows.
  const bool pushed = std::exchange(confirmed_, false) || (page.Shows(PF_READING) && IsTakenUp(screen, page));
  if (pushed || page.Shows(PF_READ_END | PF_LIST_CURSOR)) asked_.clear();
  return pushed;
}

void PushWatch::Forget() {
  confirmed_ = false;
  asked_.clear();
}

std::string PushWatch::AskedFor(const ScreenSnapshot& screen) const {
  const std::string_view row = screen.RowText(kBottomRow);
  const int start = screen.cursorCol - static_cast<int>(question_.size());
  if (screen.cursorRow != kBottomRow || start <= 0 ||
      !row.substr(static_cast<std::size_t>(start)).starts_with(question_))
    return {};
  const std::size_t last = row.substr(0, static_cast<std::size_t>(start)).find_last_not_of(' ');
  const std::string_view push = row.substr(0, last == row.npos ? 0 : last + 1);
  // Without words it is the beginning of every push of his.
  return push.ends_with(':') ? std::string() : std::string(push) + ' ';
}

bool PushWatch::IsTakenUp(const ScreenSnapshot& screen, const UnderstoodPage& page) const {
  if (asked_.empty()) return false;
  for (int row = 0; row < kBottomRow; ++row)
    if (page.Line(row).push && screen.RowText(row).starts_with(asked_)) return true;
  return false;
}

}  // namespace quillet
