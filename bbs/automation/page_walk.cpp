#include "bbs/automation/page_walk.h"

#include "core/charset.h"
#include "core/key_sequence.h"

namespace quillet {
namespace {

constexpr std::string_view kLeaveKey = "q";

}  // namespace

PageWalk::PageWalk(ScreenWaits& waits, Milliseconds reaction)
    : waits_(waits),
      pages_(waits.Pages()),
      dialogue_(waits, Dialogue::Limits{.answer = reaction}),
      message_(ToBig5(u" ◆")) {}

PageWalk::Page PageWalk::PageOf(const ScreenSnapshot& screen) const {
  if (pages_.IsEditor(screen) || pages_.IsPushLine(screen) || pages_.IsInputField(screen))
    return Page::kTypedInto;
  // While the next page is drawn from the top, the old status line is still there.
  const bool parked = screen.cursorRow == kBottomRow && screen.cursorCol >= kReaderCursorCol;
  if (parked && pages_.IsReader(screen, PageTests::ReaderForm::kPlain)) return Page::kReader;
  if ((parked && pages_.IsDisputedNotice(screen)) || pages_.IsAnimationPrompt(screen)) return Page::kNotice;
  const bool atEnd = screen.cursorRow == kBottomRow && screen.cursorCol == kCols - 1;
  if (pages_.IsAnyKeyBanner(screen) || pages_.IsPause(screen) ||
      (atEnd && RowStartsWith(screen, kBottomRow, 0, std::string_view(message_))))
    return Page::kMessage;
  return pages_.IsListCursor(screen) ? Page::kList : Page::kUnknown;
}

std::optional<PageWalk::Page> PageWalk::Await() {
  for (int look = 0; look < kMostPagesLeft && waits_.DismissMessages(); ++look) {
    Page page = Page::kUnknown;
    bool interrupted = false;
    dialogue_.Await([&](const ScreenSnapshot& screen) {
      interrupted = pages_.IsStarLine(screen);
      page = PageOf(screen);
      return interrupted || page != Page::kUnknown;
    });
    // A prompt is given up before, and may be none.
    if (page == Page::kTypedInto)
      waits_.WaitAtMost(kDrawing, [&](const ScreenSnapshot& screen) {
        page = PageOf(screen);
        return page != Page::kTypedInto && page != Page::kUnknown;
      });
    if (!waits_.IsAlive()) return std::nullopt;
    if (!interrupted) return page;
  }
  return waits_.IsAlive() ? std::optional(Page::kUnknown) : std::nullopt;
}

PageWalk::Step PageWalk::ReachList() {
  for (int left = 0; left < kMostPagesLeft; ++left) {
    const std::optional<Page> page = Await();
    if (!page) return Step::kEnded;
    if (page == Page::kList) return Step::kDone;
    if (page == Page::kTypedInto || page == Page::kUnknown) return Step::kBusy;
    Leave(*page);
  }
  return Step::kBusy;
}

bool PageWalk::Press(std::string_view key) {
  return dialogue_.PressForReaction(key);
}

bool PageWalk::Leave(Page page) {
  return Press(page == Page::kMessage ? ScreenWaits::kDismissKey : kLeaveKey);
}

bool PageWalk::StepOut() {
  return Press(KeySequence(kKeyLeft));
}

}  // namespace quillet
