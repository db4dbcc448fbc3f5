#include "render/paint/composition_painter.h"

#include <algorithm>

#include <QPainter>
#include <QTextLayout>

#include "render/contrast.h"
#include "render/coverage_blend.h"
#include "render/row_cells.h"

namespace quillet {
namespace {

constexpr std::size_t kTextColour = 15;
constexpr std::size_t kGroundColour = 41;
constexpr std::size_t kMarkedGroundColour = 38;
constexpr QRgb kOpaque = 0xFF000000;

// One picture in the making.
class Strip {
 public:
  Strip(QImage& picture, const CompositionFrame& frame, GlyphRasterizer& glyphs, const QFont& fallback)
      : picture_(picture),
        frame_(frame),
        glyphs_(glyphs),
        fallback_(fallback),
        cells_(LayOut(frame.composition)),
        line_(std::max(1, frame.cell.rowHeight / 14)) {
    const Palette& palette = PaletteOf(frame.palette);
    plain_ = ColoursOn(palette, kGroundColour);
    marked_ = ColoursOn(palette, kMarkedGroundColour);
  }

  void Paint() {
    picture_.fill(plain_.ground);
    for (const CompositionCharacter& character : cells_.characters)
      if (IsShown(character)) PaintCharacter(character);
    if (frame_.composition.showCaret) PaintCaret();
  }

 private:
  struct Colours {
    QRgb text = 0;
    QRgb ground = 0;
  };

  int Half() const { return frame_.cell.fontSize / 2; }
  int X(int cell) const { return (cell - frame_.fit.skipped) * Half(); }
  QRect BoxOf(const CompositionCharacter& character) const {
    return {X(character.cell), 0, character.cells * Half(), frame_.cell.rowHeight};
  }
  // A character that would be cut at an end is left out.
  bool IsShown(const CompositionCharacter& character) const {
    return character.cell >= frame_.fit.skipped &&
           character.cell + character.cells <= frame_.fit.skipped + frame_.fit.shown;
  }

  const CompositionClause* ClauseAt(qsizetype unit) const {
    for (const CompositionClause& clause : frame_.composition.clauses)
      if (unit >= clause.first && unit < clause.last) return &clause;
    return nullptr;
  }

  static Colours ColoursOn(const Palette& palette, std::size_t ground) {
    return {kOpaque | ReadableOn(palette[ground], palette[kTextColour]), kOpaque | palette[ground]};
  }

  void PaintCharacter(const CompositionCharacter& character) {
    const CompositionClause* clause = ClauseAt(character.first);
    const Colours& colours = clause != nullptr && clause->marked ? marked_ : plain_;
    const QStringView text =
        QStringView(frame_.composition.text).mid(character.first, character.last - character.first);
    const QRect box = BoxOf(character);
    const auto unit = static_cast<char16_t>(text.front().unicode());
    if (text.size() > 1)
      PaintSequence(text, box, colours);
    else if (text.front().isPrint())
      PaintGlyph(unit, box, colours);
    else
      PaintGlyph(text.front().isSurrogate() ? kUnknownUnit : u' ', box, colours);
    PaintUnderline(character, clause, colours);
  }

  void PaintGlyph(char16_t unit, const QRect& box, const Colours& colours) {
    const auto stride = (static_cast<std::size_t>(box.width()) + 7) & ~std::size_t{7};
    const std::size_t size = stride * static_cast<std::size_t>(box.height());
    tile_.assign(size + kCoverageSlack, 0);
    const GlyphWidth width = box.width() == Half() ? GlyphWidth::kHalf : GlyphWidth::kWide;
    glyphs_.Draw(unit, width, {{tile_.data(), size}, stride, box.width(), box.height()});
    BlendCoverage({.target = reinterpret_cast<std::uint32_t*>(picture_.bits()) + box.x(),
                   .targetStride = picture_.bytesPerLine() / 4,
                   .coverage = tile_.data(),
                   .coverageStride = static_cast<std::ptrdiff_t>(stride),
                   .width = box.width(),
                   .height = box.height(),
                   .foreground = colours.text & ~kOpaque,
                   .background = colours.ground & ~kOpaque});
  }

