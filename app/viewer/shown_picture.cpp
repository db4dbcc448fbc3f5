#include "app/viewer/shown_picture.h"

namespace quillet {
namespace {

// Below pictures that let it through; both black and white ink are seen on it.
constexpr QColor kGround(0x8C, 0x8C, 0x8C);
// From here on who looks wants to see pixels.
constexpr double kSquaresFrom = 4;

}  // namespace

void ShownPicture::Paint(QPainter& painter, QSize room, const QImage& image, const PictureZoom& zoom) {
  const ZoomPlace place = zoom.Place();
  const QRect target(place.left, place.top, place.size.width, place.size.height);
  painter.save();
  painter.setClipRect(QRect(QPoint(), room), Qt::IntersectClip);
  if (image.hasAlphaChannel()) painter.fillRect(target, kGround);
  const bool isWhole = zoom.IsFitted() && target.width() < image.width();
  if (isWhole || IsNearlyAsLarge(image.size(), target.size())) {
    painter.drawImage(target.topLeft(), scaled_.Of(image, target.size()));
  } else {
    painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom.Factor() < kSquaresFrom);
    painter.drawImage(target, image);
  }
  painter.restore();
}

}  // namespace quillet
