// Builds screens for tests by putting texts at places, as a page of the BBS would stand on the grid.
#pragma once

#include <string>
#include <string_view>

#include "core/charset.h"
#include "core/screen_snapshot.h"

namespace quillet {

class ScreenBuilder {
 public:
  ScreenBuilder() {
    screen.Clear();
    screen.curAttr = kAttrBlank;
  }

  // Texts that would leave the row are cut.
  ScreenBuilder& Put(int row, int col, std::u16string_view text, std::uint8_t attr = kAttrBlank) {
    for (const char byte : ToBig5(text)) {
      if (col >= kCols) break;
      screen.text[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] =
          static_cast<std::uint8_t>(byte);
      screen.attr[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = attr;
      ++col;
    }
    return *this;
  }
  ScreenBuilder& Fill(int row, int from, int to, std::uint8_t attr) {
    for (int col = from; col < to; ++col)
      screen.attr[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = attr;
    return *this;
  }
  ScreenBuilder& Cursor(int row, int col) {
    screen.cursorRow = row;
    screen.cursorCol = col;
    return *this;
  }

  ScreenSnapshot screen;
};

}  // namespace quillet
