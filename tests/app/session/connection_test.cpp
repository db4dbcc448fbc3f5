#include "app/session/connection.h"

#include "tests/app/document_fixture.h"

namespace quillet {
namespace {

class ConnectionTest : public DocumentTest {
 protected:
  void SetUp() override {
    DocumentTest::SetUp();
    QObject::connect(&Line(), &Connection::ConnectionBegins, [this] { ++begun; });
    QObject::connect(&doc->GetAutomations(), &Automations::LoginEnded,
                     [this](const LoginEnd& end) { logins.push_back(end.how); });
  }
  Connection& Line() { return doc->GetConnection(); }
  static LoginOrder Login() { return MakeLoginOrder({.account = u"alice", .password = u"wonder"}); }
  bool HangsUp() {
    script->End(EndReason::kClosedByPeer);
    return Until([&] { return Line().IsClosed(); });
  }

  int begun = 0;
  std::vector<LoginEnd::How> logins;
};

TEST_F(ConnectionTest, AnotherSiteDuringAnAttemptIsWaitedForByNobody) {
  script->NeverConnect();
  BeginScript(Login());
  Line().Open({.address = "gopher://one", .name = {}}, Login());
  Line().Open({.address = "gopher://two", .name = {}});
  EXPECT_EQ(Line().CurrentSite().address, "script") << "until that attempt has ended";
  ASSERT_TRUE(Settles());
  EXPECT_EQ(Line().CurrentSite().address, "gopher://two");
  EXPECT_EQ(Line().Facts().end.reason, EndReason::kUnknownScheme);
  EXPECT_EQ(begun, 2);
  EXPECT_EQ(logins, std::vector(2, LoginEnd::How::kTakenOver)) << "each is told of";
}

TEST_F(ConnectionTest, ALoginEndsWithItsConnectionOrWithTheNext) {
  BeginScript(Login());
  ASSERT_TRUE(Settles());
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kLogin);
  BeginScript(Login());
  EXPECT_EQ(logins, std::vector{LoginEnd::How::kTakenOver});
  ASSERT_TRUE(Settles() && HangsUp());
  EXPECT_TRUE(Until([&] { return logins.size() == 2U; }));
  EXPECT_EQ(logins.back(), LoginEnd::How::kNotConnected);
}

TEST_F(ConnectionTest, WhoGivesUpIsNotConnectedThoughTheSiteHasJustAnswered) {
  BeginScript(Login());
  while (Line().Session().state == SessionState::kConnecting)
    std::this_thread::yield();
  EXPECT_FALSE(Line().IsConnected());
  Line().Disconnect();
  ASSERT_TRUE(Settles());
  EXPECT_TRUE(Line().IsClosed());
  EXPECT_EQ(logins, std::vector{LoginEnd::How::kNotConnected});
}

TEST_F(ConnectionTest, NothingOfAConnectionIsTheNextOnes) {
  OpenScript();
  Line().OnScreen(ScreenReason::kUpdated, {.article = {.board = u"Cats"}, .articleOpen = true});
  Line().NoteLogin(u"alice");
  Line().NoteLeaving();
  ahead = 60'000;
  doc->Driver().NoteTyped(Line().Session().receivedCount);
  ahead += AnswerWait::kStalledAfter;
  EXPECT_EQ(doc->Driver().Answer(), AnswerWait::State::kStalled);
  ASSERT_TRUE(HangsUp());
  EXPECT_EQ(Line().Facts().end.reason, EndReason::kClosedByUser) << "he was on his way out";
  script = std::make_shared<Script>();
  Line().Reconnect(nullptr);
  EXPECT_TRUE(Seen().article == ArticleInfo() && !Seen().articleOpen && Seen().loginId.empty());
  EXPECT_EQ(doc->Driver().Answer(), AnswerWait::State::kNone);
  ASSERT_TRUE(Settles() && HangsUp());
  EXPECT_EQ(Line().Facts().end.reason, EndReason::kClosedByPeer);
}

}  // namespace
}  // namespace quillet
