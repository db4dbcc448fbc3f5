// Draws a picture that is looked at, zoomed and moved: pixel for pixel where its image has the size that it
// is shown in, else brought to that. The viewer owns one. User-interface thread.
#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>

#include "render/picture_zoom.h"

namespace quillet {

class ShownPicture {
 public:
  // In device pixels, within `room`, which begins at the painter's origin.
  void Paint(QPainter& painter, QSize room, const QImage& image, const PictureZoom& zoom);
  void Forget() { scaled_ = {}; }

 private:
  const QImage& Scaled(const QImage& image, QSize size);

  QImage scaled_;
  qint64 scaledFrom_ = 0;
};

}  // namespace quillet
