#include "tools/pictures/motion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "tools/pictures/animals.h"

namespace quillet {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

// Closed for a moment in the middle of the loop.
double EyesAt(double moment) {
  return std::min(1.0, std::abs(moment - 0.55) * 12);
}

}  // namespace

void DrawWaggingCat(QPainter& painter, QSizeF size, double moment) {
  painter.fillRect(QRectF(QPointF(0, 0), size), QColor(190, 220, 225));
  painter.fillRect(QRectF(0, 500, size.width(), 100), QColor(165, 120, 85));
  painter.save();
  painter.translate(size.width() / 2, 520);
  painter.scale(2, 2);
  DrawCat(painter, {-10, 0}, QColor(120, 125, 135),
          {.tail = std::sin(kTurn * moment), .openness = EyesAt(moment)});
  painter.restore();
}

void DrawPendulums(QPainter& painter, QSizeF size, double moment) {
  painter.fillRect(QRectF(QPointF(0, 0), size), QColor(30, 32, 45));
  constexpr int kPendulums = 9;
  for (int i = 0; i < kPendulums; ++i) {
    const double swing = 0.6 * std::sin(kTurn * (i + 1) * moment);
    const QPointF pivot(size.width() / 2, 40);
    const double length = 160 + 42 * i;
    const QPointF bob = pivot + QPointF(length * std::sin(swing), length * std::cos(swing));
    painter.setPen(QPen(QColor(90, 95, 115), 2));
    painter.drawLine(pivot, bob);
    FillDisc(painter, bob, 17, QColor::fromHsv(i * 40, 150, 235));
  }
}

void DrawRain(QPainter& painter, QSizeF size, double moment) {
  painter.fillRect(QRectF(QPointF(0, 0), size), QColor(70, 85, 105));
  painter.fillRect(QRectF(0, 430, size.width(), 170), QColor(45, 58, 75));
  Dice dice(121);
  for (int i = 0; i < 90; ++i) {
    const double x = dice.Between(0, size.width());
    const double phase = dice.Throw();
    const double y = 480 * std::fmod(phase + moment, 1.0);
    painter.setPen(QPen(QColor(170, 190, 210), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(x, y), QPointF(x - 4, y + 34));
    const double ring = std::fmod(phase + moment + 0.1, 1.0);
    painter.setPen(QPen(QColor(120, 140, 160), 2));
    painter.setBrush(Qt::NoBrush);
    if (i % 3 == 0) painter.drawEllipse(QPointF(x, 460 + 120 * dice.Throw()), 34 * ring, 9 * ring);
  }
  DrawCat(painter, {size.width() / 2, 520}, QColor(225, 175, 110), {.tail = 0, .openness = 1});
  QPolygonF canopy({{size.width() / 2 - 190, 300}, {size.width() / 2, 190}, {size.width() / 2 + 190, 300}});
  FillShape(painter, canopy, QColor(190, 65, 70));
}

}  // namespace quillet
