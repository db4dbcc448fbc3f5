// Lays a selection over a row of the picture, after all dressing. Pure.
#pragma once

#include "render/page_row.h"

namespace quillet {

// Columns first to last-1, cut to the row. All else of the cells stays.
void LaySelection(PageRow& row, int first, int last);

}  // namespace quillet
