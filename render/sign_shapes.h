// The signs of the client's own that stand in the cells of a row: a framed picture, a framed triangle for
// what plays. Called by shape_glyphs.cpp. Pure.
#pragma once

#include "render/shape_canvas.h"

namespace quillet {

// What signs are among the characters: control characters, which no row shows.
inline constexpr char16_t kPictureSignUnit = 1;
inline constexpr char16_t kVideoSignUnit = 2;

constexpr bool IsSignUnit(char16_t unit) {
  return unit == kPictureSignUnit || unit == kVideoSignUnit;
}

// In the middle of the tile, lower and narrower than a Chinese character. `unit` is a sign's.
void DrawSign(char16_t unit, ShapeCanvas& canvas);

}  // namespace quillet
