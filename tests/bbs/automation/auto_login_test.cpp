#include "bbs/automation/auto_login.h"

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

constexpr const char* kDismiss = "\n\x1b[3~";
constexpr int kThinking = 25;  // milliseconds, several looks of the login
const LoginRequest kMe = {u"me", u"secret"};

std::string Id() {
  return kClearScreen + At(20, 0, u"請輸入代號，或以 guest 參觀，或以 new 註冊: ");
}
std::string Password() {
  return At(21, 0, u"請輸入您的密碼: ");
}
std::string WrongPassword() {
  return At(21, 0, u"密碼不對喔！請檢查大小寫有無輸入錯誤。");
}
std::string AskedAgain() {
  return At(21, 0, u"請重新輸入");
}
std::string OtherLogins() {
  return At(22, 0, u"您想刪除其他重複登入的連線嗎？[Y/n] ") + FieldAt(22, 37);
}
std::string Welcome() {
  return kClearScreen + At(0, 0, u" 奧拉拉文藝坊 ") + Banner();
}
std::string BottomQuestion() {
  return kClearScreen + At(23, 0, u"您有一篇文章還沒寫完，要繼續嗎？[y/N] ");
}
std::string TopQuestion() {
  return kClearScreen + At(1, 0, u"您要刪除登入失敗的記錄嗎？[y/N] ");
}
std::string Found() {
  return kClearScreen + At(23, 0, u"找到 3 篇提到您的文章 ");
}
std::string MailMenu() {
  return Menu(u"【郵件選單】");
}

class AutoLoginTest : public AutomationTest {
 protected:
  LoginResult Play(const std::vector<Turn>& turns, const LoginRequest& request = kMe) {
    return Follow(
        turns, [&](ScreenWaits& waits) { return AutoLogin(waits, request); }, kThinking);
  }
  // The first page is what the password brings.
  static std::vector<Turn> BehindPassword(std::vector<Turn> turns) {
    turns.insert(turns.begin(), {{"", Id()}, {"me\r", Password()}});
    turns[2].typed = "secret\r";
    return turns;
  }

  const std::string dismiss_ = kDismiss;
  // Everything that can happen, other logins ended: behind the last turn the login is done.
  const std::vector<Turn> everything_ = BehindPassword({{{}, OtherLogins()},
                                                        {"\r" + dismiss_ + dismiss_, BottomQuestion()},
                                                        {"n\r" + dismiss_, TopQuestion()},
                                                        {"q\r" + dismiss_, Found()},
                                                        {"\r" + dismiss_, MailMenu()},
                                                        {"q", Reader()},
                                                        {"qqqqqqqqqq", MainMenu()}});
};

TEST_F(AutoLoginTest, EveryPageIsAnsweredAndWhenTheServerGoesNothingMoreIsTyped) {
  const LoginRequest request{u"me", u"secret", true};
  EXPECT_EQ(Play(everything_, request), LoginResult::kFinished);
  for (std::size_t turn = 0; turn < everything_.size(); ++turn) {
    std::vector<Turn> some(everything_.begin(), everything_.begin() + static_cast<std::ptrdiff_t>(turn) + 1);
    some.back().page.clear();
    EXPECT_EQ(FollowUntil(
                  some, [&](ScreenWaits& waits) { return AutoLogin(waits, request); },
                  [this] { session_.RequestDisconnect(session_.connectionNumber); }),
              LoginResult::kClosed)
        << turn;
  }
}

// Without the menu as the aim the answer is the last thing typed, and nothing is waited for.
TEST_F(AutoLoginTest, OtherLoginsAreKeptUnlessToldOtherwise) {
  for (const bool kick : {false, true})
    EXPECT_EQ(Play(BehindPassword({{{}, OtherLogins()}, {(kick ? "\r" : "n\r") + dismiss_ + dismiss_, ""}}),
                   {u"me", u"secret", kick, false}),
              LoginResult::kFinished);
}

// Neither the field of the prompt that was just answered nor one on a half drawn page is what comes next.
TEST_F(AutoLoginTest, TheWelcomeIsPassedOnceHoweverLateItIsSeen) {
  const Turn passed{kDismiss, MainMenu()};
  const std::vector<Turn> turns[] = {
      BehindPassword({{{}, Welcome()}, passed}),
      {{"", Id()}, {"me\r", Password() + FieldAt(21, 16)}, {"secret\r", Welcome()}, passed},
      BehindPassword({{{}, At(20, 0, u"x") + FieldAt(20, 1)}, {"", Welcome()}, passed}),
      {{"", Id()}, {"me\r", Welcome()}, passed},  // a guest's
  };
  for (const auto& each : turns)
    EXPECT_EQ(Play(each), LoginResult::kFinished);
}

TEST_F(AutoLoginTest, ARefusalIsTheLastThingSeenOfAConnection) {
  const std::vector<Turn> turns[] = {
      {{"", Id()}, {"me\r", At(21, 0, u"這裡沒有這個代號，請再試一次。")}},
      BehindPassword({{{}, WrongPassword()}}),
      BehindPassword({{{}, AskedAgain()}}),
      BehindPassword({{{}, At(20, 0) + FieldAt(20, 40) + AskedAgain() + At(20, 40)}}),
  };
  for (const auto& each : turns) {
    EXPECT_EQ(Play(each), LoginResult::kRefused);
    EXPECT_TRUE(WaitUntil([&] { return session_.state == SessionState::kClosed; }));
    EXPECT_EQ(session_.LastEnd().reason, EndReason::kClosedByUser);
  }
}

TEST_F(AutoLoginTest, NoPageIsAnsweredTwiceOrOutOfTurn) {
  const std::vector<Turn> turns[] = {
      BehindPassword({{{}, Found()}, {"\r" + dismiss_, TopQuestion()}, {"", MainMenu()}}),
      BehindPassword({{{}, MailMenu()}, {"q", BottomQuestion()}, {"", MailMenu()}, {"", MainMenu()}}),
      BehindPassword({{{}, TopQuestion()}, {"q\r" + dismiss_, OtherLogins()}, {"", MainMenu()}}),
      // Words of a refusal on a later page are that page's own.
      BehindPassword({{{}, MailMenu()}, {"q", WrongPassword()}, {"", MainMenu()}}),
      // Whatever follows the notice, it is the last page that is looked at.
      BehindPassword({{{}, Reader()}, {"qqqqqqqqqq", Reader() + At(0, 0, u"【主")}}),
  };
  for (const auto& each : turns)
    EXPECT_EQ(Play(each), LoginResult::kFinished);
}

TEST_F(AutoLoginTest, NothingIsTypedWithoutLeaveOrNeed) {
  EXPECT_EQ(Play({{"", Id()}}, {{}, u"secret"}), LoginResult::kFinished);
  EXPECT_EQ(Play({{"", Id()}, {"me\r", Password()}}, {u"me", {}}), LoginResult::kFinished);
  EXPECT_EQ(Follow({{"", Id()}},
                   [](ScreenWaits& waits) {
                     waits.Session().autoLogin = false;
                     return AutoLogin(waits, kMe);
                   }),
            LoginResult::kFinished);
  session_.Disconnect();
  EXPECT_EQ(Await([](ScreenWaits& waits) { return AutoLogin(waits, kMe); }), LoginResult::kClosed);
}

}  // namespace
}  // namespace quillet
