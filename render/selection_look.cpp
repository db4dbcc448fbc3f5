#include "render/selection_look.h"

#include <algorithm>

namespace quillet {

void LaySelection(PageRow& row, int first, int last) {
  for (int col = std::max(first, 0); col < std::min(last, kCols); ++col)
    row.cells[static_cast<std::size_t>(col)].style |= CS_SELECTED;
}

}  // namespace quillet
