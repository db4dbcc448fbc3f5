#include "render/sign_shapes.h"

#include <algorithm>
#include <cmath>

#include "render/box_lines.h"

namespace quillet {
namespace {

// Of the tile's width, and of the frame's own.
constexpr double kFrameWidth = 0.66;
constexpr double kFrameHeight = 0.76;
constexpr int kSmallestWidth = 7;
constexpr int kSmallestHeight = 6;

// Pixels left to right-1, top to bottom-1.
struct Box {
  int left, top, right, bottom;

  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
};

Box Inside(const Box& box, int line) {
  return {box.left + line, box.top + line, box.right - line, box.bottom - line};
}

Box FrameIn(const ShapeCanvas& canvas) {
  const int width = std::max(kSmallestWidth, static_cast<int>(std::lround(canvas.Width() * kFrameWidth)));
  const int height = std::max(kSmallestHeight, static_cast<int>(std::lround(width * kFrameHeight)));
  const int left = (canvas.Width() - width) / 2;
  const int top = (canvas.Height() - height) / 2;
  return {left, top, left + width, top + height};
}

void DrawFrame(const Box& box, int line, ShapeCanvas& canvas) {
  canvas.Fill(box.left, box.top, box.right, box.top + line);
  canvas.Fill(box.left, box.bottom - line, box.right, box.bottom);
  canvas.Fill(box.left, box.top, box.left + line, box.bottom);
  canvas.Fill(box.right - line, box.top, box.right, box.bottom);
}

// How deep a point lies under the slopes of a peak `rise` high and `half` wide on either side; `across` from
// the peak's middle, `down` from its top.
double UnderSlopes(double across, double down, double half, double rise) {
  return (down * half - std::abs(across) * rise) / std::hypot(half, rise);
}

// Two hills, the right one lower.
void DrawHills(const Box& box, ShapeCanvas& canvas) {
  const double width = box.Width(), height = box.Height();
  canvas.Paint([&](double x, double y) {
    const double high =
        UnderSlopes(x - box.left - 0.36 * width, y - box.top - 0.3 * height, 0.46 * width, 0.7 * height);
    const double low =
        UnderSlopes(x - box.left - 0.74 * width, y - box.top - 0.55 * height, 0.36 * width, 0.45 * height);
    const double inside = std::min(std::min(x - box.left, box.right - x), box.bottom - y);
    return std::min(std::max(high, low), inside);
  });
}

void DrawTriangleRight(const Box& box, ShapeCanvas& canvas) {
  const double half = 0.32 * box.Height(), rise = 1.6 * half;
  const double left = box.left + (box.Width() - 0.9 * rise) / 2;
  const double middle = (box.top + box.bottom) / 2.0;
  canvas.Paint([&](double x, double y) {
    return std::min(x - left, UnderSlopes(y - middle, left + rise - x, half, rise));
  });
}

}  // namespace

void DrawSign(char16_t unit, ShapeCanvas& canvas) {
  const Box frame = FrameIn(canvas);
  const int line = LightThickness(canvas.Width());
  DrawFrame(frame, line, canvas);
  const Box inside = Inside(frame, line);
  if (unit == kPictureSignUnit)
    DrawHills(inside, canvas);
  else
    DrawTriangleRight(inside, canvas);
}

}  // namespace quillet
