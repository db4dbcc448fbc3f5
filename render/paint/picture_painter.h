// Draws pictures into the rows of an article, row by row. They come in the size that they are drawn in; one
// that is another as yet is drawn coarsely for the moment. Used by the frame painter. User-interface thread.
#pragma once

#include <cstdint>

#include <QImage>
#include <QPoint>
#include <QRect>

#include "render/paint/frame_picture.h"

namespace quillet {

enum class PictureLight { kFull, kDim };

// What of the picture lies in `band` of `target`; `at` is where the picture's top left corner is, in it or
// not. `outline` (0xRRGGBB): of what has no image yet.
void PaintPicture(QImage& target, const QRect& band, QPoint at, const FramePicture& picture,
                  std::uint32_t outline, PictureLight light);

}  // namespace quillet
