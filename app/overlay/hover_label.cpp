#include "app/overlay/hover_label.h"

#include <cmath>

#include <QFontMetricsF>

#include "core/screen_snapshot.h"

namespace quillet {
namespace {

// Of the panel's letters.
constexpr double kLabelTextSize = 0.8;
// In the label's letters.
constexpr double kLabelHeight = 1.8;
constexpr double kLabelPadding = 0.7;
constexpr double kLabelMargin = 0.3;
// Of the area's width.
constexpr double kWidestLabel = 0.6;
// Rows that the label may lie over.
constexpr int kRowsBelow = 3;

// Where a label of this size goes: to the lower left corner, or the right one.
QRectF BoxFor(const QRectF& area, const QSizeF& size, qreal margin, bool right) {
  QRectF box(QPointF(), size);
  box.moveBottom(std::round(area.bottom() - margin));
  if (right)
    box.moveRight(std::round(area.right() - margin));
  else
    box.moveLeft(std::round(area.left() + margin));
  return box;
}

}  // namespace

HoverLabel::HoverLabel(const QString& text, int row, const OverlayPlace& place)
    : letter_(std::round(panel_look::TextSize(place.unit) * kLabelTextSize)),
      font_(panel_look::Sized(place.font, letter_)) {
  const QFontMetricsF metrics(font_);
  const double padding = kLabelPadding * letter_;
  const QRectF area = place.area;
  text_ = metrics.elidedText(text, Qt::ElideMiddle, area.width() * kWidestLabel - 2 * padding);
  const QSizeF extent(std::ceil(metrics.horizontalAdvance(text_) + 2 * padding),
                      std::ceil(letter_ * kLabelHeight));
  box_ = BoxFor(area, extent, kLabelMargin * letter_, row >= kRows - kRowsBelow);
}

void HoverLabel::Paint(QPainter& painter, const panel_look::Colours& colours) const {
  painter.save();
  painter.setFont(font_);
  panel_look::PaintBox(painter, box_, letter_, colours.border, colours.fill);
  painter.setPen(colours.line);
  painter.drawText(box_.adjusted(kLabelPadding * letter_, 0, 0, 0),
                   Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text_);
  painter.restore();
}

}  // namespace quillet
