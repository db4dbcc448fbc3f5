#include "app/overlay/side_buttons.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QAbstractButton>
#include <QKeyEvent>
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
constexpr double kRound = 0.18;

constexpr std::uint32_t kBright = 0xE8E8E8;
constexpr std::uint32_t kUseless = 0x484848;

// Between the two groups, in halves of a button.
constexpr int kGapHalves = 1;

int SideIn(const QRect& margin) {
  const int wished =
      std::clamp(static_cast<int>(margin.width() * kSideOfMargin), kSmallestSide, kLargestSide);
  return std::min(wished, margin.width());
}

int PictureIn(int side) {
  return std::min(side, std::max(kSmallestPicture, side * 6 / 10));
}

int CountOfAny() {
  return static_cast<int>(CommandsBesideAnyPage().size());
}

// As many of the page's as there ever are are counted, so that none moves from page to page.
int SideThatFits(int side, int height) {
  const int halves = 2 * (CountOfAny() + kMostBesidePage) + kGapHalves;
  return std::max(kSmallestSide, std::min(side, 2 * height / halves));
}

// Where the picture of a button stands in the middle between the window's edge and a flag, if it can.
int LeftIn(const SideRoom& room, int side) {
  const int middle = (room.margin.width() - room.flag) / 2;
  return std::clamp(middle - side / 2, 0, std::max(0, (room.margin.width() - side) / 2));
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

// Grey until the mouse is over it or the keyboard is at it. A click never takes the focus from the terminal.
class QuietButton : public QAbstractButton {
 public:
  QuietButton(EmbeddedImages& images, SideButtons& column)
      : QAbstractButton(&column), images_(images), column_(column) {
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
  }

  Command Given() const { return command_; }
  void Take(Command command, const CommandState& state) {
    const bool isOther = std::exchange(command_, command) != command;
    setText(QString::fromStdU16String(NameOf(command, state)));
    setToolTip(QString::fromStdU16String(TipOf(command, state)));
    setEnabled(IsEnabled(command, state));
    if (isOther) update();
  }
  QRect PicturePlace() const {
    const int side = PictureIn(width());
    QRect place(0, 0, side, side);
    place.moveCenter(rect().center());
    return place;
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const bool bright = isEnabled() && (underMouse() || isDown() || hasFocus());
    if (bright) {
      painter.setRenderHint(QPainter::Antialiasing);
      painter.setPen(hasFocus() ? QPen(panel_look::kBusy, 2) : QPen(Qt::NoPen));
      painter.setBrush(isDown() ? panel_look::kBorder : panel_look::kFill);
      const double inset = hasFocus() ? 1 : 0;
      painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), width() * kRound,
                              width() * kRound);
    }
    const std::uint32_t usual = isEnabled() ? SideButtons::kQuiet : kUseless;
    DrawPicture(painter, QRectF(rect()).center(), PictureIn(width()), devicePixelRatioF(),
                static_cast<EmbeddedImage>(RowOf(command_).picture), bright ? kBright : usual, images_);
  }
  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Up:
        return column_.Step(-1);
      case Qt::Key_Down:
        return column_.Step(1);
      case Qt::Key_Return:
      case Qt::Key_Enter:
      case Qt::Key_Space:
        if (!event->isAutoRepeat()) click();
        return;
      case Qt::Key_Escape:
      case Qt::Key_Left:
      case Qt::Key_Right:
        return column_.GiveKeyboardBack();
      default:
        // Who types means the terminal.
        if (!event->text().isEmpty()) column_.GiveKeyboardBack();
        event->ignore();
    }
  }
  bool focusNextPrevChild(bool next) override {
    column_.Step(next ? 1 : -1);
    return true;
  }

 private:
  EmbeddedImages& images_;
  SideButtons& column_;
  Command command_ = Command::kNone;
};

