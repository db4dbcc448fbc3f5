#include <map>
#include <set>

#include <QMenuBar>

#include "app/connect_dialog.h"
#include "tests/app/dialog_answers.h"
#include "tests/app/window_fixture.h"

// As the toolkit's own module for tests declares it.
extern Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* to, ulong timestamp, int key,
                                                      Qt::KeyboardModifiers modifiers, const QString& text,
                                                      bool autoRepeat, ushort count = 1);

namespace quillet {
namespace {

enum class HowLong { kShort, kHeld };

// Takes the shortcuts away from the actions that it is installed on, and counts them.
class ShortcutCatcher : public QObject {
 public:
  bool eventFilter(QObject* action, QEvent* event) override {
    if (event->type() != QEvent::Shortcut) return false;
    EXPECT_FALSE(static_cast<QShortcutEvent*>(event)->isAmbiguous()) << Name(action);
    ++caught[action];
    return true;
  }
  static std::string Name(QObject* action) {
    return qobject_cast<QAction*>(action)->shortcut().toString().toStdString();
  }

  std::map<QObject*, int> caught;
};

class MainFrameTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    // Shortcuts are the active window's.
    ASSERT_TRUE(Until([&] { return frame->isActiveWindow(); }));
  }
  // As the system gives a key: what no shortcut takes comes to the window. Returns whether one took it.
  bool Strike(int key, Qt::KeyboardModifiers modifiers, HowLong how = HowLong::kShort) {
    const bool typed = modifiers == Qt::AltModifier && key < 0x80;
    const QString text = typed ? QString(QChar(key).toLower()) : QString();
    const bool held = how == HowLong::kHeld;
    if (qt_sendShortcutOverrideEvent(frame->windowHandle(), 0, key, modifiers, text, held)) return true;
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text, held);
    QCoreApplication::sendEvent(frame->windowHandle(), &press);
    return false;
  }
};

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

// The terminal itself takes those that are its own; everything else must come to its menu item, and only
// there.
TEST_F(MainFrameTest, EveryShortcutWorksInTheWindowAndInFullScreen) {
  OpenScript();
  ASSERT_TRUE(Until([&] { return doc->IsConnected(); }));
  for (const bool full : {false, true}) {
    if (full) Strike(Qt::Key_F11, Qt::NoModifier);
    ASSERT_EQ(frame->isFullScreen(), full);
    int caught = 0;
    for (QAction* action : frame->findChildren<QAction*>()) {
      if (action->shortcut().isEmpty() || !action->isEnabled()) continue;
      ShortcutCatcher catcher;
      action->installEventFilter(&catcher);
      const QKeyCombination keys = action->shortcut()[0];
      const bool isTerminals =
          std::set<std::string>{"Ctrl+Shift+C", "Ctrl+Shift+V", "Ctrl+Shift+N", "Ctrl+F", "F11", "Alt+W"}
              .count(ShortcutCatcher::Name(action)) > 0;
      if (isTerminals) continue;
      EXPECT_TRUE(Strike(keys.key(), keys.keyboardModifiers())) << ShortcutCatcher::Name(action);
      EXPECT_EQ(catcher.caught[action], 1) << ShortcutCatcher::Name(action);
      ++caught;
    }
    EXPECT_GE(caught, 25);
  }
  AnswerDialogs([&] { Strike(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier); },
                {[](QDialog& dialog) { dialog.reject(); }});
  Strike(Qt::Key_W, Qt::AltModifier);
  EXPECT_TRUE(doc->Fields().work);
  Strike(Qt::Key_F11, Qt::NoModifier);
  EXPECT_FALSE(frame->isFullScreen());
}

TEST_F(MainFrameTest, AShortcutThatIsHeldActsOnce) {
  const auto strike = [&](HowLong how) { Strike(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier, how); };
  const bool before = doc->Fields().ipToName;
  strike(HowLong::kShort);
  EXPECT_NE(doc->Fields().ipToName, before);
  strike(HowLong::kHeld);
  EXPECT_NE(doc->Fields().ipToName, before);
  strike(HowLong::kShort);
  EXPECT_EQ(doc->Fields().ipToName, before);
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
