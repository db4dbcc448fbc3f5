#include <QMenuBar>

#include "app/connect_dialog.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

using MainFrameTest = WindowTest;

QAction* FindItem(QWidget& window, const QString& text) {
  for (QAction* action : window.findChildren<QAction*>())
    if (action->text().contains(text)) return action;
  return nullptr;
}

TEST_F(MainFrameTest, MenuItemsFollowTheConnection) {
  QAction* const disconnect = FindItem(*frame, u"中斷連線"_qs);
  QAction* const reconnect = FindItem(*frame, u"重新連線"_qs);
  ASSERT_TRUE(disconnect && reconnect);
  EXPECT_FALSE(disconnect->isEnabled() || reconnect->isEnabled());
  OpenScript();
  EXPECT_TRUE(disconnect->isEnabled());
  EXPECT_FALSE(reconnect->isEnabled());
  EXPECT_EQ(frame->windowTitle(), "script - Quillet");
  disconnect->trigger();
  EXPECT_FALSE(disconnect->isEnabled());
  EXPECT_TRUE(reconnect->isEnabled());
  EXPECT_EQ(View().Panel().Text().title, u"已離開站台"_qs);
  reconnect->trigger();
  EXPECT_TRUE(doc->IsConnected());
}

TEST_F(MainFrameTest, TheMenuSendsTheControlKeyThatPastingTook) {
  OpenScript();
  FindItem(*frame, "Ctrl+V")->trigger();
  EXPECT_TRUE(Until([&] { return script->Written() == "\x16"; }));
}

TEST_F(MainFrameTest, FullScreenHidesTheMenuAndComesBack) {
  Press(Qt::Key_F11);
  EXPECT_TRUE(frame->isFullScreen());
  EXPECT_FALSE(frame->menuBar()->isVisible());
  EXPECT_EQ(frame->focusWidget(), &View());
  Press(Qt::Key_F11);
  EXPECT_FALSE(frame->isFullScreen());
  EXPECT_TRUE(frame->menuBar()->isVisible());
}

TEST_F(MainFrameTest, TheFirstSizeGivesTheViewItsProportionsWithinTheScreen) {
  const QSize room = frame->screen()->availableSize();
  EXPECT_LE(frame->width(), room.width());
  EXPECT_LE(frame->height(), room.height());
  EXPECT_NEAR(View().width() * 9.0 / 16, View().height(), 3);
  frame->SizeForView({640, 400});
  QCoreApplication::processEvents();
  EXPECT_EQ(View().size(), QSize(640, 400));
}

TEST_F(MainFrameTest, TheAddressDialogAcceptsOnlyWhatCanBeAnAddress) {
  ConnectDlg dialog("telnet://bbs.example");
  auto* const field = dialog.findChild<QLineEdit*>();
  QPushButton* connectButton = nullptr;
  QPushButton* demoButton = nullptr;
  for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
    if (button->text().contains(u"連線")) connectButton = button;
    if (button->text().contains(u"示範")) demoButton = button;
  }
  ASSERT_TRUE(field && connectButton && demoButton);
  for (const char* bad : {"", "   ", "gopher://x"}) {
    field->setText(bad);
    EXPECT_FALSE(connectButton->isEnabled()) << bad;
  }
  field->setText("  wss://bbs.example/bbs ");
  EXPECT_TRUE(connectButton->isEnabled());
  connectButton->click();
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(dialog.Chosen(), ConnectDlg::Choice::kAddress);
  EXPECT_EQ(dialog.Address(), "wss://bbs.example/bbs");
  demoButton->click();
  EXPECT_EQ(dialog.Chosen(), ConnectDlg::Choice::kDemo);
}

}  // namespace
}  // namespace quillet
