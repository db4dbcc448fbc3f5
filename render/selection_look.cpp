#include "render/selection_look.h"

#include <algorithm>

namespace quillet {
namespace {

void LayStyle(PageRow& row, int first, int last, CellStyle style) {
  for (int col = std::max(first, 0); col < std::min(last, kCols); ++col)
    row.cells[static_cast<std::size_t>(col)].style |= style;
}

}  // namespace

void LaySelection(PageRow& row, int first, int last) {
  LayStyle(row, first, last, CS_SELECTED);
}

void LayFound(PageRow& row, int first, int last, FoundLook look) {
  LayStyle(row, first, last, look == FoundLook::kHere ? CS_FOUND_HERE : CS_FOUND);
}

}  // namespace quillet
