// Draws characters into coverage tiles of the cell's size, every face on one baseline. Used by the glyph
// cache, once per character and size. User-interface thread.
#pragma once

#include <optional>
#include <utility>

#include <QStringList>

#include "render/paint/font_chain.h"
#include "render/shape_glyphs.h"

namespace quillet {

// Lengths in device pixels.
struct CellSize {
  int fontSize = 12;   // the width of a double-width character; even
  int rowHeight = 12;  // at least 1

  bool operator==(const CellSize&) const = default;
};

// What the faces of a chain need, as shares of the em; the same at every size.
struct FaceMeasures {
  double chineseAbove = 0.85;  // ink of Chinese characters above and below the baseline
  double chineseBelow = 0.09;
  double lettersAbove = 0.8;  // ink of letters at `halfScale`
  double lettersBelow = 0.24;
  double halfScale = 1;  // makes letters that are wider than half an em as wide as that
};

FaceMeasures MeasureFaces(const QStringList& families);

// A chain of faces that is measured when the first character is drawn with it, and not before.
class MeasuredFaces {
 public:
  explicit MeasuredFaces(QStringList families) : families_(std::move(families)) {}

  const QStringList& Families() const { return families_; }
  const FaceMeasures& Measures() {
    if (!measures_) measures_ = MeasureFaces(families_);
    return *measures_;
  }

 private:
  QStringList families_;
  std::optional<FaceMeasures> measures_;
};

enum class GlyphWidth { kHalf, kWide };

class GlyphRasterizer {
 public:
  // `smooth`: grey edges; otherwise a pixel is either covered or not.
  GlyphRasterizer(const QStringList& families, const FaceMeasures& measures, CellSize cell, bool smooth);

  // Fills the tile, which must be zero and have the size of the cell, half or wide.
  void Draw(char16_t unit, GlyphWidth width, const CoverageTile& tile);

  // Distance of the baseline from the row's top.
  int Baseline() const { return baseline_; }

 private:
  bool DrawHinted(const FaceGlyph& glyph, const CoverageTile& tile) const;
  void DrawFitted(const FaceGlyph& glyph, const CoverageTile& tile) const;
  void Finish(const CoverageTile& tile) const;

  bool smooth_;
  int em_;  // of double-width characters
  int baseline_ = 0;
  SizedFaces wideFaces_;
  SizedFaces halfFaces_;
};

}  // namespace quillet
