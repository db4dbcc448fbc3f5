#include "bbs/automation/auto_login.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "bbs/screen_classifier.h"
#include "tests/support/login_pages.h"
#include "tests/support/tables.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

using namespace login_pages;

class AutoLoginTest : public WithTables {
 protected:
  static constexpr int kThinking = 25;  // milliseconds, several looks of the login

  // What was typed is complete when this returns.
  LoginResult Play(const std::vector<Turn>& turns, const LoginRequest& request, bool enabled = true) {
    script_ = PlayTurns(turns, kThinking);
    session_.ConnectWith(std::make_unique<ScriptedTransport>(script_), {}, {.autoLogin = enabled});
    std::atomic<bool> ended{false};
    LoginResult result = LoginResult::kClosed;
    std::atomic<bool> cancelled{false};
    std::thread worker([&] {
      ScreenWaits waits(session_, classifier_.Pages(), cancelled);
      result = AutoLogin(waits, request);
      ended = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return ended.load(); })) << Typed();
    cancelled = true;
    worker.join();
    const std::size_t expected = TypedIn(turns).size();
    EXPECT_TRUE(WaitUntil([&] { return script_->Written().size() >= expected; })) << Typed();
    return result;
  }
  std::string Typed() const { return script_->Written(); }

  ScreenClassifier classifier_;
  TermSession session_{[this] {
    SessionOptions options;
    options.watcher = &classifier_;
    return options;
  }()};
  std::shared_ptr<TransportScript> script_;
};

const LoginRequest kMe = {u"me", u"secret"};
const std::string kToPassword = "me\rsecret\r";

std::vector<Turn> BehindPassword(std::vector<Turn> turns) {
  turns.insert(turns.begin(), {{"", Id()}, {"me\r", Password()}});
  turns[2].typed = "secret\r";
  return turns;
}

TEST_F(AutoLoginTest, OtherLoginsAreKeptUnlessToldOtherwise) {
  const std::string dismiss = std::string(kDismiss) + kDismiss;
  // Without the menu as the aim the answer is the last thing typed, and nothing is waited for.
  for (const bool kick : {false, true}) {
    EXPECT_EQ(Play(BehindPassword({{{}, OtherLogins()}}), {u"me", u"secret", kick, false}),
              LoginResult::kFinished);
    const std::string typed = kToPassword + (kick ? "\r" : "n\r") + dismiss;
    EXPECT_TRUE(WaitUntil([&] { return Typed() == typed; })) << Typed();
  }
}

// Neither the field of the prompt that was just answered nor one on a half drawn page is what comes next.
TEST_F(AutoLoginTest, TheWelcomeIsPassedOnceHoweverLateItIsSeen) {
  const std::vector<Turn> turns[] = {
      BehindPassword({{{}, Welcome()}, {kDismiss, MainMenu()}}),
      {{"", Id()}, {"me\r", Password() + FieldAt(21, 16)}, {"secret\r", Welcome()}, {kDismiss, MainMenu()}},
      BehindPassword({{{}, At(20, 0, u"x") + FieldAt(20, 1)}, {"", Welcome()}, {kDismiss, MainMenu()}}),
      {{"", Id()}, {"me\r", Welcome()}, {kDismiss, MainMenu()}},  // a guest's
  };
  for (const auto& each : turns) {
    EXPECT_EQ(Play(each, kMe), LoginResult::kFinished);
    EXPECT_EQ(Typed(), TypedIn(each));
  }
}

TEST_F(AutoLoginTest, ARefusalIsTheLastThingSeenOfAConnection) {
  const std::vector<Turn> turns[] = {
      {{"", Id()}, {"me\r", UnknownUser()}},
      BehindPassword({{{}, WrongPassword()}}),
      BehindPassword({{{}, AskedAgain()}}),
      BehindPassword({{{}, At(20, 0) + FieldAt(20, 40) + AskedAgain() + At(20, 40)}}),
  };
  for (const auto& each : turns) {
    EXPECT_EQ(Play(each, kMe), LoginResult::kRefused);
    EXPECT_EQ(Typed(), TypedIn(each));
    EXPECT_TRUE(WaitUntil([&] { return session_.state == SessionState::kClosed; }));
    EXPECT_EQ(session_.LastEnd().reason, EndReason::kClosedByUser);
  }
}

TEST_F(AutoLoginTest, NoPageIsAnsweredTwiceOrOutOfTurn) {
  const std::string dismiss = kDismiss;
  const std::vector<Turn> turns[] = {
      BehindPassword({{{}, Found()}, {"\r" + dismiss, TopQuestion()}, {"", MainMenu()}}),
      BehindPassword({{{}, MailMenu()}, {"q", BottomQuestion()}, {"", MailMenu()}, {"", MainMenu()}}),
      BehindPassword({{{}, TopQuestion()}, {"q\r" + dismiss, OtherLogins()}, {"", MainMenu()}}),
      // Words of a refusal on a later page are that page's own.
      BehindPassword({{{}, MailMenu()}, {"q", WrongPassword()}, {"", MainMenu()}}),
      // Whatever follows the notice, it is the last page that is looked at.
      BehindPassword({{{}, Reader()}, {"qqqqqqqqqq", Reader() + At(0, 0, u"【主")}}),
  };
  for (const auto& each : turns) {
    EXPECT_EQ(Play(each, kMe), LoginResult::kFinished);
    EXPECT_EQ(Typed(), TypedIn(each));
  }
}

TEST_F(AutoLoginTest, NothingIsTypedWithoutLeaveOrNeed) {
  const std::vector<Turn> turns = {{"", Id()}};
  EXPECT_EQ(Play(turns, kMe, false), LoginResult::kFinished);
  EXPECT_EQ(Typed(), "");
  EXPECT_EQ(Play(turns, {{}, u"secret"}), LoginResult::kFinished);
  EXPECT_EQ(Typed(), "");
  EXPECT_EQ(Play({{"", Id()}, {"me\r", Password()}}, {u"me", {}}), LoginResult::kFinished);
  EXPECT_EQ(Typed(), "me\r");

  session_.Disconnect();
  const std::atomic<bool> cancelled{false};
  ScreenWaits closed(session_, classifier_.Pages(), cancelled);
  EXPECT_EQ(AutoLogin(closed, kMe), LoginResult::kClosed);
}

}  // namespace
}  // namespace quillet
