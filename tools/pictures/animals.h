// The cats of the demo's board, in plain shapes. Drawn in shapes.h's units; the maker's one thread.
#pragma once

#include "tools/pictures/shapes.h"

namespace quillet {

// How a cat sits: its tail's swing from -1 to 1, and whether it looks.
struct CatPose {
  double tail = 0.4;
  double openness = 1;  // of the eyes, 0 to 1
};

// Sitting, seen from the front; about 220 units high, standing on `foot`.
void DrawCat(QPainter& painter, QPointF foot, const QColor& coat, const CatPose& pose);
void DrawCatAtWindow(QPainter& painter, QSizeF size);
void DrawCatOnRoof(QPainter& painter, QSizeF size);

}  // namespace quillet
