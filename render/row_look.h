// What each cell of a row looks like: character, colours, underline, caret. The frame painter draws a row
// from this value alone and compares it with the one it drew last. Pure.
#pragma once

#include <array>
#include <cstdint>

#include "core/charset.h"
#include "render/page_row.h"
#include "render/palette.h"
#include "render/row_cells.h"

namespace quillet {

enum class CellGround : std::uint8_t {
  kOpaque,
  kPage,  // the page's own, which a background picture shows through
  kVeil,  // the client's own under push lines and captions, which it shines through a little
};

enum class CaretShape : std::uint8_t {
  kLine,   // below the character: where the BBS's cursor marks a line
  kBlock,  // the whole cell: where text is typed
};

struct Caret {
  int col = -1;  // outside 0-79: not in this row
  CaretShape shape = CaretShape::kLine;

  bool operator==(const Caret&) const = default;
};

struct CellLook {
  char16_t unit = 0;  // 0: nothing but the background
  CellPart part = CellPart::kSingle;
  bool caret = false;  // of kLine; a block is in the colours
  bool underline = false;
  CellGround ground = CellGround::kOpaque;
  std::uint32_t foreground = 0;  // 0xRRGGBB; 0 where nothing is drawn in it
  std::uint32_t background = 0;

  bool operator==(const CellLook&) const = default;
};

using RowLook = std::array<CellLook, kCols>;

// Of what is marked: alike over push lines, the cursor bar, headers and coloured text, so that also what is
// written in the colour of its ground can be read.
struct MarkColours {
  std::uint32_t ground = 0;
  std::uint32_t text = 0;
};

// The colours of a palette as they are drawn: what cannot be read on a ground of the client's own is lighter
// there. Worked out once for a palette.
class LookColours {
 public:
  // `lighterDarkBlue`: blue on the dark grounds comes in a shade that can be read.
  explicit LookColours(const Palette& palette, bool lighterDarkBlue = true);

  std::uint32_t Background(const PageCell& cell) const;
  std::uint32_t Foreground(const PageCell& cell, char16_t unit) const;
  // The ground under the cursor bar; under the pointer's row it is between this and the page's.
  std::uint32_t Bar() const { return bar_; }
  // Selected text.
  std::uint32_t SelectedGround() const { return selected_.ground; }
  std::uint32_t SelectedText() const { return selected_.text; }
  // A palette's index beyond the last counts as the last.
  std::uint32_t At(std::uint8_t index) const;
  // Blue that can be read on the page's ground, for marks.
  std::uint32_t ReadableBlue() const { return readableBlue_; }

 private:
  const MarkColours& MarkOf(const PageCell& cell) const;

  Palette palette_;
  std::uint32_t bar_ = 0;
  std::uint32_t hover_ = 0;
  std::uint32_t readableBlue_ = 0;
  std::uint32_t signOnPage_ = 0;
  std::uint32_t signOnPush_ = 0;
  MarkColours selected_, found_, foundHere_;
  // Foregrounds on each ground.
  Palette onPage_;
  Palette onPush_;
  Palette onCaption_;
  Palette onHeader_;
  Palette onBar_;
  Palette onHover_;
};

// The caret takes both cells of a double-width character. `blinkOff`: blinking characters are in their
// invisible half.
RowLook ResolveRow(const PageRow& page, const Caret& caret, bool blinkOff, const CharsetTables& tables,
                   const LookColours& colours);

// The row left and right of its cells: a blank of the page's ground, or of the ground of its last cell where
// that is the client's own, so that it spans the window whatever the size of the cells. The bar spans rows
// with an age as well, which stands half beside the cells.
CellLook ResolveMargin(const PageRow& page, const LookColours& colours);

// The caret's colour: the cell's foreground, or black or white where that is hard to see.
std::uint32_t CaretColour(const CellLook& cell);

}  // namespace quillet
