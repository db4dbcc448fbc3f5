// A line of Big5 text with colour sequences as cells. Pure; any thread.
#pragma once

#include <string_view>
#include <vector>

#include "demo/canvas.h"

namespace quillet::demo {

// Starts with `attr`; ESC "[" numbers "m" changes it, other sequences are dropped, control bytes too. Cut at
// `columns` columns, never through a character.
std::vector<Cell> CellsOf(std::string_view line, std::uint8_t attr = kAttrBlank, int columns = kCols);

// The line without its sequences and control bytes.
std::string PlainText(std::string_view line);

}  // namespace quillet::demo
