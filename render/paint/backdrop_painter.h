// The background picture at the window's size, blended over the page's ground, ready to be copied behind the
// text. Scaled once for a size, not for a frame. Used by the frame painter. User-interface thread.
#pragma once

#include <cstdint>

#include <QImage>
#include <QRect>
#include <QSize>

#include "render/backdrop_fit.h"
#include "render/paint/canvas.h"

namespace quillet {

// The background picture; without one the ground is plain.
struct Backdrop {
  QImage picture;
  BackdropStyle style = BackdropStyle::kNone;
  int opacityPercent = 40;  // of the picture over the ground, 0 to 100
};

class BackdropPainter {
 public:
  void Set(Backdrop backdrop);

  // The ground of a window: `colour` with the picture over it. `progress` is 0 to 1. Its pixels are good
  // until the next call.
  Ground Prepare(QSize window, double progress, std::uint32_t colour);

 private:
  struct MadeFor {
    QSize window;
    QRect part;  // of the picture; null: all of it
    std::uint32_t colour = 0;
    bool operator==(const MadeFor&) const = default;
  };

  void PrepareWhole(QSize whole, QSize window, std::uint32_t colour);
  void PreparePart(const BackdropRect& part, QSize window, std::uint32_t colour);
  Ground GroundAt(QPoint offset, std::uint32_t colour) const;

  Backdrop backdrop_;
  QImage blended_;  // at least as large as the window
  MadeFor madeFor_;
};

}  // namespace quillet
