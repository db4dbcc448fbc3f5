#include "render/paint/picture_painter.h"

#include <algorithm>

#include <QPainter>
#include <QPainterPath>

namespace quillet {
namespace {

// A white ground glares in a dim picture: a quarter of the light is taken.
constexpr QColor kShade(0, 0, 0, 64);
constexpr QColor kSignGround(0, 0, 0, 160);
constexpr QColor kSignInk(255, 255, 255, 230);
// The sign's share of the picture's smaller side, and its bounds in pixels.
constexpr int kSignShare = 4;
constexpr int kSmallestSign = 16;
constexpr int kLargestSign = 96;

void PaintPlaySign(QPainter& painter, const QRect& area) {
  const int side =
      std::clamp(std::min(area.width(), area.height()) / kSignShare, kSmallestSign, kLargestSign);
  QRectF disc(0, 0, side, side);
  disc.moveCenter(QRectF(area).center());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kSignGround);
  painter.drawEllipse(disc);
  QPainterPath triangle(disc.topLeft() + QPointF(0.38, 0.28) * side);
  triangle.lineTo(disc.topLeft() + QPointF(0.38, 0.72) * side);
  triangle.lineTo(disc.topLeft() + QPointF(0.76, 0.5) * side);
  painter.fillPath(triangle, kSignInk);
}

}  // namespace

void PaintPicture(QImage& target, const QRect& band, QPoint at, const FramePicture& picture,
                  std::uint32_t outline, PictureLight light) {
  const QRect whole(at, QSize(picture.size.width, picture.size.height));
  const QRect part = whole & band & target.rect();
  if (part.isEmpty()) return;
  QPainter painter(&target);
  painter.setClipRect(part);
  if (picture.image.isNull()) {
    painter.setPen(QColor::fromRgb(outline));
    painter.drawRect(whole.adjusted(0, 0, -1, -1));
    return;
  }
  if (picture.image.size() == whole.size())
    painter.drawImage(part.topLeft(), picture.image, part.translated(-at));
  else
    painter.drawImage(whole, picture.image);
  if (light == PictureLight::kDim) painter.fillRect(part, kShade);
  if (picture.sign == PictureSign::kPlay) PaintPlaySign(painter, whole);
}

}  // namespace quillet
