#include "app/overlay/activity_badge.h"

#include <cmath>

#include <QFontMetricsF>

namespace quillet {
namespace {

constexpr qint64 kDelayMs = 300;

// Of the panel's letters.
constexpr double kBadgeTextSize = 0.9;
// In the badge's letters.
constexpr double kBadgeHeight = 1.9;
constexpr double kBadgePadding = 0.9;
constexpr double kTextLeft = 1.5;
constexpr double kDotRadius = 0.22;

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

void ActivityBadge::Paint(QPainter& painter, const QRectF& area, qreal unit,
                          const panel_look::Colours& colours) const {
  if (!IsShown()) return;
  const qreal size = panel_look::TextSize(unit) * kBadgeTextSize;
  painter.save();
  QFont font = painter.font();
  font.setPixelSize(qRound(size));
  painter.setFont(font);
  const QFontMetricsF metrics(font);
  QRectF badge(0, 0, std::ceil(metrics.horizontalAdvance(text_)) + (kTextLeft + kBadgePadding) * size,
               std::ceil(size * kBadgeHeight));
  badge.moveTopRight(area.topRight() + QPointF(-std::round(size * panel_look::kFromCorner),
                                               std::round(size * panel_look::kFromCorner)));
  panel_look::PaintBox(painter, badge, size, colours.border, colours.fill);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colours.busy);
  painter.drawEllipse(QPointF(badge.left() + size * kBadgePadding, badge.center().y()), size * kDotRadius,
                      size * kDotRadius);
  painter.setPen(colours.line);
  painter.drawText(badge.adjusted(size * kTextLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text_);
  painter.restore();
}

}  // namespace quillet
