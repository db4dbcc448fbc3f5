#include "app/window/window_icon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

#include "render/paint/embedded_images.h"

namespace quillet {
namespace {

// That task bars and title bars show; what shows larger ones takes them from the installed files.
constexpr int kSizes[] = {16, 24, 32, 48, 64};

// In a field of 32 by 32: a Q whose tail is a caret, on the terminal's black.
void DrawLetter(QPainter& painter, IconBadge badge) {
  constexpr QColor kGround(0x12, 0x17, 0x1E);
  constexpr QColor kLetter(0xE8, 0xED, 0xF2);
  constexpr QColor kPaleLetter(0x7C, 0x86, 0x92);
  constexpr QColor kCaret(0x45, 0xC4, 0xDC);
  const bool isPale = badge == IconBadge::kNotConnected;
  painter.setPen(Qt::NoPen);
  painter.setBrush(kGround);
  painter.drawRoundedRect(QRectF(0, 0, 32, 32), 6, 6);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(isPale ? kPaleLetter : kLetter, 3.4));
  painter.drawEllipse(QRectF(7, 5.5, 17, 18));
  painter.fillRect(QRectF(17, 23, 9, 3.6), isPale ? kPaleLetter : kCaret);
  if (badge != IconBadge::kNews) return;
  painter.setPen(QPen(kGround, 2));
  painter.setBrush(kNewsColour);
  painter.drawEllipse(QRectF(19.5, 1.5, 11, 11));
}

class LetterIcon : public QIconEngine {
 public:
  explicit LetterIcon(IconBadge badge) : badge_(badge) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / 32.0, rect.height() / 32.0);
    DrawLetter(*painter, badge_);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, picture.rect(), mode, state);
    return picture;
  }

  QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    QList<QSize> sizes;
    for (const int size : kSizes)
      sizes.append(QSize(size, size));
    return sizes;
  }

  QIconEngine* clone() const override { return new LetterIcon(*this); }

 private:
  const IconBadge badge_;
};

}  // namespace

QIcon MakeWindowIcon(IconBadge badge) {
  return QIcon(new LetterIcon(badge));
}

QIcon MakeDisguiseIcon() {
  EmbeddedImages images;
  QIcon icon;
  for (const int size : kSizes)
    icon.addPixmap(QPixmap::fromImage(images.At(EmbeddedImage::kTextEditor, QSize(size, size))));
  return icon;
}

}  // namespace quillet
