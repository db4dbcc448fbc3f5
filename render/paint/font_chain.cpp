#include "render/paint/font_chain.h"

#include <QFont>
#include <QFontDatabase>
#include <QGlyphRun>
#include <QTextLayout>

namespace quillet {
namespace {

// Faces whose Latin letters are half as wide as their Chinese characters come first.
const char16_t* const kChain[] = {
    u"細明體",
    u"MingLiU",
    u"Noto Sans Mono CJK TC",
    u"Sarasa Mono TC",
    u"Source Han Mono TC",
    u"WenQuanYi Zen Hei Mono",
    u"AR PL UMing TW MBE",
    u"AR PL UMing TW",
    u"Microsoft JhengHei",
    u"Noto Sans CJK TC",
    u"Source Han Sans TC",
    u"WenQuanYi Zen Hei",
    u"Droid Sans Fallback",
    u"MS Gothic",
    u"DejaVu Sans Mono",
    u"DejaVu Sans",
    u"Segoe UI Symbol",
};

QFont FontOf(const QString& family, double emPixels, bool merging) {
  QFont font(family);
  font.setPixelSize(qMax(1, qRound(emPixels)));
  const auto strategy = QFont::PreferAntialias | QFont::NoSubpixelAntialias;
  font.setStyleStrategy(
      static_cast<QFont::StyleStrategy>(merging ? strategy : strategy | QFont::NoFontMerging));
  // Horizontal strokes snap to pixel rows; widths stay as designed, so that the grid is even.
  font.setHintingPreference(QFont::PreferVerticalHinting);
  return font;
}

quint32 GlyphOf(const QRawFont& font, char16_t unit) {
  const QChar character(unit);
  quint32 index = 0;
  int count = 1;
  if (!font.isValid() || !font.glyphIndexesForChars(&character, 1, &index, &count) || count != 1) return 0;
  return index;
}

}  // namespace

QStringList FaceFamilies(const QString& preferred) {
  const QStringList installed = QFontDatabase::families();
  QStringList families;
  const auto add = [&](const QString& family) {
    if (installed.contains(family, Qt::CaseInsensitive) && !families.contains(family, Qt::CaseInsensitive))
      families.append(family);
  };
  add(preferred);
  for (const char16_t* family : kChain)
    add(QString::fromUtf16(family));
  if (families.isEmpty()) families.append(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
  return families;
}

double FaceGlyph::Advance() const {
  const QList<QPointF> advances = font.advancesForGlyphIndexes({index});
  return advances.isEmpty() ? 0 : advances.first().x();
}

SizedFaces::SizedFaces(QStringList families, double emPixels)
    : families_(std::move(families)), emPixels_(emPixels) {}

std::optional<FaceGlyph> SizedFaces::Find(char16_t unit) {
  for (qsizetype face = 0; face < families_.size(); ++face)
    if (const quint32 index = GlyphOf(Face(face), unit)) return FaceGlyph{Face(face), index};
  return FindByMerging(unit);
}

std::optional<FaceGlyph> SizedFaces::FindWide(char16_t unit) {
  for (qsizetype face = 0; face < families_.size(); ++face) {
    if (!IsChinese(face)) continue;
    if (const quint32 index = GlyphOf(Face(face), unit)) return FaceGlyph{Face(face), index};
  }
  return Find(unit);
}

bool SizedFaces::IsChinese(qsizetype index) {
  return GlyphOf(Face(index), u'國') != 0;
}

const QRawFont& SizedFaces::Face(qsizetype index) {
  const auto wanted = static_cast<std::size_t>(index);
  while (faces_.size() <= wanted) {
    const QString& family = families_[static_cast<qsizetype>(faces_.size())];
    faces_.push_back(QRawFont::fromFont(FontOf(family, emPixels_, false), QFontDatabase::Any));
  }
  return faces_[wanted];
}

std::optional<FaceGlyph> SizedFaces::FindByMerging(char16_t unit) const {
  QTextLayout layout{QString(QChar(unit)), FontOf(families_.first(), emPixels_, true)};
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  for (const QGlyphRun& run : layout.glyphRuns()) {
    const QRawFont font = run.rawFont();
    if (const quint32 index = GlyphOf(font, unit)) return FaceGlyph{font, index};
  }
  return std::nullopt;
}

}  // namespace quillet
