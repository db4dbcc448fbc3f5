// What the drawings of the demo's pictures are put together from. All of them draw in units of which the
// picture is kDrawingHeight high, whatever its size in pixels. The maker's one thread.
#pragma once

#include <cstdint>
#include <initializer_list>

#include <QColor>
#include <QPainter>
#include <QPolygonF>
#include <QRectF>
#include <QSizeF>

namespace quillet {

inline constexpr double kDrawingHeight = 600;

// Draws into the whole of a picture of that size in units.
using Drawing = void (*)(QPainter&, QSizeF);

// The same numbers on every machine, from 0 to below 1.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : state_(seed) {}
  double Throw();
  double Between(double low, double high) { return low + Throw() * (high - low); }

 private:
  std::uint32_t state_;
};

// From top to bottom, evenly.
void FillDown(QPainter& painter, const QRectF& area, std::initializer_list<QColor> colours);
// Fades away from its middle.
void DrawGlow(QPainter& painter, QPointF middle, double radius, QColor colour);
void FillDisc(QPainter& painter, QPointF middle, double radius, const QBrush& brush);
// The outline of hills from the left edge to the right one, down to the bottom. `roughness`: how far it goes
// up and down, in units.
QPolygonF Ridge(QSizeF size, double height, double roughness, std::uint32_t seed);
void FillShape(QPainter& painter, const QPolygonF& shape, const QBrush& brush);

}  // namespace quillet
