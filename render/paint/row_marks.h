// What stands beside and over the cells of a row: flags before it, a tag over it, an age behind it. Used by
// the frame painter. User-interface thread.
#pragma once

#include <cstdint>

#include "render/paint/drawn_row.h"
#include "render/paint/label_cache.h"
#include "render/paint/row_painter.h"

namespace quillet {

// What marks of every row are drawn with.
struct MarkKit {
  Canvas& canvas;
  LabelCache& labels;
  const LookColours& colours;
  int rightEdge;  // in the window; ages and tags end before it
};

// Whether a margin `room` pixels wide holds the flags; they are drawn over the row's first cells otherwise.
bool PennantsFit(std::uint8_t pennants, int room);
// How much of its end they take there, beside a row of this height; 0 where they do not fit.
int PennantsWidth(std::uint8_t pennants, int height, int room);

class RowMarks {
 public:
  RowMarks(const MarkKit& kit, const RowPlace& place, const DrawnRow& row)
      : kit_(kit), place_(place), row_(row) {}

  void PaintPennants();
  // On the baseline of the row's text, which `sheet` draws.
  void PaintAge(GlyphSheet& sheet);
  // What `cells` drew under the tag is taken away again, and with it the rest of any character or age that
  // the tag covers in part. Leaves the canvas clipped to the tag.
  void PaintTag(RowPainter& cells);

 private:
  void PaintFlags(int count);
  void PaintFlag(const QRect& area, std::uint32_t colour);
  void PaintSegments();
  void PaintSquares();
  void PaintTagGround(int right, RowPainter& cells);
  bool HasColours() const;
  bool HasPennant(int number) const { return (row_.page.pennants >> number & 1) != 0; }
  std::uint32_t PennantColour(int number) const;

  const MarkKit& kit_;
  const RowPlace& place_;
  const DrawnRow& row_;
};

}  // namespace quillet
