#include "tools/pictures/things.h"

#include <array>
#include <cmath>
#include <numbers>

#include <QPainterPath>

#include "tools/pictures/landscapes.h"

namespace quillet {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

QPointF OnCircle(QPointF middle, double radius, double turn) {
  return middle + QPointF(radius * std::cos(turn * kTurn), radius * std::sin(turn * kTurn));
}

void DrawSteam(QPainter& painter, QPointF from) {
  painter.setBrush(Qt::NoBrush);
  for (int i = -1; i <= 1; ++i) {
    QPainterPath wisp(from + QPointF(i * 70, 0));
    wisp.cubicTo(from + QPointF(i * 70 - 40, -50), from + QPointF(i * 70 + 40, -90),
                 from + QPointF(i * 70, -150));
    painter.setPen(QPen(QColor(255, 255, 255, 110), 12, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(wisp);
  }
}

void DrawToppings(QPainter& painter, QPointF middle) {
  for (const double side : {-1.0, 1.0}) {
    const QPointF egg = middle + QPointF(side * 55 + 70, side * 12 - 10);
    painter.setBrush(QColor(255, 252, 240));
    painter.drawEllipse(egg, 46, 30);
    painter.setBrush(QColor(245, 165, 50));
    painter.drawEllipse(egg, 22, 15);
  }
  Dice dice(17);
  for (int i = 0; i < 46; ++i) {
    painter.setBrush(i % 3 == 0 ? QColor(205, 225, 120) : QColor(80, 150, 65));
    painter.drawEllipse(middle + QPointF(dice.Between(-190, 0), dice.Between(-38, 42)), 7, 5);
  }
}

}  // namespace

void DrawNoodles(QPainter& painter, QSizeF size) {
  painter.fillRect(QRectF(QPointF(0, 0), size), QColor(120, 80, 55));
  for (double y = 0; y < size.height(); y += 75)
    painter.fillRect(QRectF(0, y, size.width(), 3), QColor(95, 62, 42));
  const QPointF middle(size.width() / 2, 320);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(50, 32, 22, 120));
  painter.drawEllipse(middle + QPointF(0, 190), 250, 50);
  QPainterPath bowl;
  bowl.moveTo(middle + QPointF(-300, 0));
  bowl.cubicTo(middle + QPointF(-280, 260), middle + QPointF(280, 260), middle + QPointF(300, 0));
  painter.fillPath(bowl, QColor(65, 95, 135));
  painter.setBrush(QColor(235, 235, 225));
  painter.drawEllipse(middle, 300, 105);
  painter.setBrush(QColor(190, 105, 50));
  painter.drawEllipse(middle + QPointF(0, 6), 276, 90);
  painter.setBrush(Qt::NoBrush);
  for (int i = 0; i < 22; ++i) {
    painter.setPen(
        QPen(i % 2 == 0 ? QColor(250, 220, 150) : QColor(238, 200, 125), 7, Qt::SolidLine, Qt::RoundCap));
    const double x = -220 + i * 20;
    QPainterPath noodle(middle + QPointF(x, 20 + 24 * std::sin(i)));
    noodle.cubicTo(middle + QPointF(x + 50, -50), middle + QPointF(x + 10, 80),
                   middle + QPointF(x + 60, 14 * std::cos(i)));
    painter.drawPath(noodle);
  }
  painter.setPen(Qt::NoPen);
  DrawToppings(painter, middle);
  DrawSteam(painter, middle + QPointF(0, -110));
  painter.setPen(QPen(QColor(60, 30, 25), 11, Qt::SolidLine, Qt::RoundCap));
  for (const double apart : {0.0, 26.0})
    painter.drawLine(middle + QPointF(110 + apart, 30), middle + QPointF(360 + apart, -200));
}

void DrawFlower(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size}, {QColor(60, 95, 70), QColor(95, 135, 85), QColor(45, 75, 60)});
  Dice dice(27);
  for (int i = 0; i < 34; ++i)
    DrawGlow(painter, {dice.Between(0, size.width()), dice.Between(0, 600)}, dice.Between(30, 90),
             QColor(190, 220, 150, 45));
  const QPointF middle(size.width() / 2, 300);
  constexpr int kRings = 4;
  for (int ring = kRings; ring > 0; --ring) {
    const int petals = 7 + 2 * ring;
    const double reach = 60.0 * ring;
    for (int i = 0; i < petals; ++i) {
      const double turn = (i + ring * 0.5) / petals;
      QPainterPath petal(middle);
      petal.cubicTo(OnCircle(middle, reach * 0.7, turn - 0.06), OnCircle(middle, reach * 1.15, turn - 0.04),
                    OnCircle(middle, reach, turn));
      petal.cubicTo(OnCircle(middle, reach * 1.15, turn + 0.04), OnCircle(middle, reach * 0.7, turn + 0.06),
                    middle);
      painter.setPen(QPen(QColor(150, 60, 95), 1.4));
      painter.setBrush(QColor(250 - 12 * ring, 205 - 28 * ring, 215 - 16 * ring));
      painter.drawPath(petal);
    }
  }
  FillDisc(painter, middle, 30, QColor(245, 200, 80));
  for (int i = 0; i < 40; ++i)
    FillDisc(painter, OnCircle(middle, 27 * std::sqrt(i / 40.0), i * 0.382), 2.6, QColor(190, 120, 40));
}

