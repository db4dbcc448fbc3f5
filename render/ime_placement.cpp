#include "render/ime_placement.h"

#include <algorithm>

#include "core/screen_snapshot.h"

namespace quillet {

ImePlacement PlaceComposition(const Layout& layout, RowSize size, int cursorRow, int cursorCol) {
  const RowGrid grid = GridOf(layout, size);
  const int box = 2 * grid.halfCell;
  // Centres the box in the row; one that is higher than its row begins at the row's top.
  const int offset = std::max(0, layout.rowHeight - box) / 2;
  return {.x = std::clamp(cursorCol, 0, kCols - 1) * grid.halfCell + grid.left,
          .y = RowTop(layout, std::clamp(cursorRow, 0, kBottomRow)) + offset,
          .size = box};
}

}  // namespace quillet
