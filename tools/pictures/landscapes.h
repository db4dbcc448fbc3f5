// Land and sea at several hours of the day. Drawn in shapes.h's units; the maker's one thread.
#pragma once

#include "tools/pictures/shapes.h"

namespace quillet {

void DrawSea(QPainter& painter, QSizeF size);
void DrawMountains(QPainter& painter, QSizeF size);
void DrawNight(QPainter& painter, QSizeF size);
void DrawFields(QPainter& painter, QSizeF size);
void DrawLighthouse(QPainter& painter, QSizeF size);
void DrawStation(QPainter& painter, QSizeF size);
void DrawWaterfall(QPainter& painter, QSizeF size);
void DrawRoad(QPainter& painter, QSizeF size);

}  // namespace quillet
