// One row of the picture as it is to be drawn: the bytes of the screen or of an article's line, with the
// colours and marks that the client has given them. Made by the styling functions, drawn by the frame
// painter, which compares rows to find what changed. Plain values; pure.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/screen_snapshot.h"

namespace quillet {

enum CellStyle : std::uint8_t {
  CS_BLINK = 0x01,
  CS_UNDERLINE = 0x02,  // the client's own: a listed id, a link
  CS_BAR = 0x04,        // under the cursor bar
  CS_SELECTED = 0x08,   // selected text; its colours come before all others
  CS_HIDDEN = 0x10,     // stands in place of what the user's lists hide; drawn like any other
  CS_HOVER = 0x20,      // on the row that a click would open
  CS_FOUND = 0x40,      // a hit of a search; its colours come before all but those of selected text
  CS_FOUND_HERE = 0x80  // the hit at which the user is
};

// Values of PageCell::fore beside the palette's indices: where two neighbours have the same, they show a sign
// of the client's own as wide as both, whatever their bytes are.
inline constexpr std::uint8_t kPictureSign = 0xFE;
inline constexpr std::uint8_t kVideoSign = 0xFF;

constexpr bool IsSign(std::uint8_t fore) {
  return fore >= kPictureSign;
}

struct PageCell {
  std::uint8_t byte = ' ';  // Big5, paired with its neighbour as in a screen's row
  std::uint8_t fore = 7;    // index of the palette, 0-47, or a sign
  std::uint8_t back = 16;   // index of the palette, 0-47
  std::uint8_t style = 0;   // CellStyle

  bool operator==(const PageCell&) const = default;
};

// Which of the layout's two em sizes the row is drawn with.
enum class RowSize : std::uint8_t { kOrdinary, kPush };

struct PageRow {
  std::array<PageCell, kCols> cells;
  RowSize size = RowSize::kOrdinary;
  std::uint8_t pennants = 0;    // bit n, 1 to 7: a flag of this colour stands before the row
  std::uint8_t tagCol = 0;      // where the tag begins
  std::uint8_t tagEnd = kCols;  // the first column that it must not cover; it is cut before
  std::u16string tag;           // drawn small and opaque over the cells from tagCol on; empty: none
  std::u16string age;           // drawn small in the room right of the text; empty: none

  bool operator==(const PageRow&) const = default;
};

// Where the age of a row begins that has no text in its way.
inline constexpr int kAgeCol = 78;

using Page = std::array<PageRow, kRows>;

// The screen as it is, nothing added.
PageRow PlainRow(const ScreenRow& text, const ScreenRow& attr);
Page PlainPage(const ScreenSnapshot& screen);

}  // namespace quillet
