#include "bbs/automation/auto_login.h"

#include <atomic>
#include <mutex>

#include "tests/demo/demo_fixture.h"
#include "tests/demo/live_session.h"
#include "tests/support/login_pages.h"
#include "tests/support/loopback_server.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

class DemoAutoLoginTest : public DemoTest {
 protected:
  bool ShowsMainMenu(LiveSession& live) {
    return WaitUntil([&] {
      const ScreenSnapshot& screen = live.Screen();
      return RowStartsWith(screen, 0, 0, u"【主功能表】") && live.classifier.Pages().IsListCursor(screen);
    });
  }
};

TEST_F(DemoAutoLoginTest, EveryArrivalEndsOnTheMainMenu) {
  const LoginRequest requests[] = {
      {u"alice", u"wonder"},   {u"mail", u"m"},          {u"notice", u"n"},
      {u"bottom", u"b"},       {u"top", u"t"},           {u"found", u"f"},
      {u"twin", u"double"},    {u"parade", u"p"},        {u"twin", u"double", true},
      {u"parade", u"p", true}, {u"guest", u"not needed"}};
  for (const auto writes :
       {DemoOptions::Writes::kWhole, DemoOptions::Writes::kAsBbs, DemoOptions::Writes::kEveryByte}) {
    Start(writes);
    for (const LoginRequest& request : requests) {
      SCOPED_TRACE(testing::Message() << std::string(request.account.begin(), request.account.end())
                                      << " writes " << static_cast<int>(writes));
      LiveSession live;
      ASSERT_TRUE(live.Connect(server->Address()));
      EXPECT_EQ(live.Run([&](ScreenWaits& waits) { return AutoLogin(waits, request); }),
                LoginResult::kFinished);
      EXPECT_TRUE(ShowsMainMenu(live)) << live.Dump();
    }
  }
}

// A BBS that plays a dialogue up to a turn, waits for what is to be typed there, and then falls silent or
// goes.
class BrokenBbs {
 public:
  enum class End { kSilence, kClose };
  BrokenBbs(std::size_t turns, End end) : turns_(turns), end_(end) {}

  std::string Address() const { return server_.SiteAddress(); }
  bool PlayedAll() const { return played_; }
  bool ClientIsGone() const { return clientGone_; }
  std::string Typed() const {
    const std::lock_guard guard(lock_);
    return typed_;
  }
  // What has to be typed before the BBS breaks.
  std::string Expected() const {
    std::string expected;
    for (std::size_t i = 0; i <= turns_; ++i)
      expected += script_[i].typed;
    return expected;
  }

 private:
  void Play(Socket& client, const StopSignal& stop) {
    std::string opening;
    ReceiveText(client, opening, 10 * std::string_view("\x1b[3~").size(), stop);
    for (std::size_t i = 0; i <= turns_; ++i) {
      Take(client, script_[i].typed.size(), stop);
      if (i < turns_) SendText(client, script_[i].page, stop);
    }
    played_ = true;
    if (end_ == End::kSilence) Take(client, 1000, stop);  // until the client goes
    client.Close();
    clientGone_ = true;
  }
  void Take(Socket& client, std::size_t count, const StopSignal& stop) {
    std::string text;
    ReceiveText(client, text, count, stop);
    const std::lock_guard guard(lock_);
    typed_ += text;
  }

  const std::size_t turns_;
  const End end_;
  const std::vector<Turn> script_ = login_pages::Everything();
  mutable std::mutex lock_;
  std::string typed_;  // guarded by lock_
  std::atomic<bool> played_{false};
  std::atomic<bool> clientGone_{false};
  LoopbackServer server_{[this](Socket& client, const StopSignal& stop) { Play(client, stop); }};
};

class AutoLoginEndTest : public WithTables {
 protected:
  void StartLogin(LiveSession& live) {
    live.Start([&](ScreenWaits& waits) { result_ = AutoLogin(waits, {u"me", u"secret", true}); });
  }

  std::atomic<LoginResult> result_{LoginResult::kFinished};
};

TEST_F(AutoLoginEndTest, WhenTheServerGoesAtAnyTurnTheRunEndsAndTypesNothingMore) {
  for (std::size_t turn = 0; turn < login_pages::Everything().size(); ++turn) {
    SCOPED_TRACE(turn);
    BrokenBbs bbs(turn, BrokenBbs::End::kClose);
    LiveSession live;
    ASSERT_TRUE(live.Connect(bbs.Address()));
    result_ = LoginResult::kFinished;
    StartLogin(live);
    ASSERT_TRUE(WaitUntil([&] { return live.ended.load(); })) << live.Dump();
    EXPECT_EQ(result_, LoginResult::kClosed);
    live.session.Disconnect();
    EXPECT_TRUE(WaitUntil([&] { return bbs.ClientIsGone(); }));
    EXPECT_EQ(bbs.Typed(), bbs.Expected());
  }
}

// The next connection is not the run's, whatever it shows.
TEST_F(AutoLoginEndTest, ARunNeverTypesIntoTheNextConnection) {
  BrokenBbs first(1, BrokenBbs::End::kSilence);
  BrokenBbs second(2, BrokenBbs::End::kSilence);
  LiveSession live;
  ASSERT_TRUE(live.Connect(first.Address()));
  StartLogin(live);
  ASSERT_TRUE(WaitUntil([&] { return first.PlayedAll(); }));
  ASSERT_TRUE(live.Connect(second.Address()));
  ASSERT_TRUE(WaitUntil([&] { return live.ended.load(); }));
  EXPECT_EQ(result_, LoginResult::kClosed);
  EXPECT_EQ(second.Typed(), "");
}

}  // namespace
}  // namespace quillet
