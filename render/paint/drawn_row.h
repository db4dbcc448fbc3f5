// What a row of the picture was drawn from, and how much of it has to be drawn again for another one. Used by
// the frame painter. Pure.
#pragma once

#include "render/page_row.h"
#include "render/paint/frame_picture.h"
#include "render/row_look.h"

namespace quillet {

// What of a picture of an article lies in a row.
struct PictureStrip {
  std::int64_t key = 0;  // of the image; 0: none yet
  int top = 0;           // where the picture begins, in device pixels from the row's top
  PixelSize size;        // empty: there is no picture
  PictureSign sign = PictureSign::kNone;

  bool operator==(const PictureStrip&) const = default;
};

// What a row's picture follows from beside the row itself.
struct RowExtras {
  Caret caret;
  bool blinkOff = false;
  int rightInset = 0;  // 0 where no mark keeps away from it
  PictureStrip strip{};

  bool operator==(const RowExtras&) const = default;
};

struct DrawnRow {
  PageRow page;
  RowExtras extras;
  RowLook look;  // follows from both, as does the margin
  CellLook margin;
};

// Whether rows are equal; their cells are compared as the bytes they are.
bool SameRow(const PageRow& one, const PageRow& other);

// Where the age of a row begins: behind column 77, or behind the last cell if there is text in the way.
int AgeColumn(const PageRow& page);

// A range of cells that cuts no double-width character, or the whole width of the window at the row's height.
struct RowChange {
  int first = kCols;
  int last = 0;
  bool band = false;

  bool Empty() const { return !band && first >= last; }
};

// `pennantsOnCells`: where a row has flags they are drawn over its cells.
RowChange ChangeOf(const DrawnRow& before, const DrawnRow& now, bool pennantsOnCells);

}  // namespace quillet
