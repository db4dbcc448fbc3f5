// Where the input method composes: the box of the cursor's cell and the size of the text there. Pure.
#pragma once

#include "render/layout.h"
#include "render/page_row.h"

namespace quillet {

struct ImePlacement {
  int x = 0;  // top left corner of the glyph box, in device pixels of the client area
  int y = 0;
  int size = 12;  // em size of the text, device pixels; also the box's width and height

  bool operator==(const ImePlacement&) const = default;
};

// `size` is that of the row that is being typed in. The cursor is held inside the screen.
ImePlacement PlaceComposition(const Layout& layout, RowSize size, int cursorRow, int cursorCol);

}  // namespace quillet
