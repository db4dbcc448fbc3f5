#include "app/overlay/panel_look.h"

#include <cmath>

namespace quillet::panel_look {

QFont Sized(QFont font, double pixels) {
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
  return font;
}

void PaintBox(QPainter& painter, const QRectF& box, double letter, const QColor& edge, const QColor& fill) {
  constexpr double kCorner = 0.35;  // of a letter
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(edge, 1));
  painter.setBrush(fill);
  painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), letter * kCorner, letter * kCorner);
}

}  // namespace quillet::panel_look
