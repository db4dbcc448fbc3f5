// The few strokes that shapes are made of, on a coverage tile: rectangles on whole pixels, and anything that
// can say how far a point is from its edge. Used by shape_glyphs.cpp and box_lines.cpp. Pure.
#pragma once

#include <algorithm>
#include <cmath>

#include "render/shape_glyphs.h"

namespace quillet {

class ShapeCanvas {
 public:
  explicit ShapeCanvas(const CoverageTile& tile) : tile_(tile) {}

  int Width() const { return tile_.width; }
  int Height() const { return tile_.height; }

  // Pixels left..right-1, top..bottom-1; what lies outside the tile is dropped.
  void Fill(int left, int top, int right, int bottom, std::uint8_t coverage = 255) {
    left = std::max(left, 0);
    right = std::min(right, tile_.width);
    for (int y = std::max(top, 0); y < std::min(bottom, tile_.height); ++y)
      if (left < right) std::fill_n(Row(y) + left, right - left, coverage);
  }

  // `depth(x, y)` tells how many pixels the point lies inside the shape, negative outside; the edge is
  // smoothed over one pixel. Adds to what is there.
  template <typename Depth>
  void Paint(const Depth& depth) {
    for (int y = 0; y < tile_.height; ++y)
      for (int x = 0; x < tile_.width; ++x) {
        const double share = std::clamp(depth(x + 0.5, y + 0.5) + 0.5, 0.0, 1.0);
        const auto coverage = static_cast<std::uint8_t>(std::lround(share * 255));
        Row(y)[x] = std::max(Row(y)[x], coverage);
      }
  }

 private:
  std::uint8_t* Row(int y) { return tile_.bytes.data() + static_cast<std::size_t>(y) * tile_.stride; }

  CoverageTile tile_;
};

}  // namespace quillet
