#include "bbs/automation/page_walk.h"

#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::string_view kLeaveKey = "q";

}  // namespace

PageWalk::PageWalk(ScreenWaits& waits) : waits_(waits), pages_(waits.Pages()), message_(ToBig5(u" ◆")) {}

PageWalk::Kind PageWalk::KindOf(const ScreenSnapshot& screen) const {
  if (pages_.IsEditor(screen) || pages_.IsPushLine(screen) || pages_.IsInputField(screen))
    return Kind::kTypedInto;
  // While the next page is drawn from the top, the old status line is still there.
  const bool parked = screen.cursorRow == kBottomRow && screen.cursorCol >= kReaderCursorCol;
  if ((parked &&
       (pages_.IsReader(screen, PageTests::ReaderForm::kPlain) || pages_.IsDisputedNotice(screen))) ||
      pages_.IsAnimationPrompt(screen))
    return Kind::kLeft;
  const bool atEnd = screen.cursorRow == kBottomRow && screen.cursorCol == kCols - 1;
  if (pages_.IsAnyKeyBanner(screen) || pages_.IsPause(screen) ||
      (atEnd && RowStartsWith(screen, kBottomRow, 0, std::string_view(message_))))
    return Kind::kPassed;
  return pages_.IsListCursor(screen) ? Kind::kList : Kind::kUnknown;
}

void PageWalk::Press(std::string_view key) {
  const ScreenSnapshot before = waits_.Seen();
  waits_.Send(key);
  waits_.WaitAtMost(kReaction, [&](const ScreenSnapshot& screen) {
    return screen.text != before.text || screen.cursorRow != before.cursorRow;
  });
}

PageWalk::Step PageWalk::ReachList() {
  for (int page = 0; page < kMostPagesLeft; ++page) {
    if (!waits_.DismissMessages()) return waits_.IsAlive() ? Step::kBusy : Step::kEnded;
    Kind kind = Kind::kUnknown;
    bool interrupted = false;
    waits_.WaitAtMost(kReaction, [&](const ScreenSnapshot& screen) {
      interrupted = pages_.IsStarLine(screen);
      kind = KindOf(screen);
      return interrupted || kind != Kind::kUnknown;
    });
    if (!waits_.IsAlive()) return Step::kEnded;
    if (interrupted) continue;
    if (kind == Kind::kList) return Step::kDone;
    if (kind == Kind::kTypedInto || kind == Kind::kUnknown) return Step::kBusy;
    Press(kind == Kind::kLeft ? kLeaveKey : ScreenWaits::kDismissKey);
  }
  return Step::kBusy;
}

}  // namespace quillet
