// The picture that everything is drawn into, and the ground that lies below the text: one colour, or a
// picture of the window's size. What lies outside the picture is cut off. Used by the painters of rows and
// marks. User-interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QImage>
#include <QRect>

namespace quillet {

struct Ground {
  std::uint32_t colour = 0;               // 0xRRGGBB
  const std::uint32_t* pixels = nullptr;  // of the window's top left corner; null: plain
  std::ptrdiff_t stride = 0;              // in pixels

  bool operator==(const Ground&) const = default;
};

// Coverage of a glyph or a mark; kCoverageSlack bytes behind its last pixel can be read.
struct Tile {
  const std::uint8_t* bytes = nullptr;
  std::ptrdiff_t stride = 0;
  int width = 0;
  int height = 0;
};

class Canvas {
 public:
  // `image` is RGB32 and outlives the canvas; so do the ground's pixels.
  Canvas(QImage& image, const Ground& ground);

  // Nothing outside `rect` is drawn from now on.
  void ClipTo(const QRect& rect) { clip_ = rect & whole_; }

  int Width() const { return whole_.width(); }
  bool HasBackdrop() const { return ground_.pixels != nullptr; }
  void Fill(const QRect& rect, std::uint32_t colour);
  void ShowGround(const QRect& rect);
  // The ground with a colour over it that a picture shines through a little.
  void Veil(const QRect& rect, std::uint32_t colour);
  // The tile on one colour.
  void Blend(QPoint at, const Tile& tile, std::uint32_t foreground, std::uint32_t background);
  // The tile on what is there.
  void BlendOver(QPoint at, const Tile& tile, std::uint32_t foreground);

 private:
  // Empty when nothing of it is to be drawn.
  QRect Visible(const QRect& rect) const { return rect.isEmpty() ? QRect() : rect & clip_; }
  std::uint32_t* At(const QPoint& point) const { return pixels_ + point.y() * stride_ + point.x(); }

  std::uint32_t* pixels_;
  std::ptrdiff_t stride_;  // in pixels
  QRect whole_;
  QRect clip_;
  Ground ground_;
  std::vector<std::uint8_t> veil_;  // coverage of a line of the picture; empty until it is needed
};

}  // namespace quillet
