// A bowl, a flower, patterns and a chart. Drawn in shapes.h's units; the maker's one thread.
#pragma once

#include "tools/pictures/shapes.h"

namespace quillet {

void DrawNoodles(QPainter& painter, QSizeF size);
void DrawFlower(QPainter& painter, QSizeF size);
void DrawPattern(QPainter& painter, QSizeF size);
void DrawChart(QPainter& painter, QSizeF size);
void DrawPoster(QPainter& painter, QSizeF size);
// As a film's first picture: mountains between two black bars.
void DrawFilm(QPainter& painter, QSizeF size);
void DrawStage(QPainter& painter, QSizeF size);
// A leaf on plain ground, of few colours.
void DrawLeaf(QPainter& painter, QSizeF size);

}  // namespace quillet
