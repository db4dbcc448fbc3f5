// A picture as a frame shows it below a line of an article. A plain value; user-interface thread.
#pragma once

#include <cstdint>

#include <QImage>

#include "core/screen_snapshot.h"
#include "render/picture_fit.h"

namespace quillet {

enum class PictureSign : std::uint8_t { kNone, kPlay };

struct FramePicture {
  int firstRow = 0;  // of the page; negative where it begins above
  int rows = 1;      // none of them is drawn from the bottom row on
  PixelSize size;    // device pixels; empty: nothing is drawn
  QImage image;      // of any size; null: nothing but its outline
  PictureSign sign = PictureSign::kNone;

  bool Covers(int row) const { return row >= firstRow && row < firstRow + rows && row < kBottomRow; }
};

}  // namespace quillet
