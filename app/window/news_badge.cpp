#include "app/window/news_badge.h"

#include <QImage>
#include <QPainter>

#include "app/window/window_icon.h"
#include "platform/taskbar_badge.h"

namespace quillet {
namespace {

// Task bars scale it to what they have room for.
constexpr int kSide = 32;

QImage DrawDot() {
  QImage dot(kSide, kSide, QImage::Format_ARGB32);
  dot.fill(Qt::transparent);
  QPainter painter(&dot);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kNewsColour);
  painter.drawEllipse(dot.rect().adjusted(4, 4, -4, -4));
  return dot;
}

}  // namespace

bool ShowNewsBadge(const QWidget& window, bool isShown) {
  const QImage dot = isShown ? DrawDot() : QImage();
  const auto* const pixels = reinterpret_cast<const std::uint32_t*>(dot.constBits());
  const auto count = static_cast<std::size_t>(dot.width()) * static_cast<std::size_t>(dot.height());
  return SetTaskbarBadge(window.internalWinId(), {pixels, count}, dot.width(), isShown ? u"有新的消息" : u"");
}

}  // namespace quillet
