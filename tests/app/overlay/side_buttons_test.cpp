#include "app/overlay/side_buttons.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWindow>

namespace quillet {
namespace {

class SideButtonsTest : public testing::Test {
 protected:
  SideButtonsTest() {
    window.resize(800, 600);
    window.setStyleSheet(QStringLiteral("background: black"));
    terminal.setGeometry(100, 0, 600, 600);
    window.show();
    window.activateWindow();
    terminal.setFocus();
    QObject::connect(&buttons, &SideButtons::Clicked,
                     [this](SideButton button) { clicked.push_back(button); });
  }

  QList<QAbstractButton*> All() const { return buttons.findChildren<QAbstractButton*>(); }
  // As the system delivers it, to the window.
  void Click(const QAbstractButton& button) {
    const QPointF place = button.mapTo(&window, button.rect().center());
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, place, window.mapToGlobal(place), Qt::LeftButton,
                        type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
      QCoreApplication::sendEvent(window.windowHandle(), &event);
    }
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
  SideButtons buttons{images, &window};
  std::vector<SideButton> clicked;
};

TEST_F(SideButtonsTest, StayInsideTheMarginAndAwayWhereItHasNoRoom) {
  for (int width = 0; width <= 200; ++width) {
    const QRect margin(0, 3, width, 600);
    buttons.Place(margin, true);
    ASSERT_EQ(buttons.isVisible(), width >= 20) << width;
    if (!buttons.isVisible()) continue;
    QRect above(0, 0, width, 3);
    for (const QAbstractButton* const button : All()) {
      const QRect place(button->mapTo(&window, QPoint()), button->size());
      EXPECT_TRUE(margin.contains(place)) << width;
      EXPECT_GE(place.width(), 20);
      EXPECT_FALSE(above.intersects(place));
      above |= place;
    }
  }
  buttons.Place(QRect(0, 0, 40, 600), false);
  EXPECT_FALSE(buttons.isVisible()) << "not wanted";
  buttons.Place(QRect(0, 0, 40, 60), true);
  EXPECT_FALSE(buttons.isVisible()) << "too low";
}

TEST_F(SideButtonsTest, AClickSaysWhichButtonAndLeavesTheFocusAlone) {
  buttons.Place(QRect(0, 0, 40, 600), true);
  ASSERT_EQ(All().size(), 4);
  for (QAbstractButton* const button : All())
    Click(*button);
  EXPECT_EQ(clicked, (std::vector{SideButton::kHotList, SideButton::kTrackedList, SideButton::kBookmarkList,
                                  SideButton::kOptions}));
  EXPECT_EQ(window.focusWidget(), &terminal);
  for (int step = 0; step < 8; ++step) {
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
    QCoreApplication::sendEvent(window.windowHandle(), &tab);
    EXPECT_EQ(window.focusWidget(), &terminal);
  }
}

TEST_F(SideButtonsTest, TheMouseBrightensAButton) {
  buttons.Place(QRect(0, 0, 40, 600), true);
  for (QAbstractButton* const button : All()) {
    const int quiet = Brightness(*button);
    EXPECT_GT(quiet, 80);
    EXPECT_LT(quiet, 160);
    button->setAttribute(Qt::WA_UnderMouse, true);
    EXPECT_GT(Brightness(*button), quiet + 60);
    button->setAttribute(Qt::WA_UnderMouse, false);
    EXPECT_EQ(Brightness(*button), quiet);
  }
}

TEST_F(SideButtonsTest, ToolTipsTellNameAndKey) {
  buttons.SetShortcut(SideButton::kOptions, Qt::CTRL | Qt::SHIFT | Qt::Key_O);
  EXPECT_EQ(All().at(0)->toolTip(), QStringLiteral("熱門文章"));
  EXPECT_EQ(All().at(3)->toolTip(), QStringLiteral("選項 (Ctrl+Shift+O)"));
}

}  // namespace
}  // namespace quillet
