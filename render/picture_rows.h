// Which row of an article shows which of its lines, where pictures stand below some lines and take whole rows
// of their own. Used by the article view. Pure.
#pragma once

#include <vector>

namespace quillet {

// A row of an article: the line's own where `below` is 0, else so many rows below it, in its band of
// pictures.
struct LinePlace {
  int line = 0;
  int below = 0;

  bool operator==(const LinePlace&) const = default;
};

// A row that is to stay where it is while bands change: the line's own, or one in its band, as far from the
// band's end: for what is read then stands below it.
struct RowAnchor {
  static constexpr int kOwnRow = -1;
  int line = 0;
  int toEnd = kOwnRow;  // rows of the band below it

  bool operator==(const RowAnchor&) const = default;
};

// The rows that pictures take below one line.
struct PictureBand {
  int line = 0;
  int rows = 0;

  bool operator==(const PictureBand&) const = default;
};

class PictureRows {
 public:
  // Lines 0 to `lines` - 1, with these bands below some of them: in the order of their lines, each line once.
  // Bands without rows, or of no such line, are left out.
  void Set(int lines, const std::vector<PictureBand>& bands);

  int Lines() const { return lines_; }
  int Count() const;
  // The row of the line itself; of a line from Lines() on, as if lines without pictures went on there.
  int RowOf(int line) const;
  // A place beyond the end of its line's band is the band's last row.
  int RowOf(const LinePlace& place) const;
  int RowOf(const RowAnchor& anchor) const;
  RowAnchor AnchorAt(int row) const;
  // Rows before the first one, and from Count() on, are lines without pictures too.
  LinePlace At(int row) const;
  // Rows in the line's band; 0: it has none.
  int RowsBelow(int line) const;

 private:
  struct Step {
    PictureBand band;
    int before = 0;  // rows of bands above
    int FirstRow() const { return band.line + before; }
  };
  // The first band at or below the line.
  std::vector<Step>::const_iterator From(int line) const;

  std::vector<Step> steps_;
  int lines_ = 0;
};

}  // namespace quillet
