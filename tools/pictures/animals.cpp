#include "tools/pictures/animals.h"

#include <QPainterPath>

namespace quillet {
namespace {

void DrawTail(QPainter& painter, const QColor& coat, double swing) {
  QPainterPath tail({55, -18});
  tail.cubicTo({120, -5}, {140 + 20 * swing, -60}, {118 + 45 * swing, -120});
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(coat, 22, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(tail);
}

void DrawFace(QPainter& painter, double openness) {
  for (const double side : {-1.0, 1.0}) {
    painter.setPen(QPen(QColor(40, 35, 35), 3, Qt::SolidLine, Qt::RoundCap));
    if (openness < 0.15) {
      painter.drawLine(QPointF(side * 26 - 11, -163), QPointF(side * 26 + 11, -163));
    } else {
      painter.setPen(Qt::NoPen);
      painter.setBrush(QColor(170, 205, 90));
      painter.drawEllipse(QPointF(side * 26, -164), 13, 13 * openness);
      painter.setBrush(QColor(30, 30, 30));
      painter.drawEllipse(QPointF(side * 26, -164), 4.5, 11 * openness);
    }
    painter.setPen(QPen(QColor(250, 245, 235, 220), 1.6));
    for (const double slope : {-6.0, 2.0, 10.0})
      painter.drawLine(QPointF(side * 20, -140), QPointF(side * 74, -144 + slope));
  }
  FillShape(painter, QPolygonF({{-7, -148}, {7, -148}, {0, -140}}), QColor(220, 125, 125));
  QPainterPath mouth({-12, -133});
  mouth.quadTo({-4, -128}, {0, -139});
  mouth.quadTo({4, -128}, {12, -133});
  painter.setPen(QPen(QColor(60, 45, 45), 2.2, Qt::SolidLine, Qt::RoundCap));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(mouth);
}

void DrawHead(QPainter& painter, const QColor& coat) {
  for (const double side : {-1.0, 1.0}) {
    FillShape(painter, QPolygonF({{side * 60, -170}, {side * 52, -226}, {side * 12, -196}}), coat);
    FillShape(painter, QPolygonF({{side * 52, -182}, {side * 48, -212}, {side * 24, -194}}),
              QColor(235, 165, 160));
  }
  painter.setPen(Qt::NoPen);
  painter.setBrush(coat);
  painter.drawEllipse(QPointF(0, -155), 64, 52);
}

}  // namespace

void DrawCat(QPainter& painter, QPointF foot, const QColor& coat, const CatPose& pose) {
  painter.save();
  painter.translate(foot);
  DrawTail(painter, coat.darker(108), pose.tail);
  painter.setPen(Qt::NoPen);
  painter.setBrush(coat);
  painter.drawEllipse(QPointF(0, -62), 72, 64);
  painter.setBrush(coat.lighter(125));
  painter.drawEllipse(QPointF(0, -58), 36, 48);
  painter.setBrush(coat.lighter(112));
  for (const double side : {-1.0, 1.0})
    painter.drawRoundedRect(QRectF(side * 22 - 17, -34, 34, 34), 16, 16);
  DrawHead(painter, coat);
  painter.setPen(QPen(coat.darker(135), 6, Qt::SolidLine, Qt::RoundCap));
  for (const double x : {-16.0, 0.0, 16.0})
    painter.drawLine(QPointF(x, -204), QPointF(x * 0.8, -188));
  DrawFace(painter, pose.openness);
  painter.restore();
}

void DrawCatAtWindow(QPainter& painter, QSizeF size) {
  painter.fillRect(QRectF(QPointF(0, 0), size), QColor(235, 220, 195));
  const QRectF window(size.width() * 0.14, 60, size.width() * 0.72, 410);
  painter.fillRect(window.adjusted(-16, -16, 16, 16), QColor(250, 246, 236));
  FillDown(painter, window, {QColor(140, 195, 225), QColor(200, 228, 235)});
  FillDisc(painter, {window.right() - 90, 140}, 42, QColor(255, 236, 170));
  painter.save();
  painter.setClipRect(window);
  FillShape(painter, Ridge(size, 400, 60, 91), QColor(130, 180, 130));
  FillShape(painter, Ridge(size, 440, 40, 92), QColor(95, 155, 110));
  painter.restore();
  painter.fillRect(QRectF(window.center().x() - 7, window.top(), 14, window.height()), QColor(250, 246, 236));
  painter.fillRect(QRectF(0, 470, size.width(), 26), QColor(190, 140, 95));
  painter.fillRect(QRectF(0, 496, size.width(), 104), QColor(220, 200, 170));
  DrawCat(painter, {size.width() * 0.36, 474}, QColor(222, 145, 70), {});
  const double pot = size.width() * 0.72;
  FillShape(painter, QPolygonF({{pot - 38, 405}, {pot + 38, 405}, {pot + 28, 472}, {pot - 28, 472}}),
            QColor(185, 90, 65));
  for (const double lean : {-50.0, -22.0, 4.0, 30.0, 54.0}) {
    QPainterPath leaf({pot, 408});
    leaf.quadTo({pot + lean * 0.2 - 12, 350}, {pot + lean, 310});
    leaf.quadTo({pot + lean * 0.2 + 14, 352}, {pot, 408});
    painter.fillPath(leaf, QColor(70, 140, 80));
  }
}

void DrawCatOnRoof(QPainter& painter, QSizeF size) {
  FillDown(painter, {QPointF(0, 0), size}, {QColor(20, 22, 60), QColor(55, 55, 110), QColor(120, 95, 140)});
  Dice dice(95);
  for (int i = 0; i < 130; ++i)
    FillDisc(painter, {dice.Between(0, size.width()), dice.Between(0, 380)}, dice.Between(0.5, 1.6),
             QColor(230, 232, 255));
  const QPointF moon(size.width() * 0.45, 235);
  DrawGlow(painter, moon, 300, QColor(255, 245, 205, 150));
  FillDisc(painter, moon, 150, QColor(255, 246, 214));
  for (const QPointF sea : {QPointF(-50, -40), QPointF(40, 20), QPointF(-10, 70)})
    FillDisc(painter, moon + sea, 24, QColor(238, 226, 190));
  FillShape(
      painter,
      QPolygonF({{0, 470}, {size.width() * 0.45, 400}, {size.width(), 480}, {size.width(), 600}, {0, 600}}),
      QColor(40, 28, 48));
  for (int row = 0; row < 4; ++row)
    for (double x = -20; x < size.width() + 20; x += 42) {
      painter.setPen(QPen(QColor(62, 46, 70), 3));
      painter.setBrush(Qt::NoBrush);
      painter.drawArc(QRectF(x + (row % 2) * 21, 490 + row * 30, 42, 30), 180 * 16, 180 * 16);
    }
  DrawCat(painter, {size.width() * 0.45, 410}, QColor(46, 42, 54), {.tail = 1, .openness = 0.9});
}

}  // namespace quillet
