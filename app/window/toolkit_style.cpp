#include "app/window/toolkit_style.h"

#include <optional>

#include <QIconEngine>
#include <QPainter>

namespace quillet {
namespace {

class LateIcon : public QIconEngine {
 public:
  LateIcon(const QStyle& style, QStyle::StandardPixmap picture) : style_(style), picture_(picture) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    Icon().paint(painter, rect, Qt::AlignCenter, mode, state);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Icon().pixmap(size, 1.0, mode, state);
  }
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
    return Icon().pixmap(size / scale, scale, mode, state);
  }
  QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Icon().actualSize(size, mode, state);
  }
  QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
    return Icon().availableSizes(mode, state);
  }
  QIconEngine* clone() const override { return new LateIcon(*this); }

 private:
  const QIcon& Icon() {
    if (!icon_) icon_ = style_.standardIcon(picture_);
    return *icon_;
  }

  const QStyle& style_;  // the application's, which outlives its icons
  QStyle::StandardPixmap picture_;
  std::optional<QIcon> icon_;
};

}  // namespace

QIcon ToolkitStyle::standardIcon(StandardPixmap picture, const QStyleOption* option,
                                 const QWidget* widget) const {
  if (picture == SP_ToolBarHorizontalExtensionButton) return QIcon(new LateIcon(*baseStyle(), picture));
  return QProxyStyle::standardIcon(picture, option, widget);
}

}  // namespace quillet
