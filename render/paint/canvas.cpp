#include "render/paint/canvas.h"

#include <algorithm>

#include "render/coverage_blend.h"

namespace quillet {
namespace {

constexpr std::uint8_t kVeilCoverage = 191;  // three quarters

}  // namespace

Canvas::Canvas(QImage& image, const Ground& ground)
    : pixels_(reinterpret_cast<std::uint32_t*>(image.bits())),
      stride_(image.bytesPerLine() / 4),
      whole_(image.rect()),
      clip_(image.rect()),
      ground_(ground) {}

void Canvas::Fill(const QRect& rect, std::uint32_t colour) {
  const QRect part = Visible(rect);
  if (part.isEmpty()) return;
  FillPixels(At(part.topLeft()), stride_, part.width(), part.height(), colour);
}

void Canvas::ShowGround(const QRect& rect) {
  if (!HasBackdrop()) {
    Fill(rect, ground_.colour);
    return;
  }
  const QRect part = Visible(rect);
  for (int y = part.top(); y <= part.bottom(); ++y)
    std::copy_n(ground_.pixels + y * ground_.stride + part.left(), part.width(), At({part.left(), y}));
}

void Canvas::Veil(const QRect& rect, std::uint32_t colour) {
  if (!HasBackdrop()) {
    Fill(rect, colour);
    return;
  }
  if (veil_.empty()) veil_.assign(static_cast<std::size_t>(whole_.width()) + kCoverageSlack, kVeilCoverage);
  const QRect part = Visible(rect);
  ShowGround(part);
  BlendOver(part.topLeft(), {veil_.data(), 0, part.width(), part.height()}, colour);
}

void Canvas::Blend(QPoint at, const Tile& tile, std::uint32_t foreground, std::uint32_t background) {
  const QRect part = Visible({at, QSize(tile.width, tile.height)});
  if (part.isEmpty()) return;
  BlendCoverage({.target = At(part.topLeft()),
                 .targetStride = stride_,
                 .coverage = tile.bytes + (part.top() - at.y()) * tile.stride + (part.left() - at.x()),
                 .coverageStride = tile.stride,
                 .width = part.width(),
                 .height = part.height(),
                 .foreground = foreground,
                 .background = background});
}

void Canvas::BlendOver(QPoint at, const Tile& tile, std::uint32_t foreground) {
  const QRect part = Visible({at, QSize(tile.width, tile.height)});
  if (part.isEmpty()) return;
  BlendCoverageOver({.target = At(part.topLeft()),
                     .targetStride = stride_,
                     .coverage = tile.bytes + (part.top() - at.y()) * tile.stride + (part.left() - at.x()),
                     .coverageStride = tile.stride,
                     .width = part.width(),
                     .height = part.height(),
                     .foreground = foreground});
}

}  // namespace quillet
