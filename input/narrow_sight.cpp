#include "input/narrow_sight.h"

#include <algorithm>
#include <utility>

#include "core/key_sequence.h"

namespace quillet {
namespace {

constexpr int kTopEntryRow = 3;
constexpr int kLowestEntryRow = kBottomRow - 1;

// Without the cursor's mark.
std::string LinesOf(const ScreenSnapshot& screen) {
  constexpr std::size_t kMark = 2;
  std::string lines;
  for (int row = kTopEntryRow; row < kBottomRow; ++row)
    lines += screen.RowText(row).substr(kMark);
  return lines;
}

bool IsList(PageKind kind) {
  return kind == PageKind::kList || kind == PageKind::kArticleList;
}

bool HasCursorOnEntry(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return page.Shows(PF_LIST_CURSOR) && screen.cursorRow >= kTopEntryRow &&
         screen.cursorRow <= kLowestEntryRow;
}

// Entries follow one another without a gap.
int LastEntry(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  int row = screen.cursorRow;
  while (row < kLowestEntryRow && !page.Line(row + 1).isBlank)
    ++row;
  return row;
}

std::string Moves(int from, int to) {
  std::string keys;
  for (int row = std::min(from, to); row < std::max(from, to); ++row)
    keys += KeySequence(from < to ? kKeyDown : kKeyUp);
  return keys;
}

bool IsPageKey(const KeyPress& press, int virtualKey, char control) {
  if (press.alt || press.shift) return false;
  return press.control ? press.virtualKey == control : press.virtualKey == virtualKey;
}

bool Types(const KeyPress& press, std::u16string_view characters) {
  return !press.control && !press.alt && press.text.size() == 1 &&
         characters.find(press.text.front()) != std::u16string_view::npos;
}

bool IsPlain(const KeyPress& press, int virtualKey) {
  return !press.control && !press.alt && !press.shift && press.virtualKey == virtualKey;
}

}  // namespace

void NarrowSight::SetRows(int rows) {
  rows_ = std::clamp(rows, 1, kRows - 1);
  top_ = std::min(top_, LastTop());
}

int NarrowSight::TopFor(int cursorRow) const {
  if (asksBelow_) return LastTop();
  if (cursorRow < 0 || cursorRow >= kBottomRow) return top_;
  return std::clamp(top_, std::max(0, cursorRow - rows_ + 1), std::min(cursorRow, LastTop()));
}

std::string NarrowSight::OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  const PageKind kind = page.kind;
  asksBelow_ = kind == PageKind::kTyping && screen.cursorRow == kBottomRow;
  // One that is half drawn, or a picture.
  if (kind == PageKind::kOther) return {};
  // The page that a question is about comes back.
  if (kind != PageKind::kTyping && std::exchange(kind_, kind) != kind) top_ = 0;
  if (asked_ && asked_->kind != kind) asked_.reset();
  std::string keys;
  if (HasCome(screen)) {
    const Way way = asked_->way;
    asked_.reset();
    top_ = way == Way::kOn ? 0 : LastTop();
    if (IsList(kind) && HasCursorOnEntry(screen, page)) {
      const int row = way == Way::kOn ? kTopEntryRow : LastEntry(screen, page);
      keys = Moves(screen.cursorRow, row);
    }
  }
  if (keys.empty() && !asksBelow_) top_ = TopFor(screen.cursorRow);
  return keys;
}

bool NarrowSight::HasCome(const ScreenSnapshot& screen) const {
  return asked_ && asked_->lines != LinesOf(screen);
}

std::optional<std::string> NarrowSight::OnKey(const KeyPress& press, const ScreenSnapshot& screen,
                                              const UnderstoodPage& page) {
  asked_.reset();
  if (!IsNarrow()) return std::nullopt;
  const PageKind kind = page.kind;
  const bool reads = kind == PageKind::kReader;
  top_ = TopFor(screen.cursorRow);
  if (!reads && !IsList(kind)) return std::nullopt;
  const bool pagesOn =
      IsPageKey(press, kKeyPageDown, 'F') || Types(press, u" ") || (reads && IsPlain(press, kKeyRight));
  const bool pagesBack = IsPageKey(press, kKeyPageUp, 'B');
  if (pagesOn || pagesBack) {
    const Way way = pagesOn ? Way::kOn : Way::kBack;
    return reads ? PageText(way, screen, page) : PageList(way, screen, page);
  }
  if (!reads) return std::nullopt;
  // Where the BBS's reader cannot go on by a line, the picture can.
  const bool on = IsPlain(press, kKeyDown) || IsPlain(press, kKeyEnter) || Types(press, u"j");
  const bool back = IsPlain(press, kKeyUp) || Types(press, u"k");
  if (on && page.Shows(PF_READ_END) && top_ < LastTop()) {
    ++top_;
    return std::string();
  }
  if (back && top_ > 0 && page.Shows(PF_READ_TOP)) {
    --top_;
    return std::string();
  }
  return std::nullopt;
}

std::optional<std::string> NarrowSight::PageText(Way way, const ScreenSnapshot& screen,
                                                 const UnderstoodPage& page) {
  const bool atEdge = way == Way::kOn ? top_ == LastTop() : top_ == 0;
  if (!atEdge) {
    const int step = std::max(1, rows_ - 1);
    top_ = std::clamp(top_ + (way == Way::kOn ? step : -step), 0, LastTop());
    return std::string();
  }
  if (page.Shows(way == Way::kOn ? PF_READ_END : PF_READ_TOP)) return std::nullopt;
  return AskFor(way, screen, page.kind);
}

std::optional<std::string> NarrowSight::PageList(Way way, const ScreenSnapshot& screen,
                                                 const UnderstoodPage& page) {
  if (!HasCursorOnEntry(screen, page)) return std::nullopt;
  const int from = screen.cursorRow;
  if (way == Way::kOn) {
    const int last = LastEntry(screen, page);
    const int end = top_ + rows_ - 1;
    return end >= last ? AskFor(way, screen, page.kind) : Moves(from, std::min(last, end + rows_));
  }
  if (top_ > kTopEntryRow) return Moves(from, std::max(kTopEntryRow, top_ - rows_));
  if (top_ == 0 || from >= rows_) return AskFor(way, screen, page.kind);
  top_ = 0;  // the heads
  return std::string();
}

std::string NarrowSight::AskFor(Way way, const ScreenSnapshot& screen, PageKind kind) {
  asked_ = {.way = way, .kind = kind, .lines = LinesOf(screen)};
  return std::string(KeySequence(way == Way::kOn ? kKeyPageDown : kKeyPageUp));
}

}  // namespace quillet
