#include "settings/dialog/colour_swatch.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

namespace quillet {
namespace {

class SwatchEngine : public QIconEngine {
 public:
  explicit SwatchEngine(QRgb colour) : colour_(colour) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
    QColor rim = QGuiApplication::palette().color(QPalette::WindowText);
    rim.setAlphaF(0.5F);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(rim);
    painter->setBrush(colour_);
    const qreal margin = rect.height() / 8.0 + 0.5;
    painter->drawRoundedRect(QRectF(rect).adjusted(margin, margin, -margin, -margin), 2, 2);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect({}, size), mode, state);
    return picture;
  }

  QIconEngine* clone() const override { return new SwatchEngine(*this); }

 private:
  QColor colour_;
};

}  // namespace

QIcon ColourSwatch(QRgb colour) {
  return QIcon(new SwatchEngine(colour));
}

}  // namespace quillet
