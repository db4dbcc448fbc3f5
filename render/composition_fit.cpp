#include "render/composition_fit.h"

#include <algorithm>

namespace quillet {

ColumnRange VisibleColumns(const Layout& layout, RowSize size, int width) {
  const int cell = std::max(1, (size == RowSize::kPush ? layout.pushFontSize : layout.fontSize) / 2);
  const int hidden = std::max(0, -layout.originX);
  const int first = std::min((hidden + cell - 1) / cell, kCols);
  return {first, std::clamp((width - layout.originX) / cell, first, kCols)};
}

CompositionFit FitComposition(int cells, int caret, int col, ColumnRange visible) {
  const int room = std::max(0, visible.last - visible.first);
  if (cells <= room) return {std::clamp(col, visible.first, visible.last - cells), 0, cells};
  return {visible.first, std::clamp(caret - room / 2, 0, cells - room), room};
}

}  // namespace quillet
