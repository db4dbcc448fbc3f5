// Draws the cells of one row into the picture. What lies outside the picture is cut off. Used by the frame
// painter. User-interface thread.
#pragma once

#include <array>

#include "render/layout.h"
#include "render/paint/glyph_cache.h"
#include "render/row_look.h"

namespace quillet {

// Pixels of the picture; 0xFFRRGGBB.
struct Canvas {
  std::uint32_t* pixels = nullptr;
  std::ptrdiff_t stride = 0;  // in pixels
  int width = 0;
  int height = 0;
};

class RowPainter {
 public:
  RowPainter(const Canvas& canvas, const Layout& layout, GlyphSheet& sheet)
      : canvas_(canvas), layout_(layout), sheet_(sheet) {}

  // Draws the cells first..last-1. Neither end may cut a double-width character.
  void Paint(int row, const RowLook& look, int first, int last);

  void Fill(int x, int y, int width, int height, std::uint32_t colour);

 private:
  int PaintBlanks(int row, const RowLook& look, int col, int last);
  int PaintCharacter(int row, const RowLook& look, int col);
  void PaintCaret(int row, int col, const CellLook& cell);
  void Blend(int x, int y, int width, const std::uint8_t* tile, std::ptrdiff_t stride, const CellLook& cell);
  int X(int col) const { return layout_.originX + col * layout_.halfCell; }
  int Y(int row) const { return layout_.originY + row * layout_.rowHeight; }

  const Canvas& canvas_;
  const Layout& layout_;
  GlyphSheet& sheet_;
};

}  // namespace quillet
