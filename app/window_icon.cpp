#include "app/window_icon.h"

#include <QPainter>
#include <QPixmap>

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

// Ruled lines on a white page.
void DrawPage(QPainter& painter) {
  constexpr QColor kEdge(0x7A, 0x86, 0x94);
  constexpr QColor kRule(0x5A, 0x9B, 0xD5);
  painter.setPen(QPen(kEdge, 1.5));
  painter.setBrush(Qt::white);
  painter.drawRect(QRectF(6, 3, 20, 26));
  for (int line = 0; line < 5; ++line)
    painter.fillRect(QRectF(9.5, 8 + 4 * line, line == 4 ? 7 : 13, 1.6), kRule);
}

QIcon AllSizes(void (*draw)(QPainter&)) {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 32.0, size / 32.0);
    draw(painter);
    painter.end();
    icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace

QIcon MakeWindowIcon() {
  return AllSizes(DrawLetter);
}

QIcon MakeDisguiseIcon() {
  return AllSizes(DrawPage);
}

}  // namespace quillet
