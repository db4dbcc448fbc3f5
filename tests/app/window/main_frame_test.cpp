#include <map>
#include <set>

#include <QMenuBar>

#include "app/dialogs/connect_dialog.h"
#include "settings/setting_table.h"
#include "tests/app/dialogs/dialog_answers.h"
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

// What an open menu shows of its items.
struct Look {
  bool enabled = false;
  bool marked = false;
};
Look LookAt(QWidget& window, const QString& text) {
  Look look;
  for (QMenu* const menu : window.findChildren<QMenu*>()) {
    emit menu->aboutToShow();
    for (const QAction* const action : menu->actions())
      if (action->text().contains(text)) look = {action->isEnabled(), action->isChecked()};
    emit menu->aboutToHide();
  }
  return look;
}

TEST_F(MainFrameTest, EveryCommandIsCarriedOutBySomebody) {
  for (const CommandRow& row : AllCommands())
    EXPECT_TRUE(View().Commands().Has(row.command)) << static_cast<int>(row.command);
}

TEST_F(MainFrameTest, MenuItemsFollowTheConnection) {
  const auto enabled = [&](const QString& text) { return LookAt(*frame, text).enabled; };
  EXPECT_TRUE(FindItem(*frame, u"示範站台"_qs)->shortcut().isEmpty()) << "too near to other keys";
  EXPECT_FALSE(enabled(u"中斷連線"_qs) || enabled(u"重新連線"_qs));
  OpenScript();
  EXPECT_TRUE(enabled(u"中斷連線"_qs));
  EXPECT_EQ(frame->windowTitle(), "script - Quillet");
  EXPECT_TRUE(enabled(u"重新連線"_qs)) << "a dead line looks like this too";
  FindItem(*frame, u"中斷連線"_qs)->trigger();
  EXPECT_FALSE(enabled(u"中斷連線"_qs));
  EXPECT_TRUE(enabled(u"重新連線"_qs));
  EXPECT_EQ(View().Panel().Text().title, u"已離開站台"_qs);
  FindItem(*frame, u"重新連線"_qs)->trigger();
  EXPECT_TRUE(Settles() && doc->GetConnection().IsConnected());
}

TEST_F(MainFrameTest, TheKeysOfAGreyCommandSayWhyAndReachNobody) {
  OpenScript();
  EXPECT_FALSE(LookAt(*frame, u"連續推文"_qs).enabled);
  EXPECT_TRUE(Strike(Qt::Key_X, Qt::ControlModifier | Qt::ShiftModifier));
  EXPECT_EQ(View().LastToast().Text(), u"現在無法使用這個功能"_qs);
  EXPECT_EQ(View().Push().Dialog(), nullptr);
  EXPECT_EQ(script->Written(), "");
}

TEST_F(MainFrameTest, TheMenuSendsTheControlKeyThatPastingTook) {
  OpenScript();
  FindItem(*frame, "Ctrl+V")->trigger();
  EXPECT_TRUE(Until([&] { return script->Written() == "\x16"; }));
}

// The terminal itself takes those that are its own; everything else must come to its menu item, and only
// there.
TEST_F(MainFrameTest, EveryShortcutWorksInTheWindowAndInFullScreen) {
  OpenScript();
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
          std::set<std::string>{"Ctrl+Shift+C", "Ctrl+Shift+V", "Ctrl+Shift+N", "Ctrl+F", "Ctrl++", "Ctrl+-",
                                "Ctrl+0",       "F1",           "F6",           "F11",    "Alt+W"}
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
  EXPECT_TRUE(Fields().work);
  Strike(Qt::Key_F11, Qt::NoModifier);
  EXPECT_FALSE(frame->isFullScreen());
}

TEST_F(MainFrameTest, AShortcutThatIsHeldActsOnce) {
  const auto strike = [&](HowLong how) { Strike(Qt::Key_L, Qt::AltModifier, how); };
  const auto marked = [&] { return LookAt(*frame, u"清單每篇一行"_qs).marked; };
  strike(HowLong::kShort);
  EXPECT_TRUE(View().SideList().IsCompact() && marked());
  strike(HowLong::kHeld);
  EXPECT_TRUE(View().SideList().IsCompact());
  // The list has a button for it.
  View().SideList().SetCompact(false);
  EXPECT_FALSE(marked());
  strike(HowLong::kShort);
  EXPECT_TRUE(View().SideList().IsCompact() && marked());
}

