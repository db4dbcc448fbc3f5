#include "tools/pictures/landscapes.h"

#include <cmath>

#include <QPainterPath>

namespace quillet {
namespace {

// Two strokes of a pen.
void DrawBird(QPainter& painter, QPointF at, double span) {
  QPainterPath wings(at + QPointF(-span, -span * 0.4));
  wings.quadTo(at + QPointF(-span * 0.4, -span * 0.6), at);
  wings.quadTo(at + QPointF(span * 0.4, -span * 0.6), at + QPointF(span, -span * 0.4));
  painter.setPen(QPen(QColor(40, 30, 60, 200), 2.2, Qt::SolidLine, Qt::RoundCap));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(wings);
}

void DrawStars(QPainter& painter, QSizeF size, double horizon, int count) {
  Dice dice(7);
  for (int i = 0; i < count; ++i) {
    const double x = dice.Between(0, size.width());
    const double y = horizon * dice.Throw() * dice.Between(0.4, 1.0);
    const double radius = dice.Throw() < 0.08 ? dice.Between(1.4, 2.3) : dice.Between(0.4, 1.1);
    const QColor colour = dice.Throw() < 0.25 ? QColor(255, 225, 190) : QColor(225, 235, 255);
    FillDisc(painter, {x, y}, radius, colour);
  }
}

// What the sun lays on the water: bars that grow wider and sparser towards the one who looks.
void DrawGlitter(QPainter& painter, double x, double horizon, double bottom, QColor colour) {
  Dice dice(3);
  painter.setPen(Qt::NoPen);
  for (double y = horizon + 4; y < bottom; y += 7 + (y - horizon) * 0.035) {
    const double depth = (y - horizon) / (bottom - horizon);
    const double half = 26 + 120 * depth * dice.Between(0.5, 1.0);
    colour.setAlphaF(static_cast<float>(0.75 - 0.5 * depth));
    painter.setBrush(colour);
    painter.drawRoundedRect(
        QRectF(x - half + dice.Between(-18, 18), y, 2 * half * dice.Between(0.6, 1.0), 3 + 2 * depth), 2, 2);
  }
}

void DrawTree(QPainter& painter, QPointF foot, double height, const QColor& colour) {
  for (int tier = 0; tier < 3; ++tier) {
    const double top = foot.y() - height * (1 - 0.22 * tier);
    const double half = height * (0.14 + 0.07 * tier);
    FillShape(painter,
              QPolygonF({{foot.x(), top},
                         {foot.x() - half, top + height * 0.45},
                         {foot.x() + half, top + height * 0.45}}),
              colour);
  }
}

}  // namespace

void DrawSea(QPainter& painter, QSizeF size) {
  const double horizon = 350;
  const double sun = size.width() * 0.62;
  FillDown(painter, {0, 0, size.width(), horizon},
           {QColor(45, 40, 95), QColor(140, 70, 120), QColor(240, 125, 95), QColor(255, 200, 120)});
  DrawGlow(painter, {sun, horizon - 55}, 260, QColor(255, 225, 150, 190));
  FillDisc(painter, {sun, horizon - 55}, 48, QColor(255, 244, 205));
  FillDown(painter, {0, horizon, size.width(), size.height() - horizon},
           {QColor(235, 140, 105), QColor(120, 75, 120), QColor(35, 40, 85)});
  DrawGlitter(painter, sun, horizon, size.height(), QColor(255, 225, 160));
  QPolygonF island = Ridge({size.width() * 0.42, horizon}, horizon - 22, 26, 11);
  FillShape(painter, island, QColor(70, 45, 85));
  for (const QPointF bird : {QPointF(0.30, 150), QPointF(0.36, 125), QPointF(0.42, 165)})
    DrawBird(painter, {bird.x() * size.width(), bird.y()}, 17);
}

void DrawMountains(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size},
           {QColor(90, 140, 190), QColor(200, 215, 215), QColor(250, 225, 190)});
  DrawGlow(painter, {size.width() * 0.25, 190}, 200, QColor(255, 245, 215, 220));
  FillDisc(painter, {size.width() * 0.25, 190}, 34, QColor(255, 250, 230));
  constexpr int kRidges = 6;
  for (int i = 0; i < kRidges; ++i) {
    const double near = i / (kRidges - 1.0);
    const double height = 235 + 62 * i;
    const QColor colour =
        QColor::fromRgbF(static_cast<float>(0.58 - 0.50 * near), static_cast<float>(0.68 - 0.46 * near),
                         static_cast<float>(0.74 - 0.46 * near));
    FillShape(painter, Ridge(size, height, 120 - 8 * i, 20U + static_cast<unsigned>(i)), colour);
    FillDown(painter, {0, height + 20, size.width(), 110},
             {QColor(235, 235, 230, 0), QColor(235, 235, 230, 70), QColor(235, 235, 230, 0)});
  }
}

