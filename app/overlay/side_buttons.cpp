#include "app/overlay/side_buttons.h"

#include <algorithm>

#include <QAbstractButton>
#include <QPainter>

#include "app/overlay/panel_look.h"

namespace quillet {
namespace {

// In widget units: what a mouse can still hit, and what a large window makes of it.
constexpr int kSmallestSide = 20;
constexpr int kLargestSide = 44;
constexpr int kMostAbove = 8;
constexpr double kSideOfMargin = 0.8;
constexpr int kSmallestPicture = 16;

constexpr std::uint32_t kQuiet = 0x787878;
constexpr std::uint32_t kBright = 0xE8E8E8;

struct ButtonKind {
  EmbeddedImage image;
  const char16_t* name;
};

// In the order of SideButton.
constexpr std::array kKinds = {
    ButtonKind{EmbeddedImage::kHotList, u"熱門文章"},
    ButtonKind{EmbeddedImage::kTrackedList, u"追蹤文章"},
    ButtonKind{EmbeddedImage::kBookmarkList, u"書籤"},
    ButtonKind{EmbeddedImage::kOptions, u"選項"},
};

int SideIn(const QRect& margin) {
  const int wished =
      std::clamp(static_cast<int>(margin.width() * kSideOfMargin), kSmallestSide, kLargestSide);
  return std::min(wished, margin.width());
}

// A picture pixel on a device pixel, wherever the scale factor puts the button.
void DrawPicture(QPainter& painter, const QPointF& centre, double side, double scale, EmbeddedImage image,
                 std::uint32_t colour, EmbeddedImages& images) {
  const int pixels = std::max(1, qRound(side * scale));
  const QTransform toDevice = painter.deviceTransform();
  const QPointF middle = toDevice.map(centre);
  const QPoint corner(qRound(middle.x() - pixels / 2.0), qRound(middle.y() - pixels / 2.0));
  const QRectF target = toDevice.inverted().mapRect(QRectF(corner, QSize(pixels, pixels)));
  painter.drawImage(target, images.At(image, QSize(pixels, pixels), colour));
}

}  // namespace

// Grey until the mouse is over it; never takes the focus from the terminal.
class QuietButton : public QAbstractButton {
 public:
  QuietButton(EmbeddedImages& images, const ButtonKind& kind, QWidget* parent)
      : QAbstractButton(parent), images_(images), image_(kind.image) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
    setText(QString::fromUtf16(kind.name));
    setToolTip(text());
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const bool bright = underMouse() || isDown();
    if (bright) {
      painter.setRenderHint(QPainter::Antialiasing);
      painter.setPen(Qt::NoPen);
      painter.setBrush(isDown() ? panel_look::kBorder : panel_look::kFill);
      painter.drawRoundedRect(rect(), width() * 0.18, width() * 0.18);
    }
    const double side = std::min<double>(width(), std::max(kSmallestPicture, width() * 6 / 10));
    DrawPicture(painter, QRectF(rect()).center(), side, devicePixelRatioF(), image_,
                bright ? kBright : kQuiet, images_);
  }

 private:
  EmbeddedImages& images_;
  EmbeddedImage image_;
};

SideButtons::SideButtons(EmbeddedImages& images, QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::NoFocus);
  for (std::size_t i = 0; i < kKinds.size(); ++i) {
    buttons_[i] = new QuietButton(images, kKinds[i], this);
    connect(buttons_[i], &QAbstractButton::clicked, this,
            [this, i] { emit Clicked(static_cast<SideButton>(i)); });
  }
  hide();
}

void SideButtons::SetShortcut(SideButton button, const QKeySequence& key) {
  QuietButton& target = *buttons_[static_cast<std::size_t>(button)];
  const QString keyName = key.toString(QKeySequence::NativeText);
  target.setToolTip(keyName.isEmpty() ? target.text() : u"%1 (%2)"_qs.arg(target.text(), keyName));
}

void SideButtons::Place(const QRect& margin, bool wanted) {
  const int side = SideIn(margin);
  const int count = static_cast<int>(buttons_.size());
  const int inset = (margin.width() - side) / 2;
  const int top = std::min(inset, kMostAbove);
  const bool fits = side >= kSmallestSide && margin.height() >= top + count * side;
  if (!wanted || !fits) {
    hide();
    return;
  }
  setGeometry(margin.left() + inset, margin.top() + top, side, count * side);
  for (int i = 0; i < count; ++i)
    buttons_[static_cast<std::size_t>(i)]->setGeometry(0, i * side, side, side);
  show();
}

}  // namespace quillet
