// The marks that a user id gets wherever it stands: the user's own colour, and what the lists note of it.
// Pure.
#pragma once

#include <string_view>

#include "render/page_row.h"
#include "render/row_edit.h"
#include "render/style/style_rules.h"

namespace quillet {

struct IdPlace {
  CellRange id;
  CellRange text;         // of the line behind the id, with the room behind its end
  bool isMasked = false;  // nothing may tell whose it is but a description that is asked for
};

// The row's texts are hidden already where they are to be. An empty id gets nothing.
void MarkId(PageRow& row, const IdPlace& place, std::u16string_view id, const StyleRules& rules);

}  // namespace quillet
