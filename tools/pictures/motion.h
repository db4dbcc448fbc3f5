// What moves: one loop of each, drawn frame by frame. The maker's one thread.
#pragma once

#include "tools/pictures/shapes.h"

namespace quillet {

// `moment`: from 0 to below 1, where the loop begins anew.
using MovingDrawing = void (*)(QPainter&, QSizeF, double moment);

void DrawWaggingCat(QPainter& painter, QSizeF size, double moment);
void DrawPendulums(QPainter& painter, QSizeF size, double moment);
void DrawRain(QPainter& painter, QSizeF size, double moment);

}  // namespace quillet