SideButtons::SideButtons(EmbeddedImages& images, QWidget& parent) : QWidget(&parent) {
  setFocusPolicy(Qt::NoFocus);
  for (int i = 0; i < CountOfAny() + kMostBesidePage; ++i) {
    auto* const button = new QuietButton(images, *this);
    connect(button, &QAbstractButton::clicked, this, [this, button] {
      if (HasKeyboard()) GiveKeyboardBack();
      emit Clicked(button->Given());
    });
    buttons_.push_back(button);
  }
  Arrange();
}

void SideButtons::Place(const SideRoom& room) {
  if (std::exchange(room_, room) != room) Arrange();
}

void SideButtons::Follow(const CommandState& state) {
  if (std::exchange(state_, state) != state) Arrange();
}

std::optional<SideButtons::Measures> SideButtons::Measure() const {
  const QRect& margin = room_.margin;
  const int wished = SideIn(margin);
  const int above = std::min((margin.width() - wished) / 2, kMostAbove);
  const int height = margin.height() - above;
  const int side = std::min(wished, SideThatFits(wished, height));
  const bool fits = side >= kSmallestSide && height >= CountOfAny() * side;
  if (room_.wish == SideRoom::Wish::kHidden || !fits) return std::nullopt;
  return Measures{.side = side, .left = margin.left() + LeftIn(room_, side), .top = margin.top() + above};
}

void SideButtons::Arrange() {
  const std::optional<Measures> measures = Measure();
  if (!measures) {
    if (HasKeyboard()) GiveKeyboardBack();
    return hide();
  }
  const int side = measures->side;
  const std::span<const Command> any = CommandsBesideAnyPage();
  const std::span<const Command> page = CommandsBeside(state_.page);
  setGeometry(measures->left, measures->top, side, room_.margin.bottom() + 1 - measures->top);
  QRegion shown;
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    QuietButton& button = *buttons_[i];
    const bool isOfPage = i >= any.size();
    const Command command = !isOfPage                      ? any[i]
                            : i - any.size() < page.size() ? page[i - any.size()]
                                                           : Command::kNone;
    const int top = static_cast<int>(i) * side + (isOfPage ? kGapHalves * side / 2 : 0);
    button.setGeometry(0, top, side, side);
    const bool stands = command != Command::kNone && top + side <= height() && !IsTaken(button);
    const bool stays = stands && button.Given() == command && IsEnabled(command, state_);
    if (button.hasFocus() && !stays) GiveKeyboardBack();
    if (stands) button.Take(command, state_);
    if (stands) shown += button.geometry();
    button.setVisible(stands);
  }
  setMask(shown);
  show();
}

bool SideButtons::IsTaken(const QuietButton& button) const {
  return room_.marks.intersects(button.PicturePlace().translated(pos() + button.pos()));
}

bool SideButtons::HasKeyboard() const {
  return std::any_of(buttons_.begin(), buttons_.end(),
                     [](const QuietButton* button) { return button->hasFocus(); });
}

void SideButtons::GiveKeyboardBack() {
  parentWidget()->setFocus();
}

void SideButtons::SwitchKeyboard() {
  if (HasKeyboard()) return GiveKeyboardBack();
  const auto mayTake = [](const QuietButton* button) { return button->isVisible() && button->isEnabled(); };
  auto first = std::find_if(buttons_.begin() + CountOfAny(), buttons_.end(), mayTake);
  if (first == buttons_.end()) first = std::find_if(buttons_.begin(), buttons_.end(), mayTake);
  if (first != buttons_.end()) (*first)->setFocus(Qt::TabFocusReason);
}

void SideButtons::Step(int direction) {
  const auto count = static_cast<int>(buttons_.size());
  const auto from = std::find_if(buttons_.begin(), buttons_.end(),
                                 [](const QuietButton* button) { return button->hasFocus(); });
  const auto start = static_cast<int>(from - buttons_.begin());
  for (int step = 1; step < count; ++step) {
    QuietButton& next =
        *buttons_[static_cast<std::size_t>((start + direction * step + step * count) % count)];
    if (!next.isVisible() || !next.isEnabled()) continue;
    return next.setFocus(Qt::TabFocusReason);
  }
}

}  // namespace quillet
