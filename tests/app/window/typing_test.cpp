#include <QClipboard>
#include <QGuiApplication>

#include "bbs/page_flags.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

class TypingTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    OpenScript();
    ASSERT_TRUE(doc->GetConnection().IsConnected());
  }
  ::testing::AssertionResult Arrived(const std::string& bytes) {
    if (Until([&] { return script->Written() == bytes; })) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "written: " << testing::PrintToString(script->Written());
  }
  void ShowEditor() {
    script->Deliver("\x1B[24;1H" + ToBig5(u" 編輯文章") + "\x1B[1;1H");
    ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_EDITOR) != 0; }));
  }
  void Commit(const QString& text, const QString& preedit = {}) {
    QInputMethodEvent event(preedit, {});
    event.setCommitString(text);
    QCoreApplication::sendEvent(&View(), &event);
  }
};

TEST_F(TypingTest, EditingAndControlKeysReachTheSite) {
  Press(Qt::Key_Tab, "\t");
  Press(Qt::Key_Backtab, {}, Qt::ShiftModifier);
  Press(Qt::Key_Backspace, "\b");
  Press(Qt::Key_Q, "\x11", Qt::ControlModifier);
  Escape();
  Enter();
  EXPECT_TRUE(Arrived("\t\b\x11\x1B\r"));
  EXPECT_TRUE(View().hasFocus()) << "Tab does not wander off";
}

// A menu's shortcut must not take what belongs to the site, nor the site what belongs to the client.
TEST_F(TypingTest, KeysAreClaimedBeforeAnyShortcut) {
  QKeyEvent claimed(QEvent::ShortcutOverride, Qt::Key_X, Qt::ControlModifier, "\x18");
  claimed.ignore();
  QCoreApplication::sendEvent(&View(), &claimed);
  EXPECT_TRUE(claimed.isAccepted());
  QKeyEvent menu(QEvent::ShortcutOverride, Qt::Key_C, Qt::AltModifier, "c");
  menu.ignore();
  QCoreApplication::sendEvent(&View(), &menu);
  EXPECT_FALSE(menu.isAccepted());
}

TEST_F(TypingTest, TheInputMethodCommitsChineseAndShowsWhatItComposes) {
  Commit({}, u"ㄓㄨㄥ"_qs);
  Commit(u"中"_qs, u"ㄨ"_qs);
  Commit(u"文\n"_qs);
  EXPECT_EQ(View().LastToast().Text(), "");
  Commit(u"😀𠮷\u200D😀ก"_qs);  // none has a Big5 code
  EXPECT_EQ(View().LastToast().Text(), u"有 4 個字站台沒有：😀、𠮷、ก"_qs);
  TypeText("x");
  EXPECT_TRUE(Arrived(ToBig5(u"中文\rx")));
}

TEST_F(TypingTest, WhatTheInputMethodGivesIsTypedLikeAnyKey) {
  script->Deliver("\x1B[3;1Hhello");
  ASSERT_TRUE(Until([&] { return View().Screen().cursorCol == 5; }));
  View().Commands().Run(Command::kSelectAll);
  ASSERT_TRUE(View().Selected().IsShown());
  Commit(u"中"_qs);
  EXPECT_FALSE(View().Selected().IsShown());
  View().SideList().Open(ArticleListKind::kBookmarks);
  TypeText("z");
  Commit(u"間"_qs);
  View().SideList().Close();
  Commit(u"文"_qs);
  EXPECT_TRUE(Arrived(ToBig5(u"中文"))) << "a side list keeps what is typed";
}

// There it would compose what is meant as a command.
TEST_F(TypingTest, TheInputMethodIsOffOnPagesOfCommands) {
  const auto isOn = [&] { return View().inputMethodQuery(Qt::ImEnabled).toBool(); };
  const std::string list =
      "\x1B[m\x1B[2J\x1B[24;1H" + ToBig5(u" 文章選讀 ") + "\x1B[5;1H" + ToBig5(u"●") + "\x1B[5;2H";
  script->Deliver(list);
  ASSERT_TRUE(Until([&] { return !isOn(); }));
  script->Deliver("\x1B[2;1H" + ToBig5(u"看板: ") + "\x1B[30;47m            \x1B[2;7H");
  ASSERT_TRUE(Until([&] { return isOn(); })) << "a field";
  Commit({}, u"ㄓ"_qs);
  script->Deliver(list);
  ASSERT_TRUE(Until([&] { return View().Screen().cursorRow == 4; }));
  EXPECT_TRUE(isOn()) << "what is being composed is not thrown away";
  Commit({});
  EXPECT_TRUE(Until([&] { return !isOn(); }));
  ShowEditor();
  EXPECT_TRUE(isOn());
}

TEST_F(TypingTest, TheInputMethodsTextMovesWithTheCursorAndEndsWithTheFocus) {
  const auto composedAt = [&](int row, int col) {
    const QImage cell = View().grab(View().Surface().CellRect(row, col).toAlignedRect()).toImage();
    return QColor(cell.pixel(cell.rect().center())) != QColor(Qt::black);
  };
  script->Deliver("\x1B[5;11H");
  ASSERT_TRUE(Until([&] { return View().Screen().cursorRow == 4; }));
  Commit({}, u"ㄓㄨ"_qs);
  EXPECT_TRUE(composedAt(4, 10));
  script->Deliver("\x1B[20;31H");
  ASSERT_TRUE(Until([&] { return View().Screen().cursorRow == 19; }));
  EXPECT_TRUE(composedAt(19, 30));
  EXPECT_FALSE(composedAt(4, 10));
  View().clearFocus();
  EXPECT_FALSE(composedAt(19, 30));

  View().setFocus();
  Commit({}, u"ㄓㄨ"_qs);
  script->End(EndReason::kClosedByPeer);
  ASSERT_TRUE(Until([&] { return View().Panel().IsActive(); }));
  EXPECT_FALSE(View().inputMethodQuery(Qt::ImEnabled).toBool()) << "nothing can be typed under the panel";
}

TEST_F(TypingTest, TheConfirmedLogOutSendsEnterAndThenCloses) {
  script->Deliver("\x1B[23;1H" + ToBig5(u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] y"));
  ASSERT_TRUE(Until([&] { return View().Screen().TextAt(22, 0) != ' '; }));
  Enter();
  ASSERT_TRUE(Until([&] { return doc->GetConnection().Session().state == SessionState::kClosed; }));
  EXPECT_EQ(script->Written(), "\r");
  EXPECT_EQ(doc->GetConnection().Session().LastEnd().reason, EndReason::kClosedByUser);
}

TEST_F(TypingTest, ABellFlashesAndBeepsUnlessTheUserTypes) {
  script->Deliver("x\a");
  EXPECT_TRUE(Until([&] { return signaller.beeps == 1 && signaller.flashes == 1; }));
  Press(Qt::Key_Down);
  script->Deliver("\x1B[2;2Hy\a\x1B[H");
  ASSERT_TRUE(Until([&] { return View().Screen().TextAt(1, 1) == 'y'; }));
  QCoreApplication::processEvents();
  EXPECT_EQ(signaller.beeps, 1);
}

}  // namespace
}  // namespace quillet
