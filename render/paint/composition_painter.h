// Draws what an input method composes as a strip of the grid: the same glyphs on the same baseline as the
// screen has, so that nothing moves when the text is committed. Used by the input method adapter.
// User-interface thread.
#pragma once

#include <optional>

#include <QImage>
#include <QString>

#include "render/composition_fit.h"
#include "render/paint/composition.h"
#include "render/paint/glyph_rasterizer.h"
#include "render/palette.h"

namespace quillet {

// All that a picture of a composition is made from.
struct CompositionFrame {
  Composition composition;
  CompositionFit fit;  // of its cells
  CellSize cell;       // of the row that it is typed in
  PaletteKind palette = PaletteKind::kNormal;

  bool operator==(const CompositionFrame&) const = default;
};

class CompositionPainter {
 public:
  // `family` is the face that the user chose. `smooth`: grey edges.
  void SetFaces(const QString& family, bool smooth);

  // The part of the composition that is shown, opaque, in device pixels: `fit.shown` half-width cells wide
  // and a row high; null when there is none. The picture is good until the next call.
  const QImage& Draw(const CompositionFrame& frame);

 private:
  void Prepare(CellSize cell);
  void Paint(const CompositionFrame& frame);

  QString family_;
  bool smooth_ = true;
  // Made when there is something to compose: opening faces takes time, and some never type Chinese.
  QStringList families_;
  FaceMeasures measures_;
  std::optional<GlyphRasterizer> glyphs_;
  CellSize glyphCell_;
  std::optional<CompositionFrame> drawn_;
  QImage picture_;
};

}  // namespace quillet
