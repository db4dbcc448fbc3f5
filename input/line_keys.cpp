#include "input/line_keys.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "core/key_sequence.h"

namespace quillet {
namespace {

constexpr int kFirstEntryRow = 3;
constexpr int kLastEntryRow = 22;
constexpr int kFirstItemRow = 1;

bool HasCursor(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  return page.Shows(PF_LIST_CURSOR) && screen.CursorInside();
}

// Whether all rows from one to the other, both included, are alike in this.
template <typename Test>
bool AllRows(int from, int to, Test test) {
  for (int row = std::min(from, to); row <= std::max(from, to); ++row)
    if (!test(row)) return false;
  return true;
}

// The column of the first item from `from` on.
std::optional<int> FindItem(const MenuItems& items, int from) {
  for (int col = std::max(from, 0); col < kCols; ++col)
    if (items[static_cast<std::size_t>(col)]) return col;
  return std::nullopt;
}

// Items stand below one another without a gap. Where the cursor is on one, a "(X)" elsewhere belongs to a
// picture or a remark.
std::optional<int> ItemColumn(const ScreenSnapshot& screen, const UnderstoodPage& page, int row) {
  if (HasCursor(screen, page))
    if (const auto column = FindItem(page.Line(screen.cursorRow).items, screen.cursorCol)) {
      const auto col = static_cast<std::size_t>(*column);
      const bool allHave = AllRows(screen.cursorRow, row, [&](int at) { return page.Line(at).items[col]; });
      return allHave ? column : std::nullopt;
    }
  return FindItem(page.Line(row).items, 0);
}

}  // namespace

std::string KeysToOpenLine(const ScreenSnapshot& screen, const UnderstoodPage& page, int row) {
  const int from = screen.cursorRow;
  if (row < kFirstEntryRow || row > kLastEntryRow || !HasCursor(screen, page) || from > kLastEntryRow)
    return {};
  // Entries follow one another: what stands below a gap is a remark and no entry.
  if (!AllRows(from, row, [&](int at) { return !page.Line(at).isBlank; })) return {};
  std::string keys;
  for (int step = 0; step < std::abs(row - from); ++step)
    keys += KeySequence(row > from ? kKeyDown : kKeyUp);
  return keys.append(KeySequence(kKeyRight));
}

std::string KeysToOpenItem(const ScreenSnapshot& screen, const UnderstoodPage& page, int row) {
  if (row < kFirstItemRow || row > kLastEntryRow) return {};
  const std::optional<int> column = ItemColumn(screen, page, row);
  if (!column) return {};
  if (HasCursor(screen, page) && row == screen.cursorRow) return "\r";
  // The letter finds its item wherever the cursor is by now.
  return {static_cast<char>(screen.TextAt(row, *column + 1)), '\r'};
}

}  // namespace quillet