void DrawPattern(QPainter& painter, QSizeF size) {
  constexpr double kTile = 100;
  const std::array<QColor, 4> colours{QColor(30, 75, 110), QColor(225, 160, 70), QColor(200, 75, 60),
                                      QColor(240, 228, 200)};
  painter.fillRect(QRectF(QPointF(0, 0), size), colours[3]);
  for (int row = 0; row * kTile < size.height(); ++row)
    for (int col = 0; col * kTile < size.width(); ++col) {
      const QPointF corner(col * kTile, row * kTile);
      const QColor& colour = colours[static_cast<std::size_t>((row * 2 + col) % 3)];
      for (int quarter = 0; quarter < 3; ++quarter) {
        const double radius = kTile * (1 - 0.3 * quarter);
        painter.setPen(Qt::NoPen);
        painter.setBrush(quarter % 2 == 0 ? colour : colours[3]);
        const bool isTurned = (row + col) % 2 != 0;
        const QPointF middle = corner + (isTurned ? QPointF(kTile, kTile) : QPointF(0, 0));
        painter.drawPie(QRectF(middle - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius)),
                        (isTurned ? 90 : 270) * 16, 90 * 16);
      }
    }
}

void DrawChart(QPainter& painter, QSizeF size) {
  painter.fillRect(QRectF(QPointF(0, 0), size), QColor(250, 250, 247));
  const QRectF plot(80, 50, size.width() - 130, 470);
  painter.setPen(QPen(QColor(215, 218, 222), 2));
  for (int line = 0; line <= 5; ++line)
    painter.drawLine(QPointF(plot.left(), plot.top() + line * plot.height() / 5),
                     QPointF(plot.right(), plot.top() + line * plot.height() / 5));
  constexpr std::array<double, 12> kMonths{0.22, 0.30, 0.28, 0.45, 0.52, 0.70,
                                           0.88, 0.93, 0.74, 0.60, 0.41, 0.33};
  const double step = plot.width() / kMonths.size();
  QPolygonF curve;
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    const double x = plot.left() + step * (static_cast<double>(i) + 0.5);
    const double height = plot.height() * kMonths[i];
    painter.fillRect(QRectF(x - step * 0.32, plot.bottom() - height, step * 0.64, height),
                     i == 7 ? QColor(225, 120, 75) : QColor(105, 155, 190));
    curve << QPointF(x, plot.bottom() - plot.height() * kMonths[(i + 10) % kMonths.size()] * 0.85);
  }
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(45, 60, 85), 4));
  painter.drawPolyline(curve);
  for (const QPointF& point : curve)
    FillDisc(painter, point, 8, QColor(45, 60, 85));
  painter.setPen(QPen(QColor(70, 75, 80), 4));
  painter.drawLine(plot.bottomLeft(), plot.bottomRight());
  painter.drawLine(plot.topLeft(), plot.bottomLeft());
}

