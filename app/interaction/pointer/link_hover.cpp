#include "app/interaction/pointer/link_hover.h"

#include <algorithm>
#include <utility>

#include "app/overlay/hover_label.h"

namespace quillet {
namespace {

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
  for (TextLink& link : LinksInRow(row))
    if (col >= link.first && col < link.last) return std::move(link);
  return std::nullopt;
}

std::optional<TextLink> LinkHover::LinkInLine(int line, int firstCol) const {
  for (TextLink& link : LinksInLine(line))
    if (link.first == firstCol) return std::move(link);
  return std::nullopt;
}

std::vector<TextLink> LinkHover::LinksInSight() const {
  std::vector<TextLink> inSight;
  for (int row = 0; row < kRows; ++row)
    for (TextLink& link : LinksInRow(row))
      if (std::none_of(inSight.begin(), inSight.end(),
                       [&](const TextLink& known) { return LeadToTheSame(known, link); }))
        inSight.push_back(std::move(link));
  return inSight;
}

std::vector<TextLink> LinkHover::LinksInLine(int line) const {
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
  return current_ ? HoverLabel(DescriptionOf(*current_), row_, place).Box() : QRectF();
}

void LinkHover::Paint(QPainter& painter, const OverlayPlace& place) {
  if (current_) HoverLabel(DescriptionOf(*current_), row_, place).Paint(painter, place.Colours());
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
