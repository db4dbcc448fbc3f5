#include "app/interaction/pointer/link_hover.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QFontMetricsF>

namespace quillet {
namespace {

// Of the panel's letters.
constexpr double kTargetTextSize = 0.8;
// In the label's letters.
constexpr double kTargetHeight = 1.8;
constexpr double kTargetPadding = 0.7;
constexpr double kMargin = 0.3;
// Of the area's width.
constexpr double kWidest = 0.6;
// Rows that the label may lie over.
constexpr int kRowsBelow = 3;

bool LeadToTheSame(const TextLink& one, const TextLink& other) {
  return one.article || other.article ? one.article == other.article : one.address == other.address;
}

// Empty for what is like any other link.
QString WordOf(LinkKind kind) {
  switch (kind) {
    case LinkKind::kPicture:
      return u"圖片"_qs;
    case LinkKind::kPicturePage:
      return u"圖片網頁"_qs;
    case LinkKind::kShortened:
      return u"短網址，可能是圖片"_qs;
    case LinkKind::kVideo:
      return u"影片"_qs;
    case LinkKind::kWeb:
    case LinkKind::kArticleCode:
      return {};
  }
  return {};
}

// Where a label of this size goes: to the lower left corner, or the right one.
QRectF PlaceLabel(const QRectF& area, const QSizeF& size, qreal margin, bool right) {
  QRectF box(QPointF(), size);
  box.moveBottom(std::round(area.bottom() - margin));
  if (right)
    box.moveRight(std::round(area.right() - margin));
  else
    box.moveLeft(std::round(area.left() + margin));
  return box;
}

}  // namespace

LinkHover::LinkHover(const PictureLines& text, WebHosts hosts) : text_(text), hosts_(std::move(hosts)) {}

bool LinkHover::SetPointer(std::optional<CellPosition> cell) {
  cell_ = cell;
  std::optional<TextLink> link = cell ? LinkAt(cell->row, cell->col) : std::nullopt;
  const int row = link ? cell->row : -1;
  if (row == row_ && link == current_) return false;
  row_ = row;
  current_ = std::move(link);
  return true;
}

std::optional<TextLink> LinkHover::LinkAt(int row, int col) const {
  for (TextLink& link : LinksIn(row))
    if (col >= link.first && col < link.last) return std::move(link);
  return std::nullopt;
}

std::vector<TextLink> LinkHover::LinksInSight() const {
  std::vector<TextLink> inSight;
  for (int row = 0; row < kRows; ++row)
    for (TextLink& link : LinksIn(row))
      if (std::none_of(inSight.begin(), inSight.end(),
                       [&](const TextLink& known) { return LeadToTheSame(known, link); }))
        inSight.push_back(std::move(link));
  return inSight;
}

std::vector<TextLink> LinkHover::LinksIn(int row) const {
  const int line = text_.LineAtRow(row);
  if (line < 0 || line >= text_.Count()) return {};
  std::vector<TextLink> links;
  for (const LinkPlace& place : text_.Links(line))
    links.push_back(LinkOf(text_.Line(line).text, place, hosts_));
  return links;
}

void LinkHover::Decorate(Page& page) const {
  if (!current_ || row_ < 0 || row_ >= kRows) return;
  auto& cells = page[static_cast<std::size_t>(row_)].cells;
  for (int col = current_->first; col < std::min(current_->last, kCols); ++col)
    cells[static_cast<std::size_t>(col)].style |= CS_UNDERLINE;
}

QRectF LinkHover::Bounds(const OverlayPlace& place) const {
  return current_ ? LabelAt(place, *current_).box : QRectF();
}

LinkHover::Label LinkHover::LabelAt(const OverlayPlace& place, const TextLink& link) const {
  const double letter = std::round(panel_look::TextSize(place.unit) * kTargetTextSize);
  const QFont font = panel_look::Sized(place.font, letter);
  const QFontMetricsF metrics(font);
  const double padding = kTargetPadding * letter;
  const QRectF area = place.area;
  const QString text =
      metrics.elidedText(DescriptionOf(link), Qt::ElideMiddle, area.width() * kWidest - 2 * padding);
  const QSizeF extent(std::ceil(metrics.horizontalAdvance(text) + 2 * padding),
                      std::ceil(letter * kTargetHeight));
  const QRectF box = PlaceLabel(area, extent, kMargin * letter, row_ >= kRows - kRowsBelow);
  return {.font = font, .letter = letter, .text = text, .box = box};
}

void LinkHover::Paint(QPainter& painter, const OverlayPlace& place) {
  if (!current_) return;
  const Label label = LabelAt(place, *current_);
  const panel_look::Colours& colours = place.Colours();
  painter.save();
  painter.setFont(label.font);
  panel_look::PaintBox(painter, label.box, label.letter, colours.border, colours.fill);
  painter.setPen(colours.line);
  painter.drawText(label.box.adjusted(kTargetPadding * label.letter, 0, 0, 0),
                   Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, label.text);
  painter.restore();
}

QString LinkHover::TargetOf(const TextLink& link) {
  if (!link.article) return QString::fromStdString(OpenableAddress(link.address));
  return u"在站台上開啟文章 #%1 (%2)"_qs.arg(QString::fromStdU16String(link.article->code),
                                             QString::fromStdU16String(link.article->board));
}

QString LinkHover::DescriptionOf(const TextLink& link) {
  const QString word = WordOf(link.kind);
  return word.isEmpty() ? TargetOf(link) : u"%1：%2"_qs.arg(word, TargetOf(link));
}

}  // namespace quillet
