// Changes to the cells of a row that is to be drawn: texts hidden or blanked, keywords coloured. A
// double-width character is changed whole or not at all. Called by the styling functions. Pure.
#pragma once

#include "bbs/cell_range.h"
#include "bbs/keywords.h"
#include "render/page_row.h"

namespace quillet {

// What stands in place of a hidden character.
enum class HiddenForm { kStars, kBlanks };

// Characters that begin within the range; blanks stay what they are. The cells are marked as hidden.
void HideText(PageRow& row, CellRange range, HiddenForm form);

// The same with blanks for what need not be repeated, but is no secret: without the mark.
void LeaveOut(PageRow& row, CellRange range);

// Gives the keywords in the row their colour, on grounds where it can be read; those that overlap are
// coloured from the first one's begin to the last one's end. Returns whether there was any.
bool ColourKeywords(PageRow& row, const Keywords& keywords);

// Gives the cells of the range another foreground.
void Colour(PageRow& row, CellRange range, std::uint8_t fore);

}  // namespace quillet