void DrawNight(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size}, {QColor(8, 10, 32), QColor(20, 30, 75), QColor(60, 70, 120)});
  Dice dice(5);
  for (int i = 0; i < 60; ++i) {
    const double along = dice.Throw();
    const QPointF at(size.width() * along, 480 - 430 * along + dice.Between(-45, 45));
    DrawGlow(painter, at, dice.Between(50, 110), QColor(150, 150, 215, 20));
  }
  const int stars = static_cast<int>(size.width() * 0.6);
  DrawStars(painter, size, 520.0, stars);
  const QPointF moon(size.width() * 0.2, 130);
  DrawGlow(painter, moon, 130, QColor(245, 240, 200, 110));
  QPainterPath crescent;
  crescent.addEllipse(moon, 40, 40);
  QPainterPath shade;
  shade.addEllipse(moon + QPointF(18, -10), 36, 36);
  painter.fillPath(crescent.subtracted(shade), QColor(255, 248, 215));
  FillShape(painter, Ridge(size, 470, 55, 31), QColor(18, 24, 52));
  FillShape(painter, Ridge(size, 535, 40, 32), QColor(8, 11, 28));
  const QPointF house(size.width() * 0.7, 520);
  DrawGlow(painter, house + QPointF(0, -12), 60, QColor(255, 200, 110, 120));
  painter.fillRect(QRectF(house.x() - 24, house.y() - 28, 48, 40), QColor(14, 14, 26));
  FillShape(painter,
            QPolygonF({house + QPointF(-31, -27), house + QPointF(0, -50), house + QPointF(31, -27)}),
            QColor(10, 10, 20));
  painter.fillRect(QRectF(house.x() - 8, house.y() - 18, 16, 16), QColor(255, 214, 130));
}

void DrawFields(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size},
           {QColor(115, 185, 225), QColor(210, 235, 235), QColor(235, 240, 215)});
  for (const QPointF cloud : {QPointF(0.2, 110), QPointF(0.62, 80), QPointF(0.85, 150)})
    for (int i = 0; i < 5; ++i)
      FillDisc(painter, {cloud.x() * size.width() + i * 34 - 68, cloud.y() - (i % 2) * 16},
               26 + 5 * (2 - std::abs(i - 2)), QColor(255, 255, 255, 215));
  FillShape(painter, Ridge(size, 270, 60, 41), QColor(95, 150, 150));
  FillShape(painter, Ridge(size, 320, 40, 42), QColor(75, 135, 100));
  constexpr int kTerraces = 8;
  for (int i = 0; i < kTerraces; ++i) {
    const double y = 345 + i * i * 4.4;
    const QPolygonF edge = Ridge(size, y, 14 + 4 * i, 43U + static_cast<unsigned>(i % 3));
    FillShape(painter, edge,
              i % 2 == 0 ? QColor(150 + 8 * i, 190 + 3 * i, 75) : QColor(95 + 8 * i, 160 + 4 * i, 70));
    painter.setPen(QPen(QColor(70, 115, 55), 1.5 + 0.5 * i));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(edge);
  }
  for (const double x : {0.12, 0.17, 0.9})
    DrawTree(painter, {x * size.width(), 372}, 90, QColor(40, 95, 70));
}

void DrawLighthouse(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size}, {QColor(35, 50, 95), QColor(95, 110, 155), QColor(230, 175, 150)});
  const double x = size.width() * 0.55;
  FillShape(painter, QPolygonF({{x, 168}, {size.width() * 1.4, 60}, {size.width() * 1.4, 250}}),
            QColor(255, 240, 190, 70));
  FillDown(painter, {0, 440, size.width(), 160}, {QColor(120, 125, 160), QColor(35, 50, 85)});
  FillShape(painter, Ridge({size.width() * 0.86, 600}, 455, 30, 52), QColor(50, 50, 60));
  FillShape(painter, QPolygonF({{x - 26, 190}, {x + 26, 190}, {x + 44, 470}, {x - 44, 470}}),
            QColor(240, 238, 230));
  for (const double y : {235.0, 325.0, 415.0})
    FillShape(painter,
              QPolygonF({{x - 26 - (y - 190) * 0.064, y},
                         {x + 26 + (y - 190) * 0.064, y},
                         {x + 26 + (y - 150) * 0.064, y + 40},
                         {x - 26 - (y - 150) * 0.064, y + 40}}),
              QColor(190, 60, 55));
  painter.fillRect(QRectF(x - 34, 182, 68, 10), QColor(55, 55, 65));
  painter.fillRect(QRectF(x - 20, 148, 40, 34), QColor(255, 243, 195));
  FillShape(painter, QPolygonF({{x - 26, 150}, {x, 118}, {x + 26, 150}}), QColor(150, 45, 45));
  DrawGlow(painter, {x, 165}, 90, QColor(255, 240, 190, 200));
}

