#include "render/paint/row_painter.h"

#include <algorithm>

#include "render/coverage_blend.h"

namespace quillet {
namespace {

const CellLook& At(const RowLook& look, int col) {
  return look[static_cast<std::size_t>(col)];
}

bool SameColours(const CellLook& one, const CellLook& other) {
  return one.foreground == other.foreground && one.background == other.background;
}

}  // namespace

void RowPainter::Paint(int row, const RowLook& look, int first, int last) {
  int col = first;
  while (col < last)
    col = At(look, col).unit == 0 ? PaintBlanks(row, look, col, last) : PaintCharacter(row, look, col);
  for (col = first; col < last; ++col)
    if (At(look, col).caret) PaintCaret(row, col, At(look, col));
}

// One rectangle for as many blank cells of one background as follow each other. Returns the next column.
int RowPainter::PaintBlanks(int row, const RowLook& look, int col, int last) {
  const std::uint32_t background = At(look, col).background;
  int end = col + 1;
  while (end < last && At(look, end).unit == 0 && At(look, end).background == background)
    ++end;
  Fill(X(col), Y(row), (end - col) * layout_.halfCell, layout_.rowHeight, background);
  return end;
}

// Returns the column behind the character. The halves of a double-width character may differ in colour, and
// one of them alone may blink.
int RowPainter::PaintCharacter(int row, const RowLook& look, int col) {
  const CellLook& cell = At(look, col);
  const GlyphWidth width = cell.part == CellPart::kSingle ? GlyphWidth::kHalf : GlyphWidth::kWide;
  const std::uint8_t* tile = sheet_.Tile(cell.unit, width);
  const std::ptrdiff_t stride = sheet_.Stride(width);
  const int half = layout_.halfCell;
  if (cell.part == CellPart::kLead && At(look, col + 1).unit != 0 && SameColours(cell, At(look, col + 1))) {
    Blend(X(col), Y(row), 2 * half, tile, stride, cell);
    return col + 2;
  }
  Blend(X(col), Y(row), half, cell.part == CellPart::kTrail ? tile + half : tile, stride, cell);
  return col + 1;
}

void RowPainter::PaintCaret(int row, int col, const CellLook& cell) {
  const int thickness = std::min(layout_.rowHeight, std::max(2, layout_.rowHeight / 10));
  Fill(X(col), Y(row) + layout_.rowHeight - thickness, layout_.halfCell, thickness, CaretColour(cell));
}

void RowPainter::Fill(int x, int y, int width, int height, std::uint32_t colour) {
  const int left = std::max(x, 0);
  const int top = std::max(y, 0);
  const int right = std::min(x + width, canvas_.width);
  const int bottom = std::min(y + height, canvas_.height);
  if (left >= right || top >= bottom) return;
  FillPixels(canvas_.pixels + top * canvas_.stride + left, canvas_.stride, right - left, bottom - top,
             colour);
}

void RowPainter::Blend(int x, int y, int width, const std::uint8_t* tile, std::ptrdiff_t stride,
                       const CellLook& cell) {
  const int left = std::max(x, 0);
  const int top = std::max(y, 0);
  const int right = std::min(x + width, canvas_.width);
  const int bottom = std::min(y + layout_.rowHeight, canvas_.height);
  if (left >= right || top >= bottom) return;
  BlendCoverage({.target = canvas_.pixels + top * canvas_.stride + left,
                 .targetStride = canvas_.stride,
                 .coverage = tile + (top - y) * stride + (left - x),
                 .coverageStride = stride,
                 .width = right - left,
                 .height = bottom - top,
                 .foreground = cell.foreground,
                 .background = cell.background});
}

}  // namespace quillet
