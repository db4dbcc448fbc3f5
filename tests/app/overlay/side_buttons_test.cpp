#include "app/overlay/side_buttons.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWindow>

#include "app/window/tour/tour.h"
#include "render/contrast.h"
#include "render/palette.h"

namespace quillet {
namespace {

const CommandState kReader{.holds = {Condition::kConnected, Condition::kArticle}, .page = PageKind::kReader};

class SideButtonsTest : public testing::Test {
 protected:
  SideButtonsTest() {
    window.resize(800, 600);
    window.setStyleSheet(QStringLiteral("background: black"));
    terminal.setGeometry(100, 0, 600, 600);
    window.setFocusProxy(&terminal);
    window.show();
    window.activateWindow();
    terminal.setFocus();
    buttons.Follow(kReader);
    QObject::connect(&buttons, &SideButtons::Clicked,
                     [this](Command command) { clicked.push_back(command); });
  }

  QList<QAbstractButton*> Shown() const {
    QList<QAbstractButton*> shown;
    for (QAbstractButton* const button : buttons.findChildren<QAbstractButton*>())
      if (button->isVisible()) shown.append(button);
    return shown;
  }
  QRect PlaceOf(const QAbstractButton& button) { return {button.mapTo(&window, QPoint()), button.size()}; }
  // As the system delivers it, to the window.
  void Click(const QAbstractButton& button) {
    const QPointF place = button.mapTo(&window, button.rect().center());
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, place, window.mapToGlobal(place), Qt::LeftButton,
                        type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
      QCoreApplication::sendEvent(window.windowHandle(), &event);
    }
  }
  void Press(int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(window.windowHandle(), &event);
  }
  QString WithKeyboard() {
    const auto* const button = qobject_cast<QAbstractButton*>(window.focusWidget());
    return button == nullptr ? QString() : button->text();
  }
  // The brightest spot of the picture.
  int Brightness(QAbstractButton& button) {
    const QImage picture = button.grab().toImage();
    int brightest = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        brightest = std::max(brightest, qGray(picture.pixel(x, y)));
    return brightest;
  }

