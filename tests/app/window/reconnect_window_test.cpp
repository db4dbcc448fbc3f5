// A connection that is lost, as the user sees it: told, made anew, logged in again; or not, where he wished
// so.
#include <atomic>

#include <QElapsedTimer>
#include <QTimer>

#include "bbs/page_flags.h"
#include "core/charset.h"
#include "demo/demo_server.h"
#include "input/text/screen_text.h"
#include "tests/app/window_fixture.h"
#include "tests/support/loopback_server.h"

namespace quillet {
namespace {

class ReconnectWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    QObject::connect(&Line(), &Connection::Ended, [this] { ++ended; });
  }
  void TearDown() override {
    frame.reset();
    doc.reset();
  }
  Connection& Line() { return doc->GetConnection(); }
  int Left() { return doc->GetReconnector().SecondsLeft(); }
  bool Reads(const QString& text) {
    return Until([&] { return QString::fromStdU16String(ScreenAsText(View().Screen())).contains(text); });
  }
  // The site hangs up; who connects next finds another.
  void Lose(EndReason reason = EndReason::kClosedByPeer) {
    const int before = ended;
    std::exchange(script, std::make_shared<Script>())->End(reason);
    ASSERT_TRUE(Until([&] { return ended > before; }));
  }
  void WantIt() { doc->GetSettings().Set(&Settings::autoReconnect, true); }

  void StartDemo(std::uint16_t port = 0) {
    DemoOptions options;
    options.contentFolder = QUILLET_SOURCE_DIR "/tests/demo/data";
    options.port = port;
    demo = std::make_unique<DemoServer>(options);
    ASSERT_EQ(demo->Error(), "");
  }
  void LogIn(const std::string& site) {
    doc->GetSettings().Set(&Settings::site, QString::fromStdString(site).toStdU16String());
    View().AskLogin();
    TypeText("alice");
    Press(Qt::Key_Tab, "\t");
    TypeText("wonder");
    Enter();
  }
  bool IsIn() {
    return Until([&] { return Line().IsConnected() && Seen().loginId == u"alice" && IsIdle(); }) &&
           Reads(u"【主功能表】"_qs);
  }

  std::unique_ptr<DemoServer> demo;
  int ended = 0;
};

TEST_F(ReconnectWindowTest, ALostLoginIsCountedDownToAndThereAgain) {
  WantIt();
  StartDemo();
  const std::uint16_t port = demo->Port();
  LogIn(demo->Address());
  ASSERT_TRUE(IsIn());
  demo.reset();
  ASSERT_TRUE(Until([&] { return PanelLines().contains(u"1 秒後自動重新連線"_qs); }))
      << PanelLines().toStdString();
  ahead += 1000;
  ASSERT_TRUE(Until([&] { return PanelSays(u"連不上站台"_qs) && Left() > 0; }));
  EXPECT_TRUE(PanelLines().contains(u"秒後自動重新連線"_qs));
  EXPECT_EQ(View().Login().Form(), nullptr) << "nobody has to say again who he is";
  StartDemo(port);
  ahead += 2000;
  ASSERT_TRUE(IsIn());
  EXPECT_FALSE(View().Panel().IsActive());

  demo.reset();
  ASSERT_TRUE(Until([&] { return Left() > 0; }));
  doc->GetSettings().Set(&Settings::autoReconnect, false);
  ASSERT_TRUE(Until([&] { return Left() == 0; })) << "he has thought better of it";
  StartDemo(port);
  Enter();
  ASSERT_TRUE(IsIn()) << "by hand it is logged in as well";
}

TEST_F(ReconnectWindowTest, WhoLogsOutStaysOutAndIsNotLoggedInAgain) {
  WantIt();
  StartDemo();
  LogIn(demo->Address());
  ASSERT_TRUE(IsIn());
  TypeText("g");
  Enter();
  ASSERT_TRUE(Reads(u"您確定要離開"_qs));
  // Sent past the window, which would close the connection after it.
  Line().Session().SendBytes("y\r");
  ASSERT_TRUE(Until([&] { return ended == 1; }));
  ASSERT_TRUE(PanelSays(u"已離開站台"_qs)) << View().Panel().Text().title.toStdString();
  EXPECT_EQ(Left(), 0);
  Enter();
  ASSERT_TRUE(Reads(u"請輸入代號"_qs));
  EXPECT_TRUE(IsIdle());
  EXPECT_EQ(Line().LoginAgain(), nullptr);
}

