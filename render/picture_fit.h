// How large a link's picture stands below its line, and how many rows that takes. Pure.
#pragma once

#include "settings/setting_choices.h"

namespace quillet {

struct PixelSize {
  int width = 0;
  int height = 0;

  bool IsEmpty() const { return width <= 0 || height <= 0; }
  bool operator==(const PixelSize&) const = default;
};

// What pictures have to fit. Device pixels.
struct PictureRoom {
  int width = 0;  // of the grid
  int rowHeight = 0;
  int rows = 0;          // of the article that the window shows
  int windowHeight = 0;  // of the whole window
  double scale = 1;      // device pixels that a picture's pixel takes at its natural size

  bool operator==(const PictureRoom&) const = default;
};

// The largest that a picture may stand there; 1 x 1 at least. A thumbnail takes four rows, a picture of
// natural size two thirds of the window's height. One as wide as the grid is as high as its shape asks, but
// two windows at most.
PixelSize MostOf(PictureSize size, const PictureRoom& room);

// `natural` is the picture's own size; the shape of it is kept. 1 x 1 at least.
PixelSize FitPicture(PictureSize size, PixelSize natural, const PictureRoom& room);

// The rows that hold a picture of so many pixels and the gap around it.
int RowsFor(int height, int rowHeight);
// The gap above a picture; there is as much below it at least.
int PictureGap(int rowHeight);

}  // namespace quillet