TEST_F(MainFrameTest, WorkModeHasTheMenusOfAnEditorAndEveryShortcut) {
  const auto shown = [&] {
    QStringList titles;
    for (const QAction* const menu : frame->menuBar()->actions())
      if (menu->isVisible()) titles.append(menu->text().section(u'(', 0, 0));
    return titles;
  };
  const QStringList own = shown();
  Strike(Qt::Key_W, Qt::AltModifier);
  Start();
  ASSERT_TRUE(Until([&] { return frame->isActiveWindow(); }));
  EXPECT_FALSE(frame->windowTitle().contains("Quillet")) << "from the first moment on";
  EXPECT_EQ(shown(), (QStringList{u"檔案"_qs, u"編輯"_qs, u"檢視"_qs, u"說明"_qs}));
  for (const QAction* const menu : frame->menuBar()->actions())
    for (const QAction* const item : menu->isVisible() ? menu->menu()->actions() : QList<QAction*>())
      for (const QString& word : {u"推文"_qs, u"文章"_qs, u"站台"_qs, u"上班"_qs, u"名單"_qs, u"Quillet"_qs})
        EXPECT_FALSE(item->text().contains(word)) << item->text().toStdString();
  Strike(Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(View().SideList().Shown(), ArticleListKind::kBookmarks);
  FindItem(*frame, u"一般檢視"_qs)->trigger();
  EXPECT_FALSE(Fields().work);
  EXPECT_EQ(shown(), own);
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

TEST_F(MainFrameTest, TheWindowIsAtTheNextStartAsItWasAtTheEnd) {
  frame->setGeometry(40, 60, 700, 500);
  FindItem(*frame, u"迷你視窗"_qs)->trigger();
  frame->setGeometry(70, 90, 600, 180);
  frame->close();
  Start();
  EXPECT_EQ(frame->geometry(), QRect(70, 90, 600, 180));
  EXPECT_TRUE(LookAt(*frame, u"迷你視窗"_qs).marked);
  FindItem(*frame, u"填滿視窗"_qs)->trigger();
  EXPECT_EQ(frame->size(), QSize(700, 500)) << "the usual window's size";
  frame->showMaximized();
  Press(Qt::Key_F11);
  EXPECT_TRUE(frame->isFullScreen() && !frame->menuBar()->isVisible());
  EXPECT_EQ(frame->focusWidget(), &View());
  frame->close();
  Start();
  EXPECT_TRUE(frame->isFullScreen() && frame->isMaximized() && !frame->menuBar()->isVisible());
  EXPECT_TRUE(LookAt(*frame, u"填滿視窗"_qs).marked);
  Press(Qt::Key_F11);
  EXPECT_TRUE(!frame->isFullScreen() && frame->isMaximized() && frame->menuBar()->isVisible());
  frame->setWindowState(Qt::WindowNoState);
  FindItem(*frame, u"迷你視窗"_qs)->trigger();
  EXPECT_EQ(frame->size(), QSize(600, 180)) << "the small window's";
}

TEST_F(MainFrameTest, ZoomingTakesTheWindowAlongWhereItCan) {
  const auto row = [&] {
    QCoreApplication::processEvents();
    return View().Surface().CurrentLayout().rowHeight;
  };
  const auto press = [&](int key) { Press(key, {}, Qt::ControlModifier); };
  frame->SizeForView({600, 338});
  const int first = row();
  press(Qt::Key_Plus);
  EXPECT_EQ(row(), first + 2);
  EXPECT_GT(View().width(), 600);
  press(Qt::Key_Minus);
  EXPECT_EQ(row(), first);
  EXPECT_EQ(Fields().zoom, 100);
  press(Qt::Key_0);
  const int usual = row();
  Press(Qt::Key_F11);
  const int full = row();
  press(Qt::Key_Minus);
  press(Qt::Key_Minus);
  EXPECT_LT(row(), full * 9 / 10) << "the window stays";
  EXPECT_TRUE(frame->isFullScreen());
  Start();
  ASSERT_TRUE(Until([&] { return frame->isActiveWindow(); }));
  EXPECT_EQ(Fields().zoom, 80);
  EXPECT_LT(row(), usual);
  press(Qt::Key_0);
  EXPECT_EQ(row(), usual);
  OpenScript();
  QWheelEvent turn(View().rect().center(), {}, {}, {0, -120}, Qt::NoButton, Qt::ControlModifier,
                   Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&View(), &turn);
  EXPECT_LT(row(), usual);
}

TEST_F(MainFrameTest, TheProgramsIconStandsOnEveryWindow) {
  const auto picture = [&](const QWidget& window) { return window.windowIcon().pixmap(32).toImage(); };
  const QImage usual = picture(*frame);
  ASSERT_FALSE(usual.isNull());
  EXPECT_EQ(picture(ConnectDlg({}, {}, frame.get())), usual);
  doc->GetSettings().Set(&Settings::work, true);
  EXPECT_NE(picture(*frame), usual);
  doc->GetSettings().Set(&Settings::work, false);
  EXPECT_EQ(picture(*frame), usual);
}

TEST_F(MainFrameTest, TheAddressDialogAcceptsOnlyWhatCanBeAnAddress) {
  ConnectDlg dialog("telnet://bbs.example");
  auto* const field = dialog.findChild<QLineEdit*>();
  QPushButton* connectButton = nullptr;
  for (QPushButton* button : dialog.findChildren<QPushButton*>())
    if (button->text().contains(u"連線")) connectButton = button;
  ASSERT_TRUE(field && connectButton);
  for (const char* bad : {"", "   ", "gopher://x"}) {
    field->setText(bad);
    EXPECT_FALSE(connectButton->isEnabled()) << bad;
  }
  field->setText("  wss://bbs.example/bbs ");
  EXPECT_TRUE(connectButton->isEnabled());
  connectButton->click();
  EXPECT_EQ(dialog.Chosen(), ConnectDlg::Choice::kAddress);
  EXPECT_EQ(dialog.Address(), "wss://bbs.example/bbs");
}

TEST_F(MainFrameTest, TheAddressDialogOffersNamesAndRemovesTheSitesUsedBefore) {
  doc->GetSettings().ChangeMap([](SettingsMap& map) {
    NoteSiteUsed(map, u"telnet://first.example", 1);
    NoteSiteUsed(map, u"telnet://second.example:2323", 2);
  });
  doc->GetSettings().Set(&Settings::site, u"telnet://third.example");
  AnswerDialogs([&] { frame->AskAddress(); }, {[&](QDialog& dialog) {
                  EXPECT_EQ(dynamic_cast<ConnectDlg&>(dialog).Address(), "telnet://third.example");
                  auto& list = Find<QTreeWidget>(dialog, "recentSites");
                  ASSERT_EQ(list.topLevelItemCount(), 2);
                  list.setCurrentItem(list.topLevelItem(1));
                  EXPECT_EQ(dynamic_cast<ConnectDlg&>(dialog).Address(), "telnet://first.example");
                  list.topLevelItem(1)->setText(0, u"老站"_qs);
                  list.topLevelItem(1)->setText(2, u"two words"_qs);
                  EXPECT_EQ(list.topLevelItem(1)->text(2), "") << "no account";
                  list.topLevelItem(1)->setText(2, u"carol"_qs);
                  list.setCurrentItem(list.topLevelItem(0));
                  EXPECT_EQ(list.currentItem()->text(0), "second.example:2323");
                  Find<QPushButton>(dialog, "removeSite").click();
                  dynamic_cast<ConnectDlg&>(dialog).findChild<QLineEdit*>()->setText("ssh://new.example");
                  Find<QPushButton>(dialog, "addSite").click();
                  list.setCurrentItem(list.topLevelItem(0));
                  dialog.accept();
                }});
  const std::vector<RecentSite> sites = doc->GetSettings().RecentSites();
  ASSERT_EQ(sites.size(), 2U);
  EXPECT_EQ(sites[0].name + u" " + sites[0].address, u"new.example ssh://new.example");
  EXPECT_EQ(sites[1].name + u" " + sites[1].account, u"老站 carol");
}

}  // namespace
}  // namespace quillet
