#include <QElapsedTimer>

#include "app/overlay/stall_sign.h"
#include "core/charset.h"
#include "platform/socket.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

class ConnectionWindowTest : public WindowTest {
 protected:
  void Open(const QString& address) {
    doc->GetConnection().Open({.address = address, .name = {}, .makeTransport = {}});
    ASSERT_TRUE(Settles());
  }
};

TEST_F(ConnectionWindowTest, ARefusedConnectionIsToldAndEnterTriesAgain) {
  std::uint16_t port = 0;
  {
    Listener listener;
    ASSERT_TRUE(listener.Open(ResolvedAddress::Family::kIpv4, 0));
    port = listener.Port();
  }
  Open(u"telnet://127.0.0.1:%1"_qs.arg(port));
  ASSERT_TRUE(PanelSays(u"連不上站台"_qs)) << View().Panel().Text().title.toStdString();
  EXPECT_TRUE(PanelLines().contains("127.0.0.1"));
  EXPECT_TRUE(PanelLines().contains(QString::number(port)));
  Escape();
  EXPECT_FALSE(View().Panel().IsActive()) << "Esc shows the screen beneath";
  Escape();
  EXPECT_TRUE(View().Panel().IsActive());

  Listener listener;
  ASSERT_TRUE(listener.Open(ResolvedAddress::Family::kIpv4, port));
  Enter();
  EXPECT_TRUE(Until([&] { return doc->GetConnection().IsConnected(); }));
  EXPECT_FALSE(View().Panel().IsActive());
}

TEST_F(ConnectionWindowTest, ASiteThatHangsUpIsToldOverItsLastScreen) {
  OpenScript();
  script->Deliver("farewell\x1B[");
  script->StallWrites();
  TypeText("hello");
  script->End(EndReason::kClosedByPeer);
  ASSERT_TRUE(Until([&] { return PanelSays(u"站台結束了連線"_qs); }));
  EXPECT_EQ(View().Screen().RowText(0).substr(0, 8), "farewell");
  EXPECT_TRUE(frame->windowTitle().contains(u"未連線"));
  EXPECT_TRUE(Until([&] { return PanelLines().contains(u"5 位元組尚未送出"_qs); }))
      << PanelLines().toStdString();
}

TEST_F(ConnectionWindowTest, ASiteThatDoesNotAnswerIsToldInTheCornerAndAClickConnectsAnew) {
  OpenScript();
  auto& sign = *View().findChild<StallSign*>();
  const auto says = [&](const QString& words) {
    return Until(
        [&] { return words.isEmpty() ? !sign.isVisible() : sign.isVisible() && sign.text() == words; });
  };
  ahead = 60'000;
  TypeText("x");
  ahead += AnswerWait::kSlowAfter;
  ASSERT_TRUE(says(DescribeSilence(AnswerWait::State::kSlow)));
  EXPECT_TRUE(View().hasFocus());
  script->Deliver("x");
  ASSERT_TRUE(says({}));
  TypeText("y");
  ahead += AnswerWait::kStalledAfter;
  ASSERT_TRUE(says(DescribeSilence(AnswerWait::State::kStalled)));
  // What is typed there shows nowhere.
  script->Deliver("\x1B[22;1H" + ToBig5(u"請輸入您的密碼: "));
  ASSERT_TRUE(says({}));
  TypeText("secret");
  ahead += AnswerWait::kStalledAfter;
  doc->ReviewAnswer();
  EXPECT_EQ(doc->Answer(), AnswerWait::State::kNone);
  // A menu may leave a letter without a word.
  script->Deliver("\x1B[2J\x1B[13;10H" + ToBig5(u"●  (A)nnounce    【 精華公佈欄 】") + "\x1B[13;11H");
  ASSERT_TRUE(Until([&] { return View().Screen().TextAt(12, 13) == '('; }));
  TypeText("z");
  ahead += AnswerWait::kStalledAfter;
  doc->ReviewAnswer();
  EXPECT_EQ(doc->Answer(), AnswerWait::State::kNone);
  Enter();
  ahead += AnswerWait::kStalledAfter;
  ASSERT_TRUE(says(DescribeSilence(AnswerWait::State::kStalled)));
  const auto old = std::exchange(script, std::make_shared<Script>());
  sign.click();
  EXPECT_TRUE(says({}) && Settles());
  TypeText("new");
  EXPECT_TRUE(Until([&] { return script->Written() == "new"; }));
}

TEST_F(ConnectionWindowTest, ASlowConnectIsToldAndEscCancels) {
  script->NeverConnect();
  BeginScript();
  ASSERT_TRUE(Until([&] { return PanelSays(u"連線中"_qs); }));
  EXPECT_TRUE(frame->windowTitle().contains(u"連線中"));
  TypeText("lost on nobody");
  Escape();
  ASSERT_TRUE(Settles());
  EXPECT_TRUE(PanelSays(u"已取消連線"_qs));
  EXPECT_EQ(script->Written(), "");
}

TEST_F(ConnectionWindowTest, ClosingTheWindowWhileConnectingIsQuick) {
  script->NeverConnect();
  BeginScript();
  QElapsedTimer sinceClose;
  sinceClose.start();
  frame->close();
  EXPECT_FALSE(frame->isVisible());
  frame.reset();
  doc.reset();
  EXPECT_LT(sinceClose.elapsed(), 2000);
}

TEST_F(ConnectionWindowTest, AViewMayGoBeforeItsSession) {
  OpenScript();
  frame.reset();
  script->Deliver("nobody looks\x1B[H\a");
  ASSERT_TRUE(Until([&] {
    LiveScreen::Copy copy;
    doc->GetConnection().Session().live.Read(copy);
    return copy.screen.TextAt(0, 0) == 'n';
  }));
}

TEST_F(ConnectionWindowTest, ReplacingAConnectionLeavesOnlyTheNewOne) {
  OpenScript();
  script->Deliver("old");
  ASSERT_TRUE(Until([&] { return View().Screen().TextAt(0, 0) == 'o'; }));
  auto old = std::exchange(script, std::make_shared<Script>());
  OpenScript();
  ASSERT_TRUE(doc->GetConnection().IsConnected());
  script->Deliver("new");
  ASSERT_TRUE(Until([&] { return View().Screen().TextAt(0, 0) == 'n'; }));
  EXPECT_FALSE(View().Panel().IsActive());
  TypeText("x");
  EXPECT_TRUE(Until([&] { return script->Written() == "x"; }));
  EXPECT_EQ(old->Written(), "");
}

}  // namespace
}  // namespace quillet
