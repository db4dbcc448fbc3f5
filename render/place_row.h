// The place that an address belongs to, on the row where the address stands. Pure.
#pragma once

#include <string_view>

#include "bbs/cell_range.h"
#include "render/page_row.h"

namespace quillet {

// What a look-up says of an address, taken apart.
struct PlaceText {
  std::u16string_view mark;  // "*VPN" or "*pxy"; empty: none
  bool isUncertain = false;  // a "#" stands before the name
  bool isKnown = true;
  std::u16string_view name;
};
PlaceText ReadPlaceText(std::u16string_view place);

// Where a place may stand.
enum class PlaceSpot {
  kOverAddress,  // in the address's cells and the blanks in front of them that belong to its field, to the
                 // right
  kBehindLine    // behind the line's last character; over the address where there is no room for it
};

// Writes the place into the row, whose other cells stay as they are; one that is too long is cut at a
// character, with "…" behind it. Returns the cells that were written; empty when the row has no such address.
CellRange LayPlace(PageRow& row, CellRange address, std::u16string_view place, PlaceSpot spot);

}  // namespace quillet
