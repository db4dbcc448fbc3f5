// Draws the cells of one row into the picture. Used by the frame painter. User-interface thread.
#pragma once

#include <array>

#include "render/paint/canvas.h"
#include "render/paint/glyph_cache.h"
#include "render/row_look.h"

namespace quillet {

// Where a row's cells lie, in device pixels.
struct RowPlace {
  int left = 0;  // of column 0
  int top = 0;
  int halfCell = 6;
  int height = 12;

  int X(int col) const { return left + col * halfCell; }
  QRect Cells(int first, int last) const { return {X(first), top, (last - first) * halfCell, height}; }
};

class RowPainter {
 public:
  // The sheet's cell has the row's size.
  RowPainter(Canvas& canvas, const RowPlace& place, GlyphSheet& sheet)
      : canvas_(canvas), place_(place), sheet_(sheet) {}

  // Draws the cells first..last-1 without a caret of kLine. Neither end may cut a double-width character.
  void PaintCells(const RowLook& look, int first, int last);
  // What lies left and right of the cells.
  void PaintMargins(const CellLook& margin);
  // The cells' backgrounds alone.
  void PaintGround(const RowLook& look);
  // The caret of kLine, if it stands on one of these cells.
  void PaintCaret(const RowLook& look, int first, int last);

 private:
  int PaintBlanks(const RowLook& look, int col, int last);
  void PaintBackground(const CellLook& cell, const QRect& rect);
  int PaintCharacter(const RowLook& look, int col);
  void PaintUnderlines(const RowLook& look, int first, int last);
  void Blend(int col, const Tile& tile, const CellLook& cell);

  Canvas& canvas_;
  const RowPlace& place_;
  GlyphSheet& sheet_;
};

}  // namespace quillet
