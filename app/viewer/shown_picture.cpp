#include "app/viewer/shown_picture.h"

#include <cstdlib>
#include <utility>

namespace quillet {
namespace {

// Below pictures that let it through; both black and white ink are seen on it.
constexpr QColor kGround(0x8C, 0x8C, 0x8C);
// From here on who looks wants to see pixels.
constexpr double kSquaresFrom = 4;

// A decoder rounds otherwise than the zoom; bringing one to the other would blur all of it.
bool IsNearly(QSize one, QSize other) {
  return std::abs(one.width() - other.width()) <= 1 && std::abs(one.height() - other.height()) <= 1;
}

}  // namespace

const QImage& ShownPicture::Scaled(const QImage& image, QSize size) {
  if (scaled_.size() == size && scaledFrom_ == image.cacheKey()) return scaled_;
  scaled_ = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  scaledFrom_ = image.cacheKey();
  return scaled_;
}

void ShownPicture::Paint(QPainter& painter, QSize room, const QImage& image, const PictureZoom& zoom) {
  const ZoomPlace place = zoom.Place();
  const QRect target(place.left, place.top, place.size.width, place.size.height);
  painter.save();
  painter.setClipRect(QRect(QPoint(), room), Qt::IntersectClip);
  if (image.hasAlphaChannel()) painter.fillRect(target, kGround);
  const bool isWhole = zoom.IsFitted() && target.width() < image.width();
  if (IsNearly(image.size(), target.size())) {
    painter.drawImage(target.topLeft(), image);
  } else if (isWhole) {
    painter.drawImage(target.topLeft(), Scaled(image, target.size()));
  } else {
    painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom.Factor() < kSquaresFrom);
    painter.drawImage(target, image);
  }
  painter.restore();
}

}  // namespace quillet
