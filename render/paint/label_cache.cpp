#include "render/paint/label_cache.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPainter>

#include "render/coverage_blend.h"

namespace quillet {
namespace {

// Far more than a screen shows; when they are used up the texts of earlier pages are forgotten.
constexpr std::size_t kMostLabels = 1024;
constexpr std::size_t kMostShapes = 128;
constexpr int kLabelEm = 256;
// Longer texts are not worth measuring: no window shows them.
constexpr qsizetype kLongestText = 512;

QImage BlankTile(QSize size) {
  QImage image(size, QImage::Format_Grayscale8);
  image.fill(0);
  return image;
}

QString ToLine(std::u16string_view text) {
  const qsizetype length = std::min(static_cast<qsizetype>(text.size()), kLongestText);
  QString line = QString::fromUtf16(text.data(), length);
  for (QChar& character : line)
    if (character < u' ') character = u' ';
  return line;
}

}  // namespace

OwnedTile::OwnedTile(const QImage& image, double opacity)
    : bytes_(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()) +
             kCoverageSlack),
      width_(image.width()),
      height_(image.height()) {
  std::uint8_t* target = bytes_.data();
  for (int y = 0; y < height_; ++y, target += width_)
    std::transform(image.constScanLine(y), image.constScanLine(y) + width_, target,
                   [opacity](uchar byte) { return static_cast<std::uint8_t>(std::lround(byte * opacity)); });
}

void LabelCache::SetFaces(const QStringList& families, bool smooth) {
  families_ = families;
  smooth_ = smooth;
  labels_.clear();
  widths_.clear();
}

QFont LabelCache::FontOf(int em) const {
  QFont font;
  font.setFamilies(families_);
  font.setPixelSize(em);
  font.setStyleStrategy(static_cast<QFont::StyleStrategy>(
      QFont::NoSubpixelAntialias | (smooth_ ? QFont::PreferAntialias : QFont::NoAntialias)));
  font.setHintingPreference(QFont::PreferVerticalHinting);
  return font;
}

double LabelCache::WidthPerEm(std::u16string_view text) {
  const auto found = widths_.find(text);
  if (found != widths_.end()) return found->second;
  if (widths_.size() >= kMostLabels) widths_.clear();
  const double width = QFontMetricsF(FontOf(kLabelEm)).horizontalAdvance(ToLine(text)) / kLabelEm;
  return widths_[std::u16string(text)] = width;
}

const Label* LabelCache::Elided(const std::u16string& text, int em, int room, double opacity) {
  if (text.empty() || em < 1 || room < em) return nullptr;
  const Key key{text, em, room, true, opacity};
  if (const auto found = labels_.find(key); found != labels_.end()) return &found->second;
  return Keep(key, QFontMetricsF(FontOf(em)).elidedText(ToLine(text), Qt::ElideRight, room), em);
}

const Label* LabelCache::Condensed(const std::u16string& text, int em, double narrowest, int room,
                                   double opacity) {
  if (text.empty() || em < 1 || room < 1 || WidthPerEm(text) * narrowest > room) return nullptr;
  const Key key{text, em, room, false, opacity};
  if (const auto found = labels_.find(key); found != labels_.end()) return &found->second;
  return Keep(key, ToLine(text), em);
}

const Label* LabelCache::Keep(const Key& key, const QString& text, int em) {
  const QFont font = FontOf(em);
  const QFontMetricsF metrics(font);
  const double natural = metrics.horizontalAdvance(text);
  const int width = std::clamp(static_cast<int>(std::ceil(natural)), 1, key.room);
  const int baseline = static_cast<int>(std::ceil(metrics.ascent()));
  QImage image = BlankTile({width, baseline + static_cast<int>(std::ceil(metrics.descent()))});
  QPainter painter(&image);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.scale(std::min(1.0, width / natural), 1);
  painter.drawText(QPointF(0, baseline), text);
  painter.end();
  if (labels_.size() >= kMostLabels) labels_.clear();
  return &(labels_[key] = Label{OwnedTile(image, key.opacity), baseline});
}

const OwnedTile& LabelCache::Shape(MarkShape shape, QSize size) {
  const auto key = std::make_tuple(shape, size.width(), size.height());
  if (const auto found = shapes_.find(key); found != shapes_.end()) return found->second;
  QImage image = BlankTile(size);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  const QRectF whole(QPointF(0, 0), QSizeF(size));
  if (shape == MarkShape::kBox)
    painter.drawRoundedRect(whole, whole.height() / 4, whole.height() / 4);
  else
    painter.drawPolygon(QPolygonF{whole.topLeft(), {whole.right(), whole.center().y()}, whole.bottomLeft()});
  painter.end();
  if (shapes_.size() >= kMostShapes) shapes_.clear();
  return shapes_[key] = OwnedTile(image);
}

}  // namespace quillet
