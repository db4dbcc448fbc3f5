#include "demo/canvas.h"

#include <algorithm>

#include "core/charset.h"
#include "demo/big5_text.h"

namespace quillet::demo {

int Canvas::Put(int row, int col, std::string_view big5, std::uint8_t attr) {
  if (row < 0 || row >= kRows || col < 0 || col >= kCols) return col;
  const std::string_view fitting = CutColumns(big5, kCols - col);
  for (const char byte : fitting)
    rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col++)] = {static_cast<std::uint8_t>(byte),
                                                                             attr};
  return col;
}

int Canvas::Put(int row, int col, std::u16string_view text, std::uint8_t attr) {
  return Put(row, col, std::string_view(ToBig5(text)), attr);
}

int Canvas::Put(int row, int col, std::span<const Cell> cells) {
  if (row < 0 || row >= kRows || col < 0) return col;
  for (const Cell& cell : cells) {
    if (col >= kCols) break;
    rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col++)] = cell;
  }
  return col;
}

void Canvas::Fill(int row, int from, int to, std::uint8_t attr) {
  if (row < 0 || row >= kRows) return;
  for (int col = std::max(from, 0); col < std::min(to, kCols); ++col)
    rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = {' ', attr};
}

void Canvas::MoveCursor(int row, int col) {
  cursorRow_ = std::clamp(row, 0, kRows - 1);
  cursorCol_ = std::clamp(col, 0, kCols - 1);
}

}  // namespace quillet::demo
