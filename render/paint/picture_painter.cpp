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

bool IsReady(const QImage& image) {
  return image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32_Premultiplied;
}

QImage::Format ReadyFormOf(const QImage& image) {
  return image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
}

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

const QImage& PicturePainter::InSize(const QImage& image, QSize size) {
  if (image.size() == size && IsReady(image)) return image;
  const std::int64_t key = image.cacheKey();
  const auto found = std::find_if(kept_.begin(), kept_.end(), [&](const Kept& kept) {
    return kept.key == key && kept.image.size() == size;
  });
  if (found != kept_.end()) {
    kept_.splice(kept_.begin(), kept_, found);
    return kept_.front().image;
  }
  const QImage ready = image.convertToFormat(ReadyFormOf(image));
  kept_.push_front({key, ready.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                             .convertToFormat(ReadyFormOf(ready))});
  keptBytes_ += kept_.front().image.sizeInBytes();
  while (keptBytes_ > kBudget && kept_.size() > 1) {
    keptBytes_ -= kept_.back().image.sizeInBytes();
    kept_.pop_back();
  }
  return kept_.front().image;
}

void PicturePainter::Paint(QImage& target, const QRect& band, QPoint at, const FramePicture& picture,
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
  painter.drawImage(part.topLeft(), InSize(picture.image, whole.size()), part.translated(-at));
  if (light == PictureLight::kDim) painter.fillRect(part, kShade);
  if (picture.sign == PictureSign::kPlay) PaintPlaySign(painter, whole);
}

}  // namespace quillet
