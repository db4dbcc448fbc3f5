#include "render/paint/row_painter.h"

#include <algorithm>

namespace quillet {
namespace {

const CellLook& At(const RowLook& look, int col) {
  return look[static_cast<std::size_t>(col)];
}

bool SameColours(const CellLook& one, const CellLook& other) {
  return one.foreground == other.foreground && one.background == other.background &&
         one.ground == other.ground;
}

}  // namespace

void RowPainter::PaintCells(const RowLook& look, int first, int last) {
  int col = first;
  while (col < last)
    col = At(look, col).unit == 0 ? PaintBlanks(look, col, last) : PaintCharacter(look, col);
  PaintUnderlines(look, first, last);
}

// One rectangle for as many blank cells of one background as follow each other. Returns the next column.
int RowPainter::PaintBlanks(const RowLook& look, int col, int last) {
  const CellLook& cell = At(look, col);
  int end = col + 1;
  while (end < last && At(look, end).unit == 0 && At(look, end).background == cell.background &&
         At(look, end).ground == cell.ground)
    ++end;
  PaintBackground(cell, place_.Cells(col, end));
  return end;
}

void RowPainter::PaintBackground(const CellLook& cell, const QRect& rect) {
  switch (cell.ground) {
    case CellGround::kPage:
      return canvas_.ShowGround(rect);
    case CellGround::kVeil:
      return canvas_.Veil(rect, cell.background);
    case CellGround::kOpaque:
      return canvas_.Fill(rect, cell.background);
  }
}

void RowPainter::PaintMargins(const CellLook& margin) {
  const int end = place_.X(kCols);
  PaintBackground(margin, {0, place_.top, place_.left, place_.height});
  PaintBackground(margin, {end, place_.top, canvas_.Width() - end, place_.height});
}

void RowPainter::PaintGround(const RowLook& look) {
  for (int col = 0; col < kCols; ++col)
    PaintBackground(At(look, col), place_.Cells(col, col + 1));
}

// Returns the column behind the character. The halves of a double-width character may differ in colour, and
// one of them alone may blink.
int RowPainter::PaintCharacter(const RowLook& look, int col) {
  const CellLook& cell = At(look, col);
  const GlyphWidth width = cell.part == CellPart::kSingle ? GlyphWidth::kHalf : GlyphWidth::kWide;
  const int half = place_.halfCell;
  Tile tile{sheet_.Tile(cell.unit, width), sheet_.Stride(width), half, place_.height};
  if (cell.part == CellPart::kLead && At(look, col + 1).unit != 0 && SameColours(cell, At(look, col + 1))) {
    tile.width = 2 * half;
    Blend(col, tile, cell);
    return col + 2;
  }
  if (cell.part == CellPart::kTrail) tile.bytes += half;
  Blend(col, tile, cell);
  return col + 1;
}

void RowPainter::Blend(int col, const Tile& tile, const CellLook& cell) {
  const QPoint at(place_.X(col), place_.top);
  if (cell.ground == CellGround::kOpaque || !canvas_.HasBackdrop()) {
    canvas_.Blend(at, tile, cell.foreground, cell.background);
    return;
  }
  PaintBackground(cell, {at, QSize(tile.width, tile.height)});
  canvas_.BlendOver(at, tile, cell.foreground);
}

void RowPainter::PaintUnderlines(const RowLook& look, int first, int last) {
  const int thickness = std::max(1, place_.height / 14);
  for (int col = first; col < last; ++col)
    if (At(look, col).underline)
      canvas_.Fill({place_.X(col), place_.top + place_.height - thickness, place_.halfCell, thickness},
                   At(look, col).foreground);
}

void RowPainter::PaintCaret(const RowLook& look, int first, int last) {
  const int thickness = std::min(place_.height, std::max(2, place_.height / 10));
  for (int col = first; col < last; ++col)
    if (At(look, col).caret)
      canvas_.Fill({place_.X(col), place_.top + place_.height - thickness, place_.halfCell, thickness},
                   CaretColour(At(look, col)));
}

}  // namespace quillet