TEST_F(ReconnectWindowTest, WhomAnotherLoginOfHisOwnHasReplacedIsLeftAtThat) {
  WantIt();
  StartDemo();
  LogIn(demo->Address());
  ASSERT_TRUE(IsIn());
  TermSession other{SessionOptions{}};
  other.Connect(demo->Address());
  other.SendBytes("alice\rwonder\r\r");
  ASSERT_TRUE(Until([&] { return ended == 1; }));
  EXPECT_TRUE(PanelLines().contains(u"在別處登入"_qs)) << PanelLines().toStdString();
  EXPECT_EQ(Left(), 0);
}

TEST_F(ReconnectWindowTest, ALoginThatHangsIsGivenOnceMore) {
  int clients = 0;
  std::atomic<bool> isGiven{false};
  LoopbackServer server([&](Socket& client, const StopSignal& stop) {
    constexpr std::size_t kOpeningKeys = 40;
    if (clients++ > 0)
      SendText(client, "\x1B[21;1H" + ToBig5(u"請輸入代號，或以 guest 參觀，或以 new 註冊: "), stop);
    std::string typed;
    ReceiveText(client, typed, kOpeningKeys + 6, stop);
    isGiven = typed.ends_with("alice\r");
  });
  LogIn(server.SiteAddress());
  ASSERT_TRUE(Until([&] { return doc->GetAutomations().Current() == Activity::kLogin; }));
  Press(Qt::Key_R, {}, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(Until([&] { return isGiven.load(); }));
  ASSERT_TRUE(Until([&] { return View().Login().Form() != nullptr; })) << "the server has hung up on it";
  EXPECT_EQ(View().Login().Form()->Entry().account, "alice") << "it was the form's all the while";
}

TEST_F(ReconnectWindowTest, ARefusedLoginIsGivenNoSecondTime) {
  WantIt();
  BeginScript(MakeLoginOrder({.account = u"alice", .password = u"wonder"}));
  ASSERT_TRUE(Settles());
  Line().KeepLogin(MakeLoginOrder({.account = u"alice", .password = u"wonder"}));
  Escape();
  Lose();
  ASSERT_GT(Left(), 0);
  script->Deliver("\x1B[21;1H" + ToBig5(u"請輸入代號，或以 guest 參觀，或以 new 註冊: ") + "\x1B[22;1H" +
                  ToBig5(u"請輸入您的密碼: "));
  ahead += 1000;
  ASSERT_TRUE(Until([&] { return script->Written() == "alice\rwonder\r"; })) << script->Written();
  script->Deliver("\x1B[22;1H\x1B[K" + ToBig5(u"密碼不對喔！請檢查帳號及密碼大小寫有無輸入錯誤。"));
  ASSERT_TRUE(Until([&] { return View().Login().Form() != nullptr && Line().IsClosed(); }));
  EXPECT_EQ(Left(), 0);
  EXPECT_EQ(Line().LoginAgain(), nullptr);
}

TEST_F(ReconnectWindowTest, NobodyIsConnectedWhoWasThrownOutHasStoppedItOrGoesElsewhere) {
  OpenScript();
  Lose();
  EXPECT_EQ(Left(), 0) << "nobody has asked for it";
  WantIt();
  OpenScript();
  script->Deliver("\x1B[11;11H" + ToBig5(u"這個代號已在別處登入，本連線到此結束。"));
  ASSERT_TRUE(Reads(u"別處登入"_qs));
  Lose();
  EXPECT_EQ(Left(), 0);
  EXPECT_TRUE(PanelLines().contains(u"在別處登入"_qs)) << PanelLines().toStdString();
  const auto losesItAnew = [&] {
    OpenScript();
    Lose();
    return Left() > 0;
  };
  ASSERT_TRUE(losesItAnew());
  Escape();
  EXPECT_EQ(Left(), 0);
  EXPECT_TRUE(View().Panel().IsActive() && PanelSays(u"站台結束了連線"_qs)) << "Esc has only stopped it";
  ASSERT_TRUE(losesItAnew());
  View().AskLogin();
  EXPECT_EQ(Left(), 0);
  ASSERT_TRUE(losesItAnew());
  Line().Open({.address = "gopher://elsewhere", .name = {}});
  EXPECT_EQ(Left(), 0);
  ASSERT_TRUE(losesItAnew());
  frame->close();
  EXPECT_EQ(Left(), 0);
}

TEST_F(ReconnectWindowTest, WhatWasNotSentIsToldUntilTheUserKnows) {
  const auto loseTyped = [&](const QString& text) {
    script->StallWrites();
    TypeText(text);
    Lose();
  };
  WantIt();
  OpenScript();
  loseTyped("hello");
  ASSERT_TRUE(Until([&] { return PanelLines().contains(u"5 位元組尚未送出"_qs); }));
  EXPECT_TRUE(PanelLines().contains(u"秒後自動重新連線"_qs));
  script->NeverConnect();
  ahead += 1000;
  ASSERT_TRUE(Until([&] { return Line().IsConnecting(); }));
  EXPECT_TRUE(Until([&] { return PanelSays(u"連線中"_qs); }));
  EXPECT_TRUE(PanelLines().contains(u"5 位元組尚未送出"_qs)) << "the attempt has no news";
  std::exchange(script, std::make_shared<Script>())->End(EndReason::kResolveFailed);
  ASSERT_TRUE(Until([&] { return PanelSays(u"找不到站台"_qs); }));
  EXPECT_TRUE(PanelLines().contains(u"5 位元組尚未送出"_qs));
  ahead += 2000;
  ASSERT_TRUE(Until([&] { return PanelSays(u"已重新連線"_qs); })) << "nobody may have looked";
  EXPECT_TRUE(PanelLines().contains(u"5 位元組"_qs));
  Enter();
  EXPECT_FALSE(View().Panel().IsActive());

  loseTyped("abc");
  ASSERT_TRUE(Until([&] { return PanelLines().contains(u"3 位元組尚未送出"_qs); }));
  Enter();
  ASSERT_TRUE(Until([&] { return Line().IsConnected(); }));
  EXPECT_FALSE(View().Panel().IsActive()) << "he has seen it";
  // What hangs is given up by a command, and nobody has been told before.
  script->StallWrites();
  TypeText("xy");
  script = std::make_shared<Script>();
  Press(Qt::Key_R, {}, Qt::ControlModifier | Qt::ShiftModifier);
  ASSERT_TRUE(Until([&] { return PanelSays(u"已重新連線"_qs); }));
  EXPECT_TRUE(PanelLines().contains(u"2 位元組"_qs));
}

TEST_F(ReconnectWindowTest, AnyKeyReconnectsButNotOneThatWasMeantForThePage) {
  OpenScript();
  Lose(EndReason::kReadFailed);
  ASSERT_TRUE(PanelSays(u"連線中斷了"_qs));
  TypeText("still typing");
  EXPECT_TRUE(Line().IsClosed());
  QElapsedTimer sinceKey;
  sinceKey.start();
  // A key that follows another one at once belongs to it.
  EXPECT_TRUE(Until([&] {
    if (sinceKey.elapsed() > 1100) {
      TypeText("x");
      sinceKey.start();
    }
    return !Line().IsClosed();
  }));
  EXPECT_TRUE(Settles() && Line().IsConnected());
  EXPECT_EQ(script->Written(), "") << "it was an answer to the panel";
}

TEST_F(ReconnectWindowTest, AnIdleUserIsKeptWhereAKeyDoesNothing) {
  OpenScript();
  const std::string menu =
      "\x1B[2J\x1B[13;10H" + ToBig5(u"●  (A)nnounce    【 精華公佈欄 】") + "\x1B[13;11H";
  script->Deliver(menu);
  ASSERT_TRUE(Reads(u"精華公佈欄"_qs));
  TypeText("a");
  ASSERT_TRUE(Until([&] { return script->Written() == "a"; }));
  ahead += 2 * SessionDriver::kIdleMs;
  doc->GetSettings().Set(&Settings::keepAwake, true);
  ASSERT_TRUE(Until([&] { return script->Written().starts_with("a\x0C"); }));
  ahead = 0;
  EXPECT_NE(Line().Session().idleMark, 0) << "that was nobody";
  script->Deliver("\x1B[2J\x1B[24;1H" + ToBig5(u" 編輯文章"));
  ASSERT_TRUE(Until([&] { return View().Screen().pageFlags & PF_EDITOR; }));
  const std::string before = script->Written();
  ahead = 2 * SessionDriver::kIdleMs;
  int ticks = 0;
  QTimer tick;
  QObject::connect(&tick, &QTimer::timeout, [&] { ++ticks; });
  tick.start(250);
  ASSERT_TRUE(Until([&] { return ticks > 2; }));
  EXPECT_EQ(script->Written(), before);
}

}  // namespace
}  // namespace quillet
