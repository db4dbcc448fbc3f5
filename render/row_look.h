// What each cell of a row looks like: character, colours, caret. The frame painter draws a row from this
// value alone and compares it with the one it drew last. Pure.
#pragma once

#include <array>
#include <cstdint>

#include "core/charset.h"
#include "core/screen_snapshot.h"
#include "render/palette.h"
#include "render/row_cells.h"

namespace quillet {

struct CellLook {
  char16_t unit = 0;  // 0: nothing but the background
  CellPart part = CellPart::kSingle;
  bool caret = false;
  std::uint32_t foreground = 0;  // 0xRRGGBB; 0 where nothing is drawn in it
  std::uint32_t background = 0;

  bool operator==(const CellLook&) const = default;
};

using RowLook = std::array<CellLook, kCols>;

struct LookOptions {
  const Palette* palette = nullptr;
  bool lighterDarkBlue = true;  // blue on black in a shade that can be read
  bool blinkOff = false;        // blinking characters are in their invisible half
};

// `caretCol` is outside 0-79 when the caret is not in this row; on a double-width character it takes both
// cells.
RowLook ResolveRow(const ScreenRow& text, const ScreenRow& attr, int caretCol, const CharsetTables& tables,
                   const LookOptions& options);

// The caret bar's colour: the cell's foreground, or black or white where that is hard to see.
std::uint32_t CaretColour(const CellLook& cell);

}  // namespace quillet
