#include "app/session/session_driver.h"

#include <gtest/gtest.h>

#include "core/key_sequence.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

class SessionDriverTest : public WithTables {
 protected:
  void Connect() {
    session.ConnectWith(std::make_unique<ScriptedTransport>(script));
    ASSERT_EQ(session.state, SessionState::kConnected);
  }
  bool Wrote(const std::string& text) {
    return HandleEventsUntil([&] { return script->Written() == text; }, kPatienceMs);
  }

  std::shared_ptr<Script> script = std::make_shared<Script>();
  TermSession session{SessionOptions{}};
  bool flash = true;
  SignalSettings settings{.flash = [this] { return flash; }, .playSound = true};
  RecordingSignaller signaller;
  std::int64_t now = 1000000;
  SessionDriver driver{session, settings, signaller, [this] { return now; }};
};

TEST_F(SessionDriverTest, ABellIsTheUsersOwnEchoForThreeSecondsAfterAKey) {
  Connect();
  session.SendKey(kKeyDown);
  session.lastSendTick = now;
  now += 1000;
  driver.OnBell(false);
  EXPECT_EQ(signaller.flashes + signaller.beeps, 0);
  now += 2000;
  driver.OnBell(true);
  EXPECT_EQ(signaller.flashes + signaller.beeps, 0) << "an automation is at work";
  driver.OnBell(false);
  EXPECT_EQ(signaller.flashes, 1) << "the key log is not yet emptied, but old";
  EXPECT_EQ(signaller.beeps, 1);
}

TEST_F(SessionDriverTest, SignalsFollowTheSettingsAtOnce) {
  flash = false;
  driver.OnBell(false);
  EXPECT_EQ(signaller.flashes, 0);
  EXPECT_EQ(signaller.beeps, 1);
  driver.Signal(SignalSound::kUpdated);
  EXPECT_EQ(signaller.sounds, 1);
  flash = true;
  settings.playSound = false;
  driver.Signal(SignalSound::kUpdated);
  EXPECT_EQ(signaller.flashes, 1);
  EXPECT_EQ(signaller.beeps + signaller.sounds, 2);
}

TEST_F(SessionDriverTest, AttentionSignalsOnItsRisingEdgeAndSetsTheStatus) {
  driver.UpdateStatus();
  EXPECT_EQ(driver.Status(), ConnectionStatus::kNotConnected);
  Connect();
  driver.UpdateStatus();
  EXPECT_EQ(driver.Status(), ConnectionStatus::kQuiet);
  driver.SetAttention(true);
  driver.SetAttention(true);
  EXPECT_EQ(signaller.flashes, 1);
  EXPECT_EQ(driver.Status(), ConnectionStatus::kSomethingNew);
  driver.SetListHit(true);
  driver.SetAttention(false);
  EXPECT_EQ(driver.Status(), ConnectionStatus::kSomethingNew) << "the list's hit stands";
  EXPECT_EQ(signaller.flashes, 1);
  session.Disconnect();
  driver.UpdateStatus();
  EXPECT_EQ(driver.Status(), ConnectionStatus::kNotConnected);
}

TEST_F(SessionDriverTest, PendingTextWaitsForAnIdleSessionsPause) {
  Connect();
  session.idleMark = 1;
  session.lastSendTick = now;
  driver.pendingText = u"中文";
  now += SessionDriver::kTypingMs;
  driver.Tick();
  EXPECT_EQ(driver.pendingText, u"中文");
  now += 1;
  driver.Tick();
  EXPECT_EQ(driver.pendingText, u"");
  ASSERT_TRUE(Wrote(ToBig5(u"中文")));
  ASSERT_EQ(session.idleMark, 0);
  driver.pendingText = u"x";
  session.lastSendTick = now;
  driver.Tick();
  EXPECT_TRUE(Wrote(ToBig5(u"中文x"))) << "at once when nobody idles";
}

TEST_F(SessionDriverTest, AnIdleSessionIsKeptAwakeByAKeyThatIsNobodys) {
  Connect();
  session.lastSendTick = now;
  now += SessionDriver::kIdleMs - 1;
  driver.KeepAwake("k");
  ++now;
  driver.KeepAwake("");
  session.keyLog.emplace_back("typed");
  driver.KeepAwake("k");
  session.keyLog.clear();
  EXPECT_EQ(session.sentCount, 0U);
  driver.KeepAwake("k");
  ASSERT_TRUE(Wrote("k"));
  session.lastSendTick = now;
  driver.pendingText = u"x";
  driver.Tick();
  EXPECT_EQ(driver.pendingText, u"x") << "the site's answer comes first";
  session.Disconnect();
  driver.pendingText.clear();
  now += SessionDriver::kIdleMs;
  driver.KeepAwake("k");
  EXPECT_EQ(session.sentCount, 1U);
}

TEST_F(SessionDriverTest, TheKeyLogIsEmptiedAfterMoreThanThreeSeconds) {
  Connect();
  session.SendKey(kKeyDown);
  session.lastSendTick = now;
  now += SessionDriver::kTypingMs;
  driver.Tick();
  EXPECT_EQ(session.keyLog.size(), 1u);
  now += 1;
  driver.Tick();
  EXPECT_EQ(session.keyLog.size(), 0u);
}

}  // namespace
}  // namespace quillet
