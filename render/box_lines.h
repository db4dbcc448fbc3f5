// The box-drawing characters U+2500 to U+257F. Called by shape_glyphs.cpp. Pure.
#pragma once

#include "render/shape_canvas.h"

namespace quillet {

inline constexpr char16_t kFirstBoxLine = 0x2500;
inline constexpr char16_t kLastBoxLine = 0x257F;

// `unit` lies within the two.
void DrawBoxLine(char16_t unit, ShapeCanvas& canvas);

// Thickness in pixels of a light line in a cell `width` pixels wide.
int LightThickness(int width);

}  // namespace quillet
