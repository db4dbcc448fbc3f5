// A place on the screen: a row and a column, counted from 0. A value; any thread.
#pragma once

namespace quillet {

struct CellPosition {
  int row = 0;
  int col = 0;

  bool operator==(const CellPosition&) const = default;
};

}  // namespace quillet