void DrawStation(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size}, {QColor(18, 30, 75), QColor(45, 75, 140), QColor(130, 160, 200)});
  DrawStars(painter, size, 180.0, 60);
  FillShape(painter, Ridge(size, 330, 70, 61), QColor(25, 45, 90));
  const double middle = size.width() * 0.38;
  FillShape(painter, QPolygonF({{0, 430}, {size.width(), 405}, {size.width(), 600}, {0, 600}}),
            QColor(45, 55, 85));
  for (const double side : {-1.0, 1.0}) {
    painter.setPen(QPen(QColor(150, 170, 205), 4));
    painter.drawLine(QPointF(size.width() * 0.8 + side * 12, 412),
                     QPointF(size.width() * 0.78 + side * 130, 600));
  }
  FillShape(painter, QPolygonF({{0, 450}, {middle + 170, 422}, {middle + 250, 600}, {0, 600}}),
            QColor(70, 80, 110));
  painter.fillRect(QRectF(middle - 4, 190, 8, 270), QColor(20, 25, 40));
  painter.fillRect(QRectF(middle - 4, 190, 62, 7), QColor(20, 25, 40));
  FillShape(painter, QPolygonF({{middle + 52, 202}, {middle + 175, 452}, {middle - 75, 462}}),
            QColor(255, 225, 150, 70));
  DrawGlow(painter, {middle + 52, 204}, 90, QColor(255, 235, 175, 240));
  for (const double at : {10.0, 38.0, 74.0}) {  // who waits for the first train
    FillDisc(painter, {middle + at, 402}, 9, QColor(22, 26, 45));
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF(middle + at - 11, 411, 22, 44), 8, 8);
  }
}

void DrawWaterfall(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size},
           {QColor(185, 220, 230), QColor(120, 165, 150), QColor(40, 80, 70)});
  const double middle = size.width() / 2;
  for (const double side : {-1.0, 1.0}) {
    Dice dice(side < 0 ? 71U : 72U);
    QPolygonF cliff({{middle + side * size.width(), 40}});
    for (double y = 40; y <= 600; y += 14)
      cliff << QPointF(middle + side * (22 + dice.Between(0, 9) + y * 0.02), y);
    cliff << QPointF(middle + side * size.width(), 600);
    FillShape(painter, cliff, side < 0 ? QColor(60, 85, 70) : QColor(50, 72, 62));
  }
  FillDown(painter, {middle - 22, 44, 44, 520},
           {QColor(240, 250, 255), QColor(215, 235, 245), QColor(235, 248, 252)});
  Dice dice(73);
  for (int i = 0; i < 60; ++i) {
    const double x = middle + dice.Between(-21, 21);
    const double y = dice.Between(50, 500);
    painter.setPen(QPen(QColor(150, 190, 210, 150), 1));
    painter.drawLine(QPointF(x, y), QPointF(x, y + dice.Between(15, 60)));
  }
  for (int i = 0; i < 26; ++i)
    DrawGlow(painter, {middle + dice.Between(-50, 50), dice.Between(535, 575)}, dice.Between(14, 34),
             QColor(240, 250, 255, 140));
  FillDown(painter, {0, 568, size.width(), 32}, {QColor(120, 170, 170), QColor(50, 95, 100)});
}

void DrawRoad(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size},
           {QColor(250, 170, 120), QColor(255, 215, 165), QColor(255, 240, 215)});
  FillShape(painter, Ridge(size, 290, 80, 81), QColor(200, 130, 120));
  FillShape(painter, Ridge(size, 340, 40, 82), QColor(140, 105, 110));
  FillDown(painter, {0, 370, size.width(), 230}, {QColor(190, 160, 90), QColor(120, 105, 60)});
  const double middle = size.width() * 0.5;
  FillShape(painter,
            QPolygonF({{middle - 8, 370}, {middle + 8, 370}, {middle + 190, 600}, {middle - 190, 600}}),
            QColor(80, 75, 85));
  for (double near = 0.06; near < 1; near = near * 1.5 + 0.03) {
    const double y = 370 + 230 * near;
    painter.fillRect(QRectF(middle - 5 * near, y, 10 * near, 22 * near), QColor(250, 235, 190));
  }
  for (const double near : {0.08, 0.2, 0.42, 0.8})
    for (const double side : {-1.0, 1.0})
      DrawTree(painter, {middle + side * (30 + 260 * near), 372 + 150 * near}, 60 + 190 * near,
               QColor(70, 75, 70));
}

}  // namespace quillet
