// The question before a login is given up, in a window that is logged in at the demo BBS.
#include <QMessageBox>
#include <QRegularExpression>

#include "tests/app/demo_article_fixture.h"
#include "tests/app/dialogs/dialog_answers.h"
#include "tests/support/loopback_server.h"

namespace quillet {
namespace {

using Answer = std::function<void(QDialog&)>;

class LeaveTest : public DemoArticleTest {
 protected:
  static Answer Click(const char* name) {
    return [name](QDialog& dialog) { Find<QPushButton>(dialog, name).click(); };
  }
  void Disconnect(const std::vector<Answer>& answers) {
    AnswerDialogs([this] { frame->Disconnect(); }, answers);
  }
  LeaveQuestion::Parts Parts() {
    return {doc->GetConnection(), doc->GetAutomations(), doc->GetSettings(), *frame};
  }
};

TEST(LeavePlanTest, WhatWouldBeLostIsAskedAboutWhateverTheUserChose) {
  using enum LeavePlan;
  for (const LeaveMode mode : {LeaveMode::kAsk, LeaveMode::kLogOut, LeaveMode::kDirectly}) {
    EXPECT_EQ(PlanLeaving(LeaveFor::kDisconnecting, {.inEditor = true}, mode), kAsk);
    EXPECT_EQ(PlanLeaving(LeaveFor::kClosing, {.hasDraft = true}, mode), kAsk);
  }
  EXPECT_EQ(PlanLeaving(LeaveFor::kOtherSite, {.hasDraft = true}, LeaveMode::kDirectly), kGo);
  EXPECT_EQ(PlanLeaving(LeaveFor::kClosing, {}, LeaveMode::kLogOut), kLogOutFirst);
  EXPECT_EQ(PlanLeaving(LeaveFor::kClosing, {}, LeaveMode::kAsk), kAsk);
}

TEST_F(LeaveTest, ClosingAsksAndLogsOutFromWithinAnArticle) {
  Open(longest);
  AnswerDialogs([this] { frame->close(); }, {Click("stay")});
  EXPECT_TRUE(frame->isVisible());
  EXPECT_TRUE(doc->GetConnection().IsConnected());
  AnswerDialogs([this] { frame->close(); }, {Click("logOut")});
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kLogOut);
  ASSERT_TRUE(Until([&] { return !frame->isVisible(); }));
  EXPECT_FALSE(doc->GetConnection().IsConnected());
  QCoreApplication::processEvents();
  EXPECT_NE(ScreenAsUtf8().find("下次再見"), std::string::npos) << ScreenAsUtf8();
}

TEST_F(LeaveTest, AnotherSiteTheDemoAndALoginAskOnceAndNoMoreIfSoWished) {
  int demos = 0;
  QObject::connect(frame.get(), &CMainFrame::DemoRequested, [&] { ++demos; });
  AnswerDialogs([this] { frame->OpenDemo(); }, {Click("stay")});
  AnswerDialogs([this] { frame->AskAddress(); }, {Accept, Click("stay")});
  AnswerDialogs(
      [this] {
        View().AskLogin();
        View().Login().Form()->findChild<QPushButton*>("connectOnly")->click();
        for (int i = 0; i < 3; ++i)
          QCoreApplication::processEvents();
      },
      {Click("stay")});
  Escape();
  EXPECT_TRUE(doc->GetConnection().IsConnected());
  EXPECT_EQ(demos, 0);
  AnswerDialogs([this] { frame->OpenDemo(); }, {[](QDialog& dialog) {
                  dynamic_cast<QMessageBox&>(dialog).checkBox()->setChecked(true);
                  Click("leave")(dialog);
                }});
  EXPECT_EQ(demos, 1);
  EXPECT_EQ(Fields().leaveMode, LeaveMode::kDirectly);
  Disconnect({});
  EXPECT_FALSE(doc->GetConnection().IsConnected());
}

TEST_F(LeaveTest, ATextThatWouldBeLostIsAskedAboutWithoutALoginToo) {
  doc->GetConnection().Disconnect();
  LeaveQuestion question(Parts(), [] { return LeaveFacts{.hasDraft = true}; });
  EXPECT_TRUE(question.IsFree(LeaveFor::kOtherSite));
  bool left = false;
  const auto close = [&] { question.Before(LeaveFor::kClosing, [&] { left = true; }); };
  AnswerDialogs(close, {Click("stay")});
  EXPECT_FALSE(left);
  AnswerDialogs(close, {Click("leave")});
  EXPECT_TRUE(left && question.IsFree(LeaveFor::kClosing));
}

TEST_F(LeaveTest, InTheEditorThereIsNoLogOutAndNoWayToBeAskedNoMore) {
  doc->GetSettings().Set(&Settings::leaveMode, LeaveMode::kDirectly);
  Open(longest);
  Press(Qt::Key_Left);
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_ARTICLE_LIST) != 0; }));
  Press(Qt::Key_P, "\x10", Qt::ControlModifier);
  for (int key = 0; key < 5 && (View().Screen().pageFlags & PF_EDITOR) == 0; ++key) {
    const unsigned before = View().ScreenCount();
    TypeText("x");
    Enter();
    Until([&] { return View().ScreenCount() > before; });
  }
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_EDITOR) != 0; })) << ScreenAsUtf8();
  Disconnect({[](QDialog& dialog) {
    EXPECT_EQ(dynamic_cast<QMessageBox&>(dialog).checkBox(), nullptr);
    EXPECT_EQ(dialog.findChild<QPushButton*>("logOut"), nullptr);
    Click("leave")(dialog);
  }});
  EXPECT_FALSE(doc->GetConnection().IsConnected());
}

