// Feeding a screen with literals, for the tests of the parser.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/term_screen.h"

namespace quillet {

inline std::span<const std::uint8_t> AsBytes(std::string_view bytes) {
  return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
}

// `row` as a text without its trailing blanks.
inline std::string Row(const ScreenSnapshot& screen, int row) {
  std::string cells(screen.RowText(row));
  cells.erase(cells.find_last_not_of(' ') + 1);
  return cells;
}

// "\x1b[row;colH", counted from 0 as the screen does.
inline std::string At(int row, int col) {
  return "\x1b[" + std::to_string(row + 1) + ";" + std::to_string(col + 1) + "H";
}

// A screen whose rows begin with "0", "1", ... and go on with dots up to column 79.
inline std::string NumberedRows() {
  std::string bytes = "\x1b[m";
  for (int row = 0; row < kRows; ++row) {
    std::string cells = std::to_string(row);
    cells.resize(kCols, '.');
    bytes += At(row, 0) + cells;
  }
  return bytes;
}

}  // namespace quillet
