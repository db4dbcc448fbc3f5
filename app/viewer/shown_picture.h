// Draws a picture that is looked at, zoomed and moved: pixel for pixel where its image has the size that it
// is shown in, else brought to that. The viewer owns one. User-interface thread.
#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>

#include "render/paint/scaled_copy.h"
#include "render/picture_zoom.h"

namespace quillet {

class ShownPicture {
 public:
  // In device pixels, within `room`, which begins at the painter's origin.
  void Paint(QPainter& painter, QSize room, const QImage& image, const PictureZoom& zoom);
  void Forget() { scaled_.Forget(); }

 private:
  ScaledCopy scaled_;
};

}  // namespace quillet
