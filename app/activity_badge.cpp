#include "app/activity_badge.h"

#include <cmath>

#include <QFontMetricsF>

#include "app/panel_look.h"

namespace quillet {
namespace {

constexpr qint64 kDelayMs = 300;

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

void ActivityBadge::Paint(QPainter& painter, const QRectF& area, qreal unit) const {
  if (!IsShown()) return;
  const qreal size = panel_look::TextSize(unit) * 0.9;
  painter.save();
  QFont font = painter.font();
  font.setPixelSize(qRound(size));
  painter.setFont(font);
  const QFontMetricsF metrics(font);
  QRectF badge(0, 0, std::ceil(metrics.horizontalAdvance(text_)) + 2.4 * size, std::ceil(size * 1.9));
  badge.moveTopRight(area.topRight() + QPointF(-std::round(size * 0.6), std::round(size * 0.6)));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(panel_look::kBorder, 1));
  painter.setBrush(panel_look::kFill);
  painter.drawRoundedRect(badge.adjusted(0.5, 0.5, -0.5, -0.5), size * 0.35, size * 0.35);
  painter.setPen(Qt::NoPen);
  painter.setBrush(panel_look::kBusy);
  painter.drawEllipse(QPointF(badge.left() + size * 0.9, badge.center().y()), size * 0.22, size * 0.22);
  painter.setPen(panel_look::kLine);
  painter.drawText(badge.adjusted(size * 1.5, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text_);
  painter.restore();
}

}  // namespace quillet
