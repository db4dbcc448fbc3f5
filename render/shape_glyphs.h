// Characters that are drawn as shapes instead of with a font, so that frames, blocks and pictures made of
// characters join without a gap at every size: box drawing, blocks and shades, corner triangles, diagonals;
// and the signs of the client's own. Called by the glyph rasteriser. Pure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quillet {

// True for the units that DrawShape knows.
bool IsShape(char16_t unit);
// True for blocks, shades and corner triangles: what pictures are painted with, as opposed to lines.
bool IsFilledShape(char16_t unit);

// A rectangle of 8-bit coverage, row after row.
struct CoverageTile {
  std::span<std::uint8_t> bytes;  // at least stride * height
  std::size_t stride = 0;         // at least width
  int width = 0;
  int height = 0;
};

// Draws the shape over the whole tile, which must be zero. Lines are as thick as `width` asks for, so shapes
// of one width join whatever the height. False, and nothing drawn, when the unit is no shape.
bool DrawShape(char16_t unit, const CoverageTile& tile);

}  // namespace quillet
