#include "bbs/automation/auto_login.h"

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

constexpr const char* kDismiss = "\n\x1b[3~";
constexpr int kThinking = 25;  // milliseconds, several looks of the login
const LoginRequest kMe = {u"me", u"secret"};

class AutoLoginTest : public AutomationTest {
 protected:
  LoginResult Play(const Turns& turns, const LoginRequest& request = kMe) {
    return Follow(
        turns, [&](ScreenWaits& waits) { return AutoLogin(waits, request); }, kThinking);
  }
  // The first page is what the password brings.
  Turns BehindPassword(Turns turns) {
    turns[0].typed = "secret\r";
    return Turns{id_, {"me\r", password_}} + turns;
  }

  static std::string QuestionIn(int row) {
    return kClearScreen + At(row, 0, u"您要刪除失敗的記錄嗎？[y/N] ");
  }
  const std::string dismiss_ = kDismiss;
  const std::string password_ = At(21, 0, u"請輸入您的密碼: ");
  const std::string wrongPassword_ = At(21, 0, u"密碼不對喔！請檢查大小寫有無輸入錯誤。");
  const std::string askedAgain_ = At(21, 0, u"請重新輸入");
  const std::string otherLogins_ = At(22, 0, u"您想刪除其他重複登入的連線嗎？[Y/n] ") + FieldAt(22, 37);
  const std::string welcome_ = kClearScreen + At(0, 0, u" 奧拉拉文藝坊 ") + Banner();
  const std::string found_ = kClearScreen + At(23, 0, u"找到 3 篇提到您的文章 ");
  const std::string mailMenu_ = Menu(u"【郵件選單】");
  const Turn id_{"", kClearScreen + At(20, 0, u"請輸入代號，或以 guest 參觀，或以 new 註冊: ")};
  // Everything that can happen, other logins ended: behind the last turn the login is done.
  const Turns everything_ = BehindPassword({{{}, otherLogins_},
                                            {"\r" + dismiss_ + dismiss_, QuestionIn(23)},
                                            {"n\r" + dismiss_, QuestionIn(1)},
                                            {"q\r" + dismiss_, found_},
                                            {"\r" + dismiss_, mailMenu_},
                                            {"q", Reader()},
                                            {"qqqqqqqqqq", MainMenu()}});
};

TEST_F(AutoLoginTest, EveryPageIsAnsweredAndWhenTheServerGoesNothingMoreIsTyped) {
  const auto logIn = [](ScreenWaits& waits) { return AutoLogin(waits, {u"me", u"secret", true}); };
  EXPECT_EQ(Follow(everything_, logIn, kThinking), LoginResult::kFinished);
  for (std::size_t turn = 1; turn <= everything_.size(); ++turn)
    EXPECT_EQ(FollowUntil(Begun(everything_, turn), logIn, [this] { End(Ending::kDisconnected); }),
              LoginResult::kClosed)
        << turn;
}

// Without the menu as the aim the answer is the last thing typed, and nothing is waited for.
TEST_F(AutoLoginTest, OtherLoginsAreKeptUnlessToldOtherwise) {
  for (const bool kick : {false, true})
    EXPECT_EQ(Play(BehindPassword({{{}, otherLogins_}, {(kick ? "\r" : "n\r") + dismiss_ + dismiss_, ""}}),
                   {u"me", u"secret", kick, false}),
              LoginResult::kFinished);
}

// Neither the field of the prompt that was just answered nor one on a half drawn page is what comes next.
TEST_F(AutoLoginTest, TheWelcomeIsPassedOnceHoweverLateItIsSeen) {
  const Turn passed{kDismiss, MainMenu()};
  const Turns turns[] = {
      BehindPassword({{{}, welcome_}, passed}),
      {id_, {"me\r", password_ + FieldAt(21, 16)}, {"secret\r", welcome_}, passed},
      BehindPassword({{{}, At(20, 0, u"x") + FieldAt(20, 1)}, {"", welcome_}, passed}),
      {id_, {"me\r", welcome_}, passed},  // a guest's
  };
  for (const auto& each : turns)
    EXPECT_EQ(Play(each), LoginResult::kFinished);
}

TEST_F(AutoLoginTest, ARefusalIsTheLastThingSeenOfAConnection) {
  const Turns turns[] = {
      {id_, {"me\r", At(21, 0, u"這裡沒有這個代號，請再試一次。")}},
      BehindPassword({{{}, wrongPassword_}}),
      BehindPassword({{{}, askedAgain_}}),
      BehindPassword({{{}, At(20, 0) + FieldAt(20, 40) + askedAgain_ + At(20, 40)}}),
  };
  for (const auto& each : turns) {
    EXPECT_EQ(Play(each), LoginResult::kRefused);
    EXPECT_TRUE(WaitUntil([&] { return session_.state == SessionState::kClosed; }));
    EXPECT_EQ(session_.LastEnd().reason, EndReason::kClosedByUser);
  }
}

TEST_F(AutoLoginTest, NoPageIsAnsweredTwiceOrOutOfTurn) {
  const Turns turns[] = {
      BehindPassword({{{}, found_}, {"\r" + dismiss_, QuestionIn(1)}, {"", MainMenu()}}),
      BehindPassword({{{}, mailMenu_}, {"q", QuestionIn(23)}, {"", mailMenu_}, {"", MainMenu()}}),
      BehindPassword({{{}, QuestionIn(1)}, {"q\r" + dismiss_, otherLogins_}, {"", MainMenu()}}),
      // Words of a refusal on a later page are that page's own.
      BehindPassword({{{}, mailMenu_}, {"q", wrongPassword_}, {"", MainMenu()}}),
      // Whatever follows the notice, it is the last page that is looked at.
      BehindPassword({{{}, Reader()}, {"qqqqqqqqqq", Reader() + At(0, 0, u"【主功")}}),
  };
  for (const auto& each : turns) {
    const auto logIn = [](ScreenWaits& waits) {
      return AutoLogin(waits, kMe) == LoginResult::kFinished && RowStartsWith(waits.Seen(), 0, 2, u"主");
    };
    EXPECT_TRUE(Follow(each, logIn, kThinking)) << &each - turns;
  }
}

TEST_F(AutoLoginTest, NothingIsTypedWithoutLeaveOrNeed) {
  EXPECT_EQ(Play({id_}, {{}, u"secret"}), LoginResult::kFinished);
  EXPECT_EQ(Play({id_, {"me\r", password_}}, {u"me", {}}), LoginResult::kFinished);
  EXPECT_EQ(Follow({id_},
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
