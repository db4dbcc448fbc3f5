// One row of bytes taken apart into the characters that are drawn: the grid is kept whatever the bytes
// are. Called by the frame painter for each row that changed. Pure.
#pragma once

#include <array>
#include <cstdint>

#include "core/charset.h"
#include "render/page_row.h"

namespace quillet {

enum class CellPart : std::uint8_t {
  kSingle,  // a character one cell wide
  kLead,    // the left half of a double-width character; the right half is the next cell
  kTrail,   // the right half
};

// What a double-width pair shows that the table does not know.
inline constexpr char16_t kUnknownUnit = 0xFFFD;

struct RowCell {
  char16_t unit = u' ';  // both halves of a pair carry the pair's unit
  CellPart part = CellPart::kSingle;

  bool operator==(const RowCell&) const = default;
};

using RowCells = std::array<RowCell, kCols>;

// A lead byte (0x81-0xFE) pairs with a trail byte (0x40-0x7E, 0x80-0xFE) to its right. A byte that found no
// partner, as when one half of a character was overwritten, and a control byte are drawn as blanks.
RowCells DecodeRow(const std::array<PageCell, kCols>& row, const CharsetTables& tables);

}  // namespace quillet
