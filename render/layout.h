// Where the grid lies in the window: row height, glyph size and origin from the client area and the spacing
// settings. All lengths in device pixels, so that cell edges lie on pixels at every scale factor. Pure.
#pragma once

namespace quillet {

struct LayoutInput {
  int width = 0;  // client area in device pixels
  int height = 0;
  int lineSpacing = 0;
  int pushLineSpacing = 0;
};

struct Layout {
  int rowHeight = 0;      // height of one of the 24 rows
  int fontSize = 12;      // em size, even, at least 12; also the width of a double-width character
  int halfCell = 6;       // fontSize / 2, the width of one of the 80 cells
  int pushFontSize = 12;  // the em size of push lines
  int originX = 0;        // the grid's top left corner; negative when the window is too small for it
  int originY = 0;

  bool operator==(const Layout&) const = default;
};

// Fits 24 rows and 40 double-width characters, centred, for any input (sizes below 1 count as 1).
Layout RecalcLayout(const LayoutInput& input);

}  // namespace quillet
