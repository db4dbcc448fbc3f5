#include "render/paint/glyph_rasterizer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include "render/row_cells.h"

namespace quillet {
namespace {

// Faces are measured once at this em, where rounding no longer matters.
constexpr int kMeasureEm = 512;
// Descenders may be shortened to this share before the whole face is made smaller: Chinese faces give them
// more room below the baseline than a row as high as an em has.
constexpr double kShortestDescender = 0.78;
// Free space above the tallest Chinese character, as a share of the row.
constexpr double kTopMargin = 0.02;
// Coverage below this at the border of a glyph is not missed.
constexpr int kFaint = 32;
// Below this size every pixel of the em counts: tall characters are moved instead of made smaller.
constexpr int kSmallestSnappedEm = 16;
// Grey edges of light strokes on black look thinner than they are; this evens thin and thick strokes out.
constexpr double kCoverageGamma = 1.2;

// How far ink reaches from the baseline, as shares of the em.
struct InkExtent {
  double above = 0;
  double below = 0;
};

InkExtent InkOf(SizedFaces& faces, const char16_t* reference) {
  InkExtent extent;
  for (; *reference != 0; ++reference) {
    const auto glyph = faces.Find(*reference);
    if (!glyph) continue;
    const QRectF ink = glyph->font.pathForGlyph(glyph->index).boundingRect();
    extent.above = std::max(extent.above, -ink.top() / kMeasureEm);
    extent.below = std::max(extent.below, ink.bottom() / kMeasureEm);
  }
  return extent;
}

double InkAbove(const FaceMeasures& measures) {
  return std::max(measures.chineseAbove, measures.lettersAbove);
}

double InkBelow(const FaceMeasures& measures) {
  return std::max(measures.chineseBelow, measures.lettersBelow * kShortestDescender);
}

int EmOf(const FaceMeasures& measures, CellSize cell) {
  const double fitting = cell.rowHeight * (1 - kTopMargin) / (InkAbove(measures) + InkBelow(measures));
  return std::max(1, static_cast<int>(std::min<double>(cell.fontSize, fitting + 0.25)));
}

// Chinese characters stand in the middle of the row, or higher where descenders need the room.
int BaselineOf(const FaceMeasures& measures, CellSize cell, int em) {
  const double centred = (cell.rowHeight + em * (measures.chineseAbove - measures.chineseBelow)) / 2;
  const double lowest = cell.rowHeight - em * InkBelow(measures);
  return std::clamp(static_cast<int>(std::lround(std::min(centred, lowest))), 0, cell.rowHeight);
}

const std::array<std::uint8_t, 256>& GammaTable() {
  static const auto table = [] {
    std::array<std::uint8_t, 256> made{};
    for (std::size_t i = 0; i < made.size(); ++i)
      made[i] = static_cast<std::uint8_t>(
          std::lround(255 * std::pow(static_cast<double>(i) / 255, 1 / kCoverageGamma)));
    return made;
  }();
  return table;
}

std::uint8_t* RowOf(const CoverageTile& tile, int y) {
  return tile.bytes.data() + static_cast<std::size_t>(y) * tile.stride;
}

// A small middle dot: the character is there, but nothing installed can draw it.
void DrawMissing(const CoverageTile& tile) {
  const int side = std::max(2, tile.width / 10);
  const int left = (tile.width - side) / 2;
  const int top = (tile.height - side) / 2;
  for (int y = std::max(top, 0); y < std::min(top + side, tile.height); ++y)
    std::fill_n(RowOf(tile, y) + left, side, std::uint8_t{96});
}

struct Span {
  int first, count;
};

// The mean of a part of the image; each share is a pixel's weight in one direction.
double Mean(const QImage& image, double left, double right, double top, double bottom) {
  double sum = 0;
  for (int y = static_cast<int>(top); y < bottom; ++y) {
    const double rowShare = std::min(bottom, y + 1.0) - std::max(top, static_cast<double>(y));
    for (int x = static_cast<int>(left); x < right; ++x) {
      const double share = std::min(right, x + 1.0) - std::max(left, static_cast<double>(x));
      sum += rowShare * share *
             image.constScanLine(std::min(y, image.height() - 1))[std::min(x, image.width() - 1)];
    }
  }
  return sum / ((right - left) * (bottom - top));
}

// Copies rows of the image to rows of the tile, which may be fewer, at columns which may be fewer.
void CopyShrunk(const QImage& image, Span from, const CoverageTile& tile, Span to, Span columns) {
  const double stepX = static_cast<double>(image.width()) / columns.count;
  const double stepY = static_cast<double>(from.count) / to.count;
  for (int y = 0; y < to.count; ++y) {
    std::uint8_t* row = RowOf(tile, to.first + y) + columns.first;
    if (image.width() == columns.count && from.count == to.count) {
      std::copy_n(image.constScanLine(from.first + y), columns.count, row);
      continue;
    }
    for (int x = 0; x < columns.count; ++x)
      row[x] = static_cast<std::uint8_t>(std::lround(
          Mean(image, x * stepX, (x + 1) * stepX, from.first + y * stepY, from.first + (y + 1) * stepY)));
  }
}

// A face's own rendering with its strokes on the pixel grid.
struct HintedGlyph {
  QImage image;  // 8-bit coverage
  int left = 0;  // of the image, from the pen position and the baseline
  int top = 0;
};

bool IsFaint(const QImage& image, QRect part) {
  for (int y = part.top(); y <= part.bottom(); ++y)
    for (int x = part.left(); x <= part.right(); ++x)
      if (image.constScanLine(y)[x] >= kFaint) return false;
  return true;
}

// Without the border rows and columns that hardly carry ink: they would make a glyph seem too large for its
// cell.
QRect InkRect(const QImage& image) {
  QRect rect = image.rect();
  while (rect.width() > 1 && IsFaint(image, {rect.left(), rect.top(), 1, rect.height()}))
    rect.adjust(1, 0, 0, 0);
  while (rect.width() > 1 && IsFaint(image, {rect.right(), rect.top(), 1, rect.height()}))
    rect.adjust(0, 0, -1, 0);
  while (rect.height() > 1 && IsFaint(image, {rect.left(), rect.top(), rect.width(), 1}))
    rect.adjust(0, 1, 0, 0);
  while (rect.height() > 1 && IsFaint(image, {rect.left(), rect.bottom(), rect.width(), 1}))
    rect.adjust(0, 0, 0, -1);
  return rect;
}

// Empty when the system's rasteriser does not say where its image belongs.
std::optional<HintedGlyph> RenderHinted(const FaceGlyph& glyph) {
  const QImage image = glyph.font.alphaMapForGlyph(glyph.index, QRawFont::PixelAntialiasing);
  if (image.isNull() || image.depth() != 8) return std::nullopt;
  const QRectF box = glyph.font.boundingRect(glyph.index);
  if (box != QRectF(box.toRect()) || box.toRect().size() != image.size()) return std::nullopt;
  const QRect ink = InkRect(image);
  const QPoint corner = box.toRect().topLeft() + ink.topLeft();
  return HintedGlyph{image.copy(ink), corner.x(), corner.y()};
}

// How far Chinese characters reach above the baseline once their strokes lie on the pixel grid.
int HintedAbove(SizedFaces& faces) {
  int above = 0;
  for (const char16_t unit : std::u16string_view(u"國體龜永書電高章")) {
    const auto glyph = faces.FindWide(unit);
    const auto hinted = glyph ? RenderHinted(*glyph) : std::nullopt;
    if (hinted) above = std::max(above, -hinted->top);
  }
  return above;
}

}  // namespace

FaceMeasures MeasureFaces(const QStringList& families) {
  SizedFaces faces(families, kMeasureEm);
  FaceMeasures measures;
  if (const auto zero = faces.Find(u'0'))
    measures.halfScale = std::min(1.0, kMeasureEm / 2.0 / std::max(zero->Advance(), 1.0));
  const InkExtent chinese = InkOf(faces, u"國體龜永");
  const InkExtent letters = InkOf(faces, u"gpqyjbdfhkl");
  measures.chineseAbove = std::max(chinese.above, 0.5);
  measures.chineseBelow = std::max(chinese.below, 0.05);
  measures.lettersAbove = letters.above * measures.halfScale;
  measures.lettersBelow = letters.below * measures.halfScale;
  return measures;
}

GlyphRasterizer::GlyphRasterizer(const QStringList& families, const FaceMeasures& measures, CellSize cell,
                                 bool smooth)
    : smooth_(smooth), em_(EmOf(measures, cell)), wideFaces_(families, em_), halfFaces_(families, em_) {
  const auto below = [&] { return static_cast<int>(std::lround(em_ * InkBelow(measures))); };
  // Snapping to the grid can make characters a pixel taller than their outlines.
  int above = em_ < kSmallestSnappedEm ? 0 : HintedAbove(wideFaces_);
  while (em_ > kSmallestSnappedEm && above + below() > cell.rowHeight) {
    wideFaces_ = SizedFaces(families, --em_);
    above = HintedAbove(wideFaces_);
  }
  baseline_ = std::min(std::max(BaselineOf(measures, cell, em_), above), cell.rowHeight);
  halfFaces_ = SizedFaces(families, em_ * measures.halfScale);
}

void GlyphRasterizer::Draw(char16_t unit, GlyphWidth width, const CoverageTile& tile) {
  if (width == GlyphWidth::kWide && DrawShape(unit, tile)) return;
  std::optional<FaceGlyph> glyph;
  if (unit != kUnknownUnit)
    glyph = width == GlyphWidth::kWide ? wideFaces_.FindWide(unit) : halfFaces_.Find(unit);
  if (!glyph) {
    DrawMissing(tile);
    return;
  }
  if (!DrawHinted(*glyph, tile)) DrawFitted(*glyph, tile);
  Finish(tile);
}

// False when the face's own rendering does not fit the cell. Ink that overhangs a little is pushed together
// or moved, which keeps it crisp.
bool GlyphRasterizer::DrawHinted(const FaceGlyph& glyph, const CoverageTile& tile) const {
  const std::optional<HintedGlyph> hinted = RenderHinted(glyph);
  if (!hinted) return glyph.font.pathForGlyph(glyph.index).isEmpty();
  const QImage& image = hinted->image;
  const int width = std::min(image.width(), tile.width);
  const int overhang = std::max(0, -(baseline_ + hinted->top));
  if (image.width() > width + std::max(1, width / 4) || overhang > 1 + tile.height / 40) return false;
  const int shift = static_cast<int>(std::floor((tile.width - glyph.Advance()) / 2));
  const Span columns{std::clamp(shift + hinted->left, 0, tile.width - width), width};

  const Span above{0, std::clamp(-hinted->top, 0, image.height())};
  const Span below{above.count, image.height() - above.count};
  const int top = baseline_ + hinted->top + overhang;
  const int room = std::min(below.count, tile.height - top - above.count);
  if (room < 0 || 2 * room < below.count) return false;
  CopyShrunk(image, above, tile, {top, above.count}, columns);
  if (room > 0) CopyShrunk(image, below, tile, {top + above.count, room}, columns);
  return true;
}

// The outline, scaled down and moved until all of its ink lies within the cell.
void GlyphRasterizer::DrawFitted(const FaceGlyph& glyph, const CoverageTile& tile) const {
  const QPainterPath path = glyph.font.pathForGlyph(glyph.index);
  const QRectF ink = path.boundingRect();
  if (ink.isEmpty()) return;
  const double scaleX = std::min(1.0, tile.width / ink.width());
  const double scaleY = std::min(1.0, tile.height / ink.height());
  double left = (tile.width - glyph.Advance() * scaleX) / 2 + ink.left() * scaleX;
  double top = baseline_ + ink.top() * scaleY;
  left = std::clamp(left, 0.0, std::max(0.0, tile.width - ink.width() * scaleX));
  top = std::clamp(top, 0.0, std::max(0.0, tile.height - ink.height() * scaleY));

  QImage image(tile.bytes.data(), tile.width, tile.height, static_cast<qsizetype>(tile.stride),
               QImage::Format_Grayscale8);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(left, top);
  painter.scale(scaleX, scaleY);
  painter.translate(-ink.topLeft());
  painter.fillPath(path, Qt::white);
}

void GlyphRasterizer::Finish(const CoverageTile& tile) const {
  for (int y = 0; y < tile.height; ++y) {
    std::uint8_t* row = RowOf(tile, y);
    for (int x = 0; x < tile.width; ++x)
      row[x] = smooth_ ? GammaTable()[row[x]] : static_cast<std::uint8_t>(row[x] >= 112 ? 255 : 0);
  }
}

}  // namespace quillet
