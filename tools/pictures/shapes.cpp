#include "tools/pictures/shapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include <QLinearGradient>
#include <QRadialGradient>

namespace quillet {

double Dice::Throw() {
  state_ = state_ * 1664525U + 1013904223U;
  return (state_ >> 8) / double{1U << 24};
}

void FillDown(QPainter& painter, const QRectF& area, std::initializer_list<QColor> colours) {
  QLinearGradient gradient(area.topLeft(), area.bottomLeft());
  double at = 0;
  for (const QColor& colour : colours) {
    gradient.setColorAt(at, colour);
    at = std::min(1.0, at + 1.0 / static_cast<double>(colours.size() - 1));
  }
  painter.fillRect(area, gradient);
}

void DrawGlow(QPainter& painter, QPointF middle, double radius, QColor colour) {
  QRadialGradient gradient(middle, radius);
  gradient.setColorAt(0, colour);
  colour.setAlphaF(colour.alphaF() * 0.3F);
  gradient.setColorAt(0.4, colour);
  colour.setAlpha(0);
  gradient.setColorAt(1, colour);
  FillDisc(painter, middle, radius, gradient);
}

void FillDisc(QPainter& painter, QPointF middle, double radius, const QBrush& brush) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(brush);
  painter.drawEllipse(middle, radius, radius);
}

QPolygonF Ridge(QSizeF size, double height, double roughness, std::uint32_t seed) {
  struct Wave {
    double length;
    double share;
    double phase;
  };
  Dice dice(seed);
  std::array<Wave, 6> waves;
  double length = 520;
  double share = 0.5;
  for (Wave& wave : waves) {
    wave = {length * dice.Between(0.8, 1.2), share, dice.Between(0, 2 * std::numbers::pi)};
    length *= 0.5;
    share *= 0.52;
  }
  QPolygonF outline;
  constexpr double kStep = 3;
  for (double x = -kStep; x <= size.width() + kStep; x += kStep) {
    double y = height;
    for (const Wave& wave : waves)
      y += roughness * wave.share * std::sin(2 * std::numbers::pi * x / wave.length + wave.phase);
    outline << QPointF(x, y);
  }
  outline << QPointF(size.width() + kStep, size.height()) << QPointF(-kStep, size.height());
  return outline;
}

void FillShape(QPainter& painter, const QPolygonF& shape, const QBrush& brush) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(brush);
  painter.drawPolygon(shape);
}

}  // namespace quillet
