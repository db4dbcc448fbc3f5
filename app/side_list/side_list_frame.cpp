#include "app/side_list/side_list_frame.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <QFontMetricsF>

#include "app/overlay/panel_look.h"

namespace quillet {
namespace {

// In letters' heights.
constexpr double kTitleHeight = 2.5;
constexpr double kFootHeight = 2.0;
constexpr double kListPadding = 0.7;
constexpr double kHintText = 0.82;
constexpr double kHintGap = 1.2;
constexpr double kNameText = 1.08;
constexpr double kImageSide = 1.3;
constexpr double kImageGap = 0.5;
constexpr double kCountGap = 0.6;
constexpr double kLayoutSide = 0.8;
constexpr double kCloseReach = 0.34;
constexpr double kCloseStroke = 0.1;
constexpr double kMarkWidth = 0.2;
constexpr double kLeastMarkHeight = 1.2;
// In widget units.
constexpr double kLeastCloseStroke = 1.2;
constexpr double kLeastMarkWidth = 3;

constexpr float kMarkOpacity = 0.7F;
// The layout button's bars, and the share of each bar's step that is drawn.
constexpr int kFewBars = 2;
constexpr int kManyBars = 4;
constexpr double kThickBar = 0.7;
constexpr double kThinBar = 0.45;

struct ListWords {
  const char16_t* name;
  EmbeddedImage image;
};
// By ArticleListKind.
constexpr std::array<ListWords, kArticleLists> kWords = {{
    {u"熱門文章", EmbeddedImage::kHotList},
    {u"追蹤文章", EmbeddedImage::kTrackedList},
    {u"書籤", EmbeddedImage::kBookmarkList},
}};

const ListWords& WordsOf(ArticleListKind kind) {
  return kWords.at(static_cast<std::size_t>(kind));
}

QFont Scaled(const QFont& font, double factor) {
  QFont scaled = font;
  scaled.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize() * factor))));
  return scaled;
}

}  // namespace

QString SideListName(ArticleListKind kind) {
  return QString::fromUtf16(WordsOf(kind).name);
}

EmbeddedImage SideListImage(ArticleListKind kind) {
  return WordsOf(kind).image;
}

void SideListFrame::Place(const QSizeF& size, double unit, const QFont& base, bool compact) {
  compact_ = compact;
  font_ = base;
  font_.setPixelSize(std::max(1, static_cast<int>(std::lround(panel_look::TextSize(unit)))));
  const double letters = font_.pixelSize();
  rowHeight_ = CardHeight(font_, compact);
  title_ = QRectF(0, 0, size.width(), std::round(letters * kTitleHeight));
  foot_ = QRectF(0, 0, size.width(), std::round(letters * kFootHeight));
  foot_.moveBottom(std::max(size.height(), title_.bottom()));
  list_ = QRectF(0, title_.bottom(), size.width(), std::max(0.0, foot_.top() - title_.bottom()));

  closeButton_ = QRectF(0, 0, title_.height(), title_.height());
  closeButton_.moveRight(title_.right());
  layoutButton_ = closeButton_.translated(-closeButton_.width(), 0);
  PlaceHints();
}

int SideListFrame::ShownRows() const {
  return std::max(1, static_cast<int>(list_.height() / rowHeight_));
}

void SideListFrame::SetHints(std::vector<Hint> hints) {
  hints_.clear();
  for (Hint& hint : hints)
    hints_.push_back({std::move(hint), {}});
  PlaceHints();
}

void SideListFrame::PlaceHints() {
  const double letters = font_.pixelSize();
  const QFontMetricsF metrics(Scaled(font_, kHintText));
  double left = std::round(letters * kListPadding);
  for (PlacedHint& placed : hints_) {
    const double width = std::ceil(metrics.horizontalAdvance(placed.hint.text)) + 1;
    const double room = std::max(0.0, foot_.width() - left);
    const bool isFirst = &placed == &hints_.front();
    placed.place = width <= room || isFirst ? QRectF(left, foot_.top(), std::min(width, room), foot_.height())
                                            : QRectF();
    left += width + std::round(letters * kHintGap);
  }
}

SideListButton SideListFrame::ButtonAt(const QPointF& at) const {
  if (closeButton_.contains(at)) return SideListButton::kClose;
  if (layoutButton_.contains(at)) return SideListButton::kLayout;
  for (const PlacedHint& placed : hints_)
    if (placed.place.contains(at)) return placed.hint.button;
  return SideListButton::kNone;
}

