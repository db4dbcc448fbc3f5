// Lays a selection, or what a search has found, over a row of the picture, after all styling. Pure.
#pragma once

#include "render/page_row.h"

namespace quillet {

// Columns first to last-1, cut to the row. All else of the cells stays.
void LaySelection(PageRow& row, int first, int last);
enum class FoundLook { kOther, kHere };
void LayFound(PageRow& row, int first, int last, FoundLook look);

}  // namespace quillet