void DrawPoster(QPainter& painter, QSizeF size) {
  painter.fillRect(QRectF(QPointF(0, 0), size), QColor(245, 232, 205));
  const QPointF sun(size.width() / 2, 230);
  painter.save();
  painter.setClipRect(QRectF(24, 24, size.width() - 48, size.height() - 48));
  painter.fillRect(QRectF(QPointF(0, 0), size), QColor(225, 95, 70));
  constexpr int kRays = 24;
  for (int i = 0; i < kRays; i += 2)
    FillShape(
        painter,
        QPolygonF({sun, OnCircle(sun, 900, i / double{kRays}), OnCircle(sun, 900, (i + 1) / double{kRays})}),
        QColor(238, 135, 90));
  FillDisc(painter, sun, 110, QColor(250, 215, 130));
  FillShape(painter, Ridge(size, 400, 60, 101), QColor(50, 110, 120));
  FillShape(painter, Ridge(size, 470, 40, 102), QColor(30, 70, 90));
  FillShape(painter,
            QPolygonF({{size.width() * 0.3, 500},
                       {size.width() * 0.7, 500},
                       {size.width() * 0.63, 540},
                       {size.width() * 0.37, 540}}),
            QColor(250, 240, 215));
  FillShape(painter,
            QPolygonF({{size.width() * 0.5, 380}, {size.width() * 0.5, 490}, {size.width() * 0.68, 490}}),
            QColor(250, 240, 215));
  painter.restore();
}

void DrawFilm(QPainter& painter, QSizeF size) {
  DrawMountains(painter, size);
  for (const double top : {0.0, 540.0})
    painter.fillRect(QRectF(0, top, size.width(), 60), Qt::black);
}

void DrawStage(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size}, {QColor(25, 15, 40), QColor(70, 30, 75), QColor(30, 20, 40)});
  const std::array<QColor, 4> lights{QColor(255, 120, 120, 70), QColor(120, 220, 255, 70),
                                     QColor(255, 230, 120, 70), QColor(190, 130, 255, 70)};
  for (std::size_t i = 0; i < lights.size(); ++i) {
    const double x = size.width() * (0.14 + 0.24 * static_cast<double>(i));
    FillShape(painter, QPolygonF({{x, 0}, {x - 160, 470}, {x + 120, 470}}), lights[i]);
  }
  painter.fillRect(QRectF(0, 460, size.width(), 20), QColor(90, 60, 60));
  for (const double at : {0.25, 0.42, 0.58, 0.75}) {
    const QPointF head(size.width() * at, 315);
    FillDisc(painter, head, 26, QColor(15, 10, 22));
    painter.drawRoundedRect(QRectF(head.x() - 32, 338, 64, 124), 22, 22);
  }
  Dice dice(111);
  for (int i = 0; i < 70; ++i)
    FillDisc(painter, {dice.Between(0, size.width()), dice.Between(545, 600)}, dice.Between(16, 27),
             QColor(12, 8, 18));
}

void DrawLeaf(QPainter& painter, QSizeF size) {
  painter.fillRect(QRectF(QPointF(0, 0), size), QColor(245, 240, 225));
  const double middle = size.width() / 2;
  QPainterPath leaf({middle, 60});
  leaf.cubicTo({middle + 260, 180}, {middle + 220, 430}, {middle, 520});
  leaf.cubicTo({middle - 220, 430}, {middle - 260, 180}, {middle, 60});
  painter.fillPath(leaf, QColor(205, 110, 55));
  painter.setPen(QPen(QColor(140, 65, 35), 9, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(middle, 90), QPointF(middle, 570));
  for (double y = 200; y < 480; y += 70)
    for (const double side : {-1.0, 1.0})
      painter.drawLine(QPointF(middle, y), QPointF(middle + side * 110, y - 60));
}

}  // namespace quillet