  // What the screen can never show, but an input method may: drawn by the toolkit, made to fit the cell.
  void PaintSequence(QStringView text, const QRect& box, const Colours& colours) {
    QTextLayout layout(text.toString(), fallback_);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    if (!line.isValid()) return;
    const double scale = std::min({1.0, box.width() / std::max(line.naturalTextWidth(), 1.0),
                                   box.height() / std::max(line.height(), 1.0)});
    const double top = std::clamp(glyphs_.Baseline() - line.ascent() * scale, 0.0,
                                  std::max(0.0, box.height() - line.height() * scale));
    QPainter painter(&picture_);
    painter.fillRect(box, QColor(colours.ground));
    painter.setClipRect(box);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(QColor(colours.text));
    painter.translate(box.x() + (box.width() - line.naturalTextWidth() * scale) / 2, top);
    painter.scale(scale, scale);
    layout.draw(&painter, {0, 0});
  }

  // A gap tells the clauses apart.
  void PaintUnderline(const CompositionCharacter& character, const CompositionClause* clause,
                      const Colours& colours) {
    const QRect box = BoxOf(character);
    const bool atEnd = clause != nullptr && character.last >= clause->last &&
                       character.last < frame_.composition.text.size();
    const int gap = atEnd ? std::max(1, Half() / 6) : 0;
    Fill({box.x(), box.height() - line_, box.width() - gap, line_}, colours.text);
  }

  void PaintCaret() {
    const int x = std::clamp(X(cells_.caret), 0, std::max(0, picture_.width() - line_));
    Fill({x, 0, line_, picture_.height()}, plain_.text);
  }

  void Fill(const QRect& wanted, QRgb colour) {
    const QRect rect = wanted & picture_.rect();
    if (rect.isEmpty()) return;
    const std::ptrdiff_t stride = picture_.bytesPerLine() / 4;
    FillPixels(reinterpret_cast<std::uint32_t*>(picture_.bits()) + rect.y() * stride + rect.x(), stride,
               rect.width(), rect.height(), colour & ~kOpaque);
  }

  QImage& picture_;
  const CompositionFrame& frame_;
  GlyphRasterizer& glyphs_;
  const QFont& fallback_;
  CompositionCells cells_;
  int line_;  // thickness of the underline and of the cursor, device pixels
  Colours plain_;
  Colours marked_;
  std::vector<std::uint8_t> tile_;
};

}  // namespace

void CompositionPainter::SetFaces(const QString& family, bool smooth) {
  if (family == family_ && smooth == smooth_) return;
  family_ = family;
  smooth_ = smooth;
  families_.clear();
  glyphs_.reset();
  drawn_.reset();
}

const QImage& CompositionPainter::Draw(const CompositionFrame& frame) {
  if (drawn_ == frame) return picture_;
  const QSize size(frame.fit.shown * (frame.cell.fontSize / 2), frame.cell.rowHeight);
  picture_ = size.isEmpty() ? QImage() : QImage(size, QImage::Format_RGB32);
  if (!picture_.isNull()) Paint(frame);
  drawn_ = frame;
  return picture_;
}

void CompositionPainter::Prepare(CellSize cell) {
  if (families_.isEmpty()) {
    families_ = FaceFamilies(family_);
    measures_ = MeasureFaces(families_);
  }
  if (glyphs_ && glyphCell_ == cell) return;
  glyphs_.emplace(families_, measures_, cell, smooth_);
  glyphCell_ = cell;
}

void CompositionPainter::Paint(const CompositionFrame& frame) {
  Prepare(frame.cell);
  QFont fallback;
  fallback.setFamilies(families_);
  fallback.setPixelSize(frame.cell.fontSize);
  if (!smooth_) fallback.setStyleStrategy(QFont::NoAntialias);
  Strip(picture_, frame, *glyphs_, fallback).Paint();
}

}  // namespace quillet
