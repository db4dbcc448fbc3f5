#include "app/overlay/activity_badge.h"

#include <cmath>

#include <QFontMetricsF>

namespace quillet {
namespace {

constexpr qint64 kDelayMs = 300;

// In the badge's letters.
constexpr double kTextLeft = 1.5;
constexpr double kDotRadius = 0.22;

double LetterOf(const OverlayPlace& place) {
  return panel_look::TextSize(place.unit) * panel_look::kSignTextSize;
}

}  // namespace

bool ActivityBadge::SetText(const QString& text) {
  if (text == text_) return false;
  text_ = text;
  since_.start();
  return true;
}

bool ActivityBadge::IsShown() const {
  return !text_.isEmpty() && since_.elapsed() >= kDelayMs;
}

QRectF ActivityBadge::Bounds(const OverlayPlace& place) const {
  if (!IsShown()) return {};
  const double letter = LetterOf(place);
  const QFontMetricsF metrics(panel_look::Sized(place.font, letter));
  QRectF badge(0, 0,
               std::ceil(metrics.horizontalAdvance(text_)) + (kTextLeft + panel_look::kSignPadding) * letter,
               std::ceil(letter * panel_look::kSignHeight));
  const double fromCorner = std::round(letter * panel_look::kFromCorner);
  badge.moveTopRight(QRectF(place.area).topRight() + QPointF(-fromCorner, fromCorner));
  return badge;
}

void ActivityBadge::Paint(QPainter& painter, const OverlayPlace& place) {
  const QRectF badge = Bounds(place);
  if (badge.isEmpty()) return;
  const double letter = LetterOf(place);
  const panel_look::Colours& colours = place.Colours();
  painter.save();
  painter.setFont(panel_look::Sized(place.font, letter));
  panel_look::PaintBox(painter, badge, letter, colours.border, colours.fill);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colours.busy);
  painter.drawEllipse(QPointF(badge.left() + letter * panel_look::kSignPadding, badge.center().y()),
                      letter * kDotRadius, letter * kDotRadius);
  painter.setPen(colours.line);
  painter.drawText(badge.adjusted(letter * kTextLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text_);
  painter.restore();
}

}  // namespace quillet
