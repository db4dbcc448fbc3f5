// The 24x80 grid that a page of the demo BBS is drawn on: Big5 bytes with an attribute each, and where the
// cursor is left. A plain value: pages draw one, the terminal writer compares two. Any thread.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/screen_snapshot.h"

namespace quillet::demo {

struct Cell {
  std::uint8_t byte = ' ';
  std::uint8_t attr = kAttrBlank;
  bool operator==(const Cell&) const = default;
};

enum Colour : int { kBlack, kRed, kGreen, kYellow, kBlue, kMagenta, kCyan, kWhite };
enum class Weight { kNormal, kBold };

constexpr std::uint8_t Attr(Colour foreground, Colour background = kBlack, Weight weight = Weight::kNormal) {
  return static_cast<std::uint8_t>(background << kAttrBackgroundShift | foreground |
                                   (weight == Weight::kBold ? kAttrBold : 0));
}

// Of the columns' names over a list.
inline constexpr std::uint8_t kHeads = Attr(kBlack, kWhite);

class Canvas {
 public:
  using Row = std::array<Cell, kCols>;

  // Writes a text and returns the column behind it. What does not fit on the row is cut, never through a
  // character; rows outside the grid take nothing.
  int Put(int row, int col, std::string_view big5, std::uint8_t attr = kAttrBlank);
  int Put(int row, int col, std::u16string_view text, std::uint8_t attr = kAttrBlank);
  int Put(int row, int col, std::span<const Cell> cells);
  // Blanks with an attribute, columns from <= c < to.
  void Fill(int row, int from, int to, std::uint8_t attr);
  void ClearRow(int row) { Fill(row, 0, kCols, kAttrBlank); }
  void MoveCursor(int row, int col);

  const Row& RowAt(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  int CursorRow() const { return cursorRow_; }
  int CursorCol() const { return cursorCol_; }

 private:
  std::array<Row, kRows> rows_{};
  int cursorRow_ = 0;
  int cursorCol_ = 0;
};

}  // namespace quillet::demo