TEST_F(LeaveTest, ConnectingAnewAsksAndGoesOnAfterTheLogOut) {
  const unsigned first = doc->GetConnection().Session().connectionNumber;
  AnswerDialogs([this] { frame->Reconnect(); }, {Click("stay")});
  EXPECT_EQ(doc->GetConnection().Session().connectionNumber, first);
  AnswerDialogs([this] { frame->Reconnect(); }, {Click("logOut")});
  EXPECT_TRUE(Until([&] {
    return doc->GetConnection().Session().connectionNumber != first && doc->GetConnection().IsConnected();
  }));
}

TEST(LeaveMessagesTest, InDisguiseTheyNameNeitherTheProgramNorTheSite) {
  for (const LeaveFor purpose :
       {LeaveFor::kClosing, LeaveFor::kDisconnecting, LeaveFor::kReconnecting, LeaveFor::kOtherSite}) {
    const LeaveMessages words = DescribeLeaving(purpose, {.inEditor = true, .hasDraft = true},
                                                {.site = "Kagami", .id = "reader"}, true);
    const QString all = words.title + words.question + words.reason + words.logOut + words.leave;
    EXPECT_FALSE(all.contains(QRegularExpression("Quillet|Kagami|reader|站台"))) << all.toStdString();
    EXPECT_EQ(words.title, u"記事本"_qs);
  }
}

TEST_F(LeaveTest, ASiteThatDoesNotAnswerIsLeftAllTheSame) {
  LoopbackServer server([](Socket& client, const StopSignal& stop) {
    SendText(client, "\x1b[21;1H" + ToBig5(u"請輸入代號，或以 guest 參觀，或以 new 註冊: "), stop);
    std::string typed;
    constexpr std::size_t kOpeningKeys = 40;
    ReceiveText(client, typed, kOpeningKeys + 6, stop);
    SendText(client, "\x1b[22;1H" + ToBig5(u"請輸入您的密碼: "), stop);
    ReceiveText(client, typed, kOpeningKeys + 13, stop);
    SendText(client,
             "\x1b[2J\x1b[1;1H" + ToBig5(u"【主功能表】") + "\x1b[13;25H" + ToBig5(u"●") + "\x1b[13;26H",
             stop);
    stop.WaitFor(kPatienceMs);
  });
  doc->GetConnection().Open({.address = QString::fromStdString(server.SiteAddress()), .name = {}},
                            MakeLoginOrder({.account = u"alice", .password = u"wonder"}));
  ASSERT_TRUE(Until([&] { return Seen().loginId == u"alice"; }));
  doc->GetSettings().Set(&Settings::leaveMode, LeaveMode::kLogOut);
  LeaveQuestion question(
      Parts(), [] { return LeaveFacts{}; }, std::chrono::milliseconds(50));
  bool left = false;
  question.Before(LeaveFor::kDisconnecting, [&] { left = true; });
  EXPECT_FALSE(left);
  EXPECT_TRUE(Until([&] { return left; }));
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kLogOut) << "it was still waiting";
  TypeText("x");
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kNone) << "the user stops it";
}

}  // namespace
}  // namespace quillet
