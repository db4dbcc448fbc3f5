// Draws pictures into the rows of an article, row by row, and keeps them in the size that they are drawn in,
// so that scrolling does not scale them again. Used by the frame painter. User-interface thread.
#pragma once

#include <cstdint>
#include <list>

#include <QImage>
#include <QPoint>
#include <QRect>

#include "render/paint/frame_picture.h"

namespace quillet {

enum class PictureLight { kFull, kDim };

class PicturePainter {
 public:
  // What of the picture lies in `band` of `target`; `at` is where the picture's top left corner is, in it or
  // not. `outline` (0xRRGGBB): of what has no image yet.
  void Paint(QImage& target, const QRect& band, QPoint at, const FramePicture& picture, std::uint32_t outline,
             PictureLight light);

  // What is kept in another size or form than it came in, in bytes; the one drawn last, and others up to
  // kBudget.
  qsizetype KeptBytes() const { return keptBytes_; }
  static constexpr qsizetype kBudget = qsizetype{64} << 20;

 private:
  struct Kept {
    std::int64_t key = 0;  // of the image that it was made from
    QImage image;
  };

  // Ready to be copied.
  const QImage& InSize(const QImage& image, QSize size);

  std::list<Kept> kept_;  // drawn last first
  qsizetype keptBytes_ = 0;
};

}  // namespace quillet
