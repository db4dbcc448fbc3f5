// Where the grid lies in the window: row height, glyph size and origin from the client area and the spacing
// settings. All lengths in device pixels, so that cell edges lie on pixels at every scale factor. Pure.
#pragma once

#include "render/page_row.h"

namespace quillet {

enum class LayoutMode {
  kOrdinary,  // centred, with a margin on both sides where the width allows
  kFitted,    // glyphs as high as their rows, as large as the window allows
  kNarrow     // a small window that shows the lower left part of the screen, 33 double-width characters wide
};

struct LayoutInput {
  int width = 0;  // client area in device pixels
  int height = 0;
  int lineSpacing = 0;
  int pushLineSpacing = 0;
  LayoutMode mode = LayoutMode::kOrdinary;
  int zoomPercent = 100;   // of the largest grid that the window has room for; 10 to 100
  bool atTopLeft = false;  // the grid begins in the window's corner, as a text editor's does
};

struct Layout {
  int rowHeight = 0;      // height of one of the 24 rows
  int fontSize = 12;      // em size, even, at least 12; also the width of a double-width character
  int halfCell = 6;       // fontSize / 2, the width of one of the 80 cells
  int pushFontSize = 12;  // the em size of push lines
  int originX = 0;        // the grid's top left corner; negative when the window is too small for it
  int originY = 0;
  int rowsInSight = 24;  // that lie whole within the window: the lowest ones, 2 at least
  // Where push lines begin: at originX, or as far left of it as wider push lines need to be centred.
  int pushOriginX = 0;

  bool operator==(const Layout&) const = default;
};

// For any input (sizes below 1 count as 1).
Layout RecalcLayout(const LayoutInput& input);

// Where the cells of a row lie from left to right, in device pixels.
struct RowGrid {
  int left = 0;  // of column 0
  int halfCell = 6;

  bool operator==(const RowGrid&) const = default;
};

RowGrid GridOf(const Layout& layout, RowSize size);

// The first of the rows in sight.
int FirstInSight(const Layout& layout);
// Where a row begins, in device pixels from the window's top; rows out of sight lie beyond its edge. In a
// window too low for all of them a grid whose corner lies in the window begins with the first one in sight.
int RowTop(const Layout& layout, int row);
// The row at a place of the window, counted beyond the grid too.
int RowAt(const Layout& layout, int y);

}  // namespace quillet
