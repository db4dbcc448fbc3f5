#include "app/interaction/pointer/pointer_shapes.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

namespace quillet {
namespace {

// In widget units.
constexpr int kSide = 24;

// Systems have no pointer of their own that points in every direction. White with a black rim, it is seen on
// any page. `turn`: degrees from upwards, clockwise.
QCursor Arrow(int turn, qreal scale) {
  QPixmap pixmap(QSize(kSide, kSide) * scale);
  pixmap.setDevicePixelRatio(scale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(kSide / 2.0, kSide / 2.0);
  painter.rotate(turn);
  painter.setPen(QPen(Qt::black, 1.5, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.setBrush(Qt::white);
  painter.drawPolygon(QPolygonF{{0, -10}, {8, -1}, {3, -1}, {3, 9}, {-3, 9}, {-3, -1}, {-8, -1}});
  painter.end();
  return QCursor(pixmap, kSide / 2, kSide / 2);
}

}  // namespace

QCursor CursorOf(PointerShape shape, qreal scale) {
  switch (shape) {
    case PointerShape::kHand:
      return QCursor(Qt::PointingHandCursor);
    case PointerShape::kText:
      return QCursor(Qt::IBeamCursor);
    case PointerShape::kBack:
      return Arrow(-90, scale);
    case PointerShape::kUp:
      return Arrow(0, scale);
    case PointerShape::kDown:
      return Arrow(180, scale);
    case PointerShape::kOrdinary:
      break;
  }
  return QCursor(Qt::ArrowCursor);
}

}  // namespace quillet
