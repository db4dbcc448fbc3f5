// Which columns of its row a composition takes: at the cursor where it has room there, else moved to the
// left, else as much of it as the window shows, around the input method's own cursor. Called by the input
// method adapter. Pure.
#pragma once

#include "render/layout.h"
#include "render/page_row.h"

namespace quillet {

// Columns first..last-1 of the screen.
struct ColumnRange {
  int first = 0;
  int last = 0;

  bool operator==(const ColumnRange&) const = default;
};

// The columns of a row that lie whole in a client area `width` device pixels wide; empty when none does.
ColumnRange VisibleColumns(const Layout& layout, RowSize size, int width);

// All counted in half-width cells.
struct CompositionFit {
  int col = 0;      // of the row, where the part that is shown begins
  int skipped = 0;  // of the composition, left of that part
  int shown = 0;

  bool operator==(const CompositionFit&) const = default;
};

// A composition `cells` wide whose own cursor stands at its cell `caret` (0 to `cells`), typed at column
// `col`.
CompositionFit FitComposition(int cells, int caret, int col, ColumnRange visible);

}  // namespace quillet
