#include "app/window/window_icon.h"

#include <QPainter>
#include <QPixmap>

#include "render/paint/embedded_images.h"

namespace quillet {
namespace {

// A Q whose tail is a caret, on the terminal's black.
void DrawLetter(QPainter& painter) {
  constexpr QColor kGround(0x12, 0x17, 0x1E);
  constexpr QColor kLetter(0xE8, 0xED, 0xF2);
  constexpr QColor kCaret(0x45, 0xC4, 0xDC);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kGround);
  painter.drawRoundedRect(QRectF(0, 0, 32, 32), 6, 6);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kLetter, 3.4));
  painter.drawEllipse(QRectF(7, 5.5, 17, 18));
  painter.fillRect(QRectF(17, 23, 9, 3.6), kCaret);
}

constexpr int kSizes[] = {16, 24, 32, 48, 64, 128, 256};

}  // namespace

QIcon MakeWindowIcon() {
  QIcon icon;
  for (const int size : kSizes) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 32.0, size / 32.0);
    DrawLetter(painter);
    painter.end();
    icon.addPixmap(picture);
  }
  return icon;
}

QIcon MakeDisguiseIcon() {
  EmbeddedImages images;
  QIcon icon;
  for (const int size : kSizes)
    icon.addPixmap(QPixmap::fromImage(images.At(EmbeddedImage::kTextEditor, QSize(size, size))));
  return icon;
}

}  // namespace quillet
