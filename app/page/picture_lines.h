// Lines of text of which the picture shows some in its rows. What selects them knows no more of the window
// than this. User-interface thread.
#pragma once

#include "bbs/link_places.h"
#include "input/text/selectable_text.h"
#include "render/place_row.h"

namespace quillet {

struct AddressInLine {
  CellRange cells;  // empty: it names none
  PlaceSpot spot = PlaceSpot::kOverAddress;
};

class PictureLines : public SelectableText {
 public:
  // The line in a row of the picture; -1: none.
  virtual int LineAtRow(int row) const = 0;
  // The same also where the window's edge cuts the row, which nobody points at.
  virtual int LineDrawnAtRow(int row) const { return LineAtRow(row); }
  // Where a line is in the picture; -1: not now.
  virtual int RowOfLine(int line) const = 0;
  // How many rows one line stands below another, whether they are in the picture or not; negative: above.
  virtual int RowsBetween(int from, int to) const { return to - from; }
  // Where links stand in a line.
  virtual LinkPlaces Links(int index) const { return FindLinkPlaces(Line(index).text); }
  // Where a line names a person's address.
  virtual AddressInLine Address(int /*index*/) const { return {}; }
  // The lines are an article's, which the picture can be moved over, not those of the BBS's screen.
  virtual bool IsArticle() const = 0;
};

}  // namespace quillet
