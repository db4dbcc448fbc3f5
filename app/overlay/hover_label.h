// A line of text that tells of a thing under the pointer: over the lower edge of the picture, on the side
// where it does not lie over that thing. Made anew for each question, from what lies over the terminal.
// User-interface thread.
#pragma once

#include <QString>

#include "app/overlay/overlay.h"

namespace quillet {

class HoverLabel {
 public:
  // `row`: of the picture, where the thing is. A text that is too long is cut in its middle.
  HoverLabel(const QString& text, int row, const OverlayPlace& place);

  const QRectF& Box() const { return box_; }
  // Leaves the painter as it was.
  void Paint(QPainter& painter, const panel_look::Colours& colours) const;

 private:
  double letter_;  // the size of the letters
  QFont font_;
  QString text_;
  QRectF box_;
};

}  // namespace quillet
