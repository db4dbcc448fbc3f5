#include "render/paint/paper_text.h"

#include <algorithm>

#include <QGlyphRun>

namespace quillet {
namespace {

// Of the em: as high as the rows of a page of text are read best, and no farther apart than pictures made of
// characters stand.
constexpr double kRowHeight = 1.125;

// Glyphs of one face that follow one another.
class Run {
 public:
  explicit Run(QPainter& painter) : painter_(painter) {}
  void Add(const FaceGlyph& glyph, QPointF at) {
    if (!indexes_.isEmpty() && glyph.font != font_) Draw();
    font_ = glyph.font;
    indexes_ << glyph.index;
    places_ << at;
  }
  void Draw() {
    if (indexes_.isEmpty()) return;
    QGlyphRun run;
    run.setRawFont(font_);
    run.setGlyphIndexes(indexes_);
    run.setPositions(places_);
    painter_.drawGlyphRun({}, run);
    indexes_.clear();
    places_.clear();
  }

 private:
  QPainter& painter_;
  QRawFont font_;
  QList<quint32> indexes_;
  QList<QPointF> places_;
};

}  // namespace

PaperText::PaperText(const QStringList& families, int halfCell)
    : halfCell_(std::max(1, halfCell)),
      rowHeight_(std::max(1, qRound(2 * halfCell_ * kRowHeight))),
      wideFaces_(families, 2.0 * halfCell_),
      halfFaces_(families, 2.0 * halfCell_ * MeasureFaces(families).halfScale) {
  const FaceMeasures measures = MeasureFaces(families);
  const double ink = measures.chineseAbove - measures.chineseBelow;
  baseline_ = qRound((rowHeight_ + 2 * halfCell_ * ink) / 2);
}

void PaperText::Draw(QPainter& painter, QPoint corner, std::span<const PaperCharacter> line) {
  painter.setPen(Qt::black);
  Run run(painter);
  for (const auto& [unit, width, col] : line) {
    const bool wide = width == GlyphWidth::kWide;
    const int left = corner.x() + col * halfCell_;
    if (wide && IsShape(unit)) {
      painter.drawImage(QPoint(left, corner.y()), ShapeOf(unit));
      continue;
    }
    const auto glyph = wide ? wideFaces_.FindWide(unit) : halfFaces_.Find(unit);
    if (!glyph) continue;
    const double cell = wide ? 2 * halfCell_ : halfCell_;
    run.Add(*glyph, {left + (cell - glyph->Advance()) / 2, static_cast<double>(corner.y() + baseline_)});
  }
  run.Draw();
}

const QImage& PaperText::ShapeOf(char16_t unit) {
  QImage& shape = shapes_[unit];
  if (!shape.isNull()) return shape;
  shape = QImage(2 * halfCell_, rowHeight_, QImage::Format_Grayscale8);
  shape.fill(0);
  DrawShape(unit, {.bytes = {shape.bits(), static_cast<std::size_t>(shape.sizeInBytes())},
                   .stride = static_cast<std::size_t>(shape.bytesPerLine()),
                   .width = shape.width(),
                   .height = shape.height()});
  shape.invertPixels();
  return shape;
}

}  // namespace quillet
