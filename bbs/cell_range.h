// A run of cells in one row of the screen. A value; any thread.
#pragma once

namespace quillet {

// Columns first to last-1.
struct CellRange {
  int first = 0;
  int last = 0;

  bool IsEmpty() const { return first >= last; }
  bool Has(int col) const { return col >= first && col < last; }
  bool operator==(const CellRange&) const = default;
};

}  // namespace quillet