  EmbeddedImages images;
  QWidget window;
  QLineEdit terminal{&window};
  SideButtons buttons{images, window};
  std::vector<Command> clicked;
};

TEST_F(SideButtonsTest, StayInsideTheMarginAndAwayWhereItHasNoRoom) {
  for (int width = 0; width <= 200; ++width) {
    const QRect margin(0, 3, width, 597);
    buttons.Place({.margin = margin});
    ASSERT_EQ(buttons.isVisible(), width >= 20) << width;
    if (!buttons.isVisible()) continue;
    ASSERT_EQ(Shown().size(), 11) << width;
    QRect above(0, 0, width, 3);
    for (const QAbstractButton* const button : Shown()) {
      const QRect place = PlaceOf(*button);
      EXPECT_TRUE(margin.contains(place)) << width;
      EXPECT_GE(place.width(), 20);
      EXPECT_FALSE(above.intersects(place));
      above |= place;
    }
  }
  buttons.Place({.margin = QRect(0, 0, 40, 600), .wish = SideRoom::Wish::kHidden});
  EXPECT_FALSE(buttons.isVisible()) << "not wanted";
  buttons.Place({.margin = QRect(0, 0, 40, 60)});
  EXPECT_FALSE(buttons.isVisible()) << "too low";
  buttons.Place({.margin = QRect(0, 0, 40, 140)});
  EXPECT_EQ(Shown().size(), 6) << "the last ones go first";
}

TEST_F(SideButtonsTest, NoPictureLiesOverAFlag) {
  const QRect margin(0, 0, 40, 600);
  buttons.Place({.margin = margin, .flag = 12});
  const QRect second = PlaceOf(*Shown().at(1));
  buttons.Place({.margin = margin, .flag = 12, .marks = QRect(28, second.top(), 12, 20)});
  EXPECT_EQ(Shown().size(), 11) << "a flag has its room";
  buttons.Place({.margin = margin, .flag = 12, .marks = QRect(16, second.top(), 24, 20)});
  ASSERT_EQ(Shown().size(), 10);
  EXPECT_NE(PlaceOf(*Shown().at(1)), second);
}

TEST_F(SideButtonsTest, AClickGivesTheCommandOfThePageAndLeavesTheKeyboardAlone) {
  buttons.Place({.margin = QRect(0, 0, 40, 600)});
  std::vector<Command> expected(CommandsBesideAnyPage().begin(), CommandsBesideAnyPage().end());
  for (const Command command : CommandsBeside(PageKind::kReader))
    expected.push_back(command);
  const QRect back = PlaceOf(*Shown().at(4));
  for (QAbstractButton* const button : Shown())
    Click(*button);
  EXPECT_EQ(clicked, expected);
  EXPECT_EQ(window.focusWidget(), &terminal);
  buttons.Follow({.holds = {}, .page = PageKind::kArticleList});
  EXPECT_EQ(PlaceOf(*Shown().at(4)), back) << "none moves from page to page";
  clicked.clear();
  Click(*Shown().at(4));
  EXPECT_TRUE(clicked.empty()) << "it cannot act";
  buttons.Follow({.holds = {}, .page = PageKind::kTyping});
  EXPECT_EQ(Shown().size(), 4);
}

TEST_F(SideButtonsTest, TheKeyboardWalksAmongThemAndComesBack) {
  ASSERT_TRUE(HandleEventsUntil([&] { return window.isActiveWindow(); }, 5000));
  buttons.Place({.margin = QRect(0, 0, 40, 600)});
  buttons.SwitchKeyboard();
  EXPECT_EQ(WithKeyboard(), QStringLiteral("離開"));
  Press(Qt::Key_Up);
  EXPECT_EQ(WithKeyboard(), QStringLiteral("選項"));
  Press(Qt::Key_Tab);
  Press(Qt::Key_Down);
  EXPECT_EQ(WithKeyboard(), QStringLiteral("到開頭"));
  Press(Qt::Key_Return);
  EXPECT_EQ(clicked, std::vector{Command::kTop});
  EXPECT_EQ(window.focusWidget(), &terminal);
  buttons.SwitchKeyboard();
  Press(Qt::Key_Escape);
  EXPECT_EQ(window.focusWidget(), &terminal);
  buttons.SwitchKeyboard();
  buttons.Follow({.holds = {}, .page = PageKind::kTyping});
  EXPECT_EQ(window.focusWidget(), &terminal) << "its button has gone";
}

TEST_F(SideButtonsTest, QuietUntilTheMouseComesAndReadableOnEveryGround) {
  buttons.Place({.margin = QRect(0, 0, 40, 600)});
  for (const PageKind page : {PageKind::kReader, PageKind::kArticleList, PageKind::kEditor}) {
    buttons.Follow({.holds = kReader.holds, .page = page});
    for (QAbstractButton* const button : Shown()) {
      const int quiet = Brightness(*button);
      EXPECT_NEAR(quiet, qGray(SideButtons::kQuiet), 2) << button->text().toStdString();
      button->setAttribute(Qt::WA_UnderMouse, true);
      EXPECT_GT(Brightness(*button), quiet + 60);
      button->setAttribute(Qt::WA_UnderMouse, false);
    }
  }
  for (const PaletteKind kind : {PaletteKind::kNormal, PaletteKind::kDark}) {
    const Palette& palette = PaletteOf(kind);
    EXPECT_LT(Luminance(SideButtons::kQuiet), Luminance(palette[7]));
    for (const std::size_t ground : {16, 24, 25})
      EXPECT_GE(Contrast(SideButtons::kQuiet, palette[ground]), kReadableContrast);
  }
}

}  // namespace
}  // namespace quillet
