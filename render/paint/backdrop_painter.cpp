#include "render/paint/backdrop_painter.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

namespace quillet {
namespace {

// A picture is scaled whole as long as it then has no more pixels than this many windows, and no more than
// this many; of a longer strip only what is seen.
constexpr double kMostWindows = 4;
constexpr double kMostPixels = 64e6;

QImage BlendOverGround(const QImage& picture, std::uint32_t colour, int opacityPercent) {
  QImage blended(picture.size(), QImage::Format_RGB32);
  blended.fill(0xFF000000 | colour);
  QPainter painter(&blended);
  painter.setOpacity(opacityPercent / 100.0);
  painter.drawImage(0, 0, picture);
  return blended;
}

bool ScalesWhole(QSizeF whole, QSize window) {
  const double pixels = whole.width() * whole.height();
  return pixels <= kMostPixels && pixels <= kMostWindows * window.width() * window.height();
}

// Where `part` begins in the scaled picture.
QPoint OffsetOf(double x, double y, QSize window, QSize whole) {
  return {std::clamp(static_cast<int>(std::lround(x)), 0, std::max(whole.width() - window.width(), 0)),
          std::clamp(static_cast<int>(std::lround(y)), 0, std::max(whole.height() - window.height(), 0))};
}

}  // namespace

void BackdropPainter::Set(Backdrop backdrop) {
  backdrop_ = std::move(backdrop);
  backdrop_.opacityPercent = std::clamp(backdrop_.opacityPercent, 0, 100);
  blended_ = {};
}

Ground BackdropPainter::Prepare(QSize window, double progress, std::uint32_t colour) {
  const QImage& picture = backdrop_.picture;
  const Ground plain{.colour = colour};
  if (picture.isNull() || backdrop_.opacityPercent == 0) return plain;
  const BackdropRect part =
      VisibleBackdrop(backdrop_.style, picture.width(), picture.height(), window.width(), window.height(),
                      progress > 0 ? std::min(progress, 1.0) : 0);
  if (!(part.width > 0 && part.height > 0)) return plain;

  const double scaleX = window.width() / part.width;
  const double scaleY = window.height() / part.height;
  const QSizeF whole(picture.width() * scaleX, picture.height() * scaleY);
  if (!ScalesWhole(whole, window)) {
    PreparePart(part, window, colour);
    return GroundAt({0, 0}, colour);
  }
  PrepareWhole(whole.toSize().expandedTo(window), window, colour);
  return GroundAt(OffsetOf(part.x * scaleX, part.y * scaleY, window, blended_.size()), colour);
}

// The scaled picture, of which a window shows a part.
void BackdropPainter::PrepareWhole(QSize whole, QSize window, std::uint32_t colour) {
  const MadeFor wanted{window, {}, colour};
  if (!blended_.isNull() && madeFor_ == wanted) return;
  madeFor_ = wanted;
  const QImage scaled = backdrop_.picture.scaled(whole, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  blended_ = BlendOverGround(scaled, colour, backdrop_.opacityPercent);
}

// What a window shows of a picture that is a very long strip.
void BackdropPainter::PreparePart(const BackdropRect& part, QSize window, std::uint32_t colour) {
  const QRect source =
      QRectF(part.x, part.y, part.width, part.height).toAlignedRect() & backdrop_.picture.rect();
  const MadeFor wanted{window, source, colour};
  if (!blended_.isNull() && madeFor_ == wanted) return;
  madeFor_ = wanted;
  const QImage scaled =
      backdrop_.picture.copy(source).scaled(window, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  blended_ = BlendOverGround(scaled, colour, backdrop_.opacityPercent);
}

Ground BackdropPainter::GroundAt(QPoint offset, std::uint32_t colour) const {
  if (blended_.isNull()) return {.colour = colour};
  const auto* pixels = reinterpret_cast<const std::uint32_t*>(blended_.constScanLine(offset.y()));
  return {.colour = colour, .pixels = pixels + offset.x(), .stride = blended_.bytesPerLine() / 4};
}

}  // namespace quillet
