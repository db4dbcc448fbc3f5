#include "input/line_keys.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "bbs/page_flags.h"
#include "bbs/screen_fields.h"
#include "core/ascii.h"
#include "core/key_sequence.h"

namespace quillet {
namespace {

constexpr int kFirstEntryRow = 3;
constexpr int kLastEntryRow = 22;
constexpr int kFirstItemRow = 1;

bool HasCursor(const ScreenSnapshot& screen) {
  return (screen.pageFlags & PF_LIST_CURSOR) != 0 && screen.CursorInside();
}

// Whether all rows from one to the other, both included, are alike in this.
template <typename Test>
bool AllRows(int from, int to, Test test) {
  for (int row = std::min(from, to); row <= std::max(from, to); ++row)
    if (!test(row)) return false;
  return true;
}

bool IsItemAt(const ScreenSnapshot& screen, int row, int col) {
  return col >= 0 && IsCharacter(screen, row, col, '(') && col + 2 < kCols &&
         IsAsciiLetterOrDigit(screen.TextAt(row, col + 1)) && IsCharacter(screen, row, col + 2, ')');
}

// The column of the first item from `from` on.
std::optional<int> FindItem(const ScreenSnapshot& screen, int row, int from) {
  for (int col = from; col < kCols; ++col)
    if (IsItemAt(screen, row, col)) return col;
  return std::nullopt;
}

// Items stand below one another without a gap. Where the cursor is on one, a "(X)" elsewhere belongs to a
// picture or a remark.
std::optional<int> ItemColumn(const ScreenSnapshot& screen, int row) {
  if (HasCursor(screen))
    if (const auto column = FindItem(screen, screen.cursorRow, screen.cursorCol))
      return AllRows(screen.cursorRow, row, [&](int at) { return IsItemAt(screen, at, *column); })
                 ? column
                 : std::nullopt;
  return FindItem(screen, row, 0);
}

}  // namespace

std::string KeysToOpenLine(const ScreenSnapshot& screen, int row) {
  const int from = screen.cursorRow;
  if (row < kFirstEntryRow || row > kLastEntryRow || !HasCursor(screen) || from > kLastEntryRow) return {};
  // Entries follow one another: what stands below a gap is a remark and no entry.
  if (!AllRows(from, row, [&](int at) { return !IsBlankBetween(screen, at, 0, kCols - 1); })) return {};
  std::string keys;
  for (int step = 0; step < std::abs(row - from); ++step)
    keys += KeySequence(row > from ? kKeyDown : kKeyUp);
  return keys.append(KeySequence(kKeyRight));
}

std::string KeysToOpenItem(const ScreenSnapshot& screen, int row) {
  if (row < kFirstItemRow || row > kLastEntryRow) return {};
  const std::optional<int> column = ItemColumn(screen, row);
  if (!column) return {};
  if (HasCursor(screen) && row == screen.cursorRow) return "\r";
  // The letter finds its item wherever the cursor is by now.
  return {static_cast<char>(screen.TextAt(row, *column + 1)), '\r'};
}

}  // namespace quillet
