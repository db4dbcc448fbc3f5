// The words that a double click selects. Pure; any thread once the character tables are loaded.
#pragma once

#include "input/text/line_characters.h"

namespace quillet {

// The word, web address or run of blanks or signs that the character at `col` belongs to. Empty, at the
// nearest end of the line, for a column outside 0-79.
ColumnSpan WordAt(const ArticleLine& line, int col);

}  // namespace quillet