void SideListFrame::PaintTitle(QPainter& painter, const Title& title, const ListColours& colours,
                               EmbeddedImages& images) const {
  const double letters = font_.pixelSize();
  painter.fillRect(title_, QColor(colours.ground));
  painter.fillRect(QRectF(0, title_.bottom() - 1, title_.width(), 1), QColor(colours.line));

  const double side = std::round(letters * kImageSide);
  const double padding = std::round(letters * kListPadding);
  PaintEmbedded(painter, QRectF(padding, std::round(title_.center().y() - side / 2), side, side),
                SideListImage(title.kind), colours.accent, images);

  QRectF line = title_;
  line.setLeft(padding + side + std::round(letters * kImageGap));
  line.setRight(std::max(line.left(), layoutButton_.left()));
  QFont bold = Scaled(font_, kNameText);
  bold.setWeight(QFont::DemiBold);
  const QString name = QFontMetricsF(bold).elidedText(SideListName(title.kind), Qt::ElideRight, line.width());
  painter.setFont(bold);
  painter.setPen(QColor(colours.title));
  painter.drawText(line, Qt::AlignVCenter, name);

  const QString count = QStringLiteral("%1 篇").arg(title.articles);
  const QFont small = Scaled(font_, kHintText);
  line.setLeft(line.left() + QFontMetricsF(bold).horizontalAdvance(name) + std::round(letters * kCountGap));
  if (line.width() > QFontMetricsF(small).horizontalAdvance(count)) {
    painter.setFont(small);
    painter.setPen(QColor(colours.quiet));
    painter.drawText(line, Qt::AlignVCenter, count);
  }
  PaintLayoutButton(painter, colours);
  PaintCloseButton(painter, colours);
}

// Shows the layout that it leads to: many thin rows or few high ones.
void SideListFrame::PaintLayoutButton(QPainter& painter, const ListColours& colours) const {
  const double side = std::round(font_.pixelSize() * kLayoutSide);
  QRectF box(0, 0, side, side);
  box.moveCenter(layoutButton_.center());
  const int bars = compact_ ? kFewBars : kManyBars;
  const double step = side / bars;
  const double height = step * (compact_ ? kThickBar : kThinBar);
  for (int i = 0; i < bars; ++i)
    painter.fillRect(QRectF(box.left(), box.top() + i * step, side, height), QColor(colours.quiet));
}

void SideListFrame::PaintCloseButton(QPainter& painter, const ListColours& colours) const {
  const double reach = font_.pixelSize() * kCloseReach;
  const QPointF centre = closeButton_.center();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(colours.quiet), std::max(kLeastCloseStroke, font_.pixelSize() * kCloseStroke),
                      Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(centre - QPointF(reach, reach), centre + QPointF(reach, reach));
  painter.drawLine(centre - QPointF(reach, -reach), centre + QPointF(reach, -reach));
  painter.restore();
}

void SideListFrame::PaintHints(QPainter& painter, const ListColours& colours) const {
  painter.fillRect(foot_, QColor(colours.ground));
  painter.fillRect(QRectF(0, foot_.top(), foot_.width(), 1), QColor(colours.line));
  const QFont font = Scaled(font_, kHintText);
  const QFontMetricsF metrics(font);
  painter.setFont(font);
  for (const PlacedHint& placed : hints_) {
    if (placed.place.isEmpty()) continue;
    painter.setPen(QColor(placed.hint.urgent ? colours.title : colours.quiet));
    painter.drawText(placed.place, Qt::AlignVCenter | Qt::TextSingleLine,
                     metrics.elidedText(placed.hint.text, Qt::ElideRight, placed.place.width()));
  }
}

QRectF SideListFrame::ScrollMark(int top, const SideListState& state) const {
  if (state.count <= state.shown) return {};
  const double width = std::max(kLeastMarkWidth, std::round(font_.pixelSize() * kMarkWidth));
  const double height = std::max(std::min(list_.height(), font_.pixelSize() * kLeastMarkHeight),
                                 list_.height() * state.shown / state.count);
  const double way = (list_.height() - height) * top / (state.count - state.shown);
  return {list_.right() - width - 1, list_.top() + way, width, height};
}

QRectF SideListFrame::ScrollGrip(int top, const SideListState& state) const {
  QRectF grip = ScrollMark(top, state);
  if (grip.isEmpty()) return {};
  grip.setLeft(list_.right() - std::round(font_.pixelSize() * kListPadding));
  grip.setRight(list_.right());
  return grip;
}

int SideListFrame::TopAt(double y, const SideListState& state) const {
  const int last = std::max(0, state.count - state.shown);
  const double way = list_.height() - ScrollMark(0, state).height();
  if (way <= 0) return 0;
  const double share = std::clamp((y - list_.top()) / way, 0.0, 1.0);
  return static_cast<int>(std::lround(share * last));
}

void SideListFrame::PaintScrollMark(QPainter& painter, const QRectF& mark, bool held,
                                    const ListColours& colours) const {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  QColor colour(held ? colours.title : colours.quiet);
  colour.setAlphaF(kMarkOpacity);
  painter.setBrush(colour);
  painter.drawRoundedRect(mark, mark.width() / 2, mark.width() / 2);
  painter.restore();
}

}  // namespace quillet
