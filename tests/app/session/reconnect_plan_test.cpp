#include "app/session/reconnect_plan.h"

#include <gtest/gtest.h>
#include <vector>

#include "app/session/kept_login.h"

namespace quillet {
namespace {

constexpr ConnectionEnd kLost{.reason = EndReason::kReadFailed, .wasMade = true};
constexpr ConnectionEnd kUnreachable{.reason = EndReason::kConnectFailed};

ConnectionEnd Ended(EndReason reason, bool wasMade = true) {
  return {.reason = reason, .wasMade = wasMade};
}

class ReconnectPlanTest : public testing::Test {
 protected:
  bool GoesOnAfter(const ConnectionEnd& end) {
    plan.OnEnded(end, now);
    return plan.Left(now).has_value();
  }
  // Waits the pause out.
  std::int64_t Pause() {
    const std::int64_t left = plan.Left(now).value_or(-1);
    now += left - 1;
    EXPECT_FALSE(plan.TakeDue(now));
    ++now;
    EXPECT_TRUE(plan.TakeDue(now));
    EXPECT_FALSE(plan.TakeDue(now)) << "once for each";
    return left;
  }

  ReconnectPlan plan;
  std::int64_t now = 5000;
};

TEST_F(ReconnectPlanTest, PausesGrowToAMinuteUntilAConnectionStands) {
  plan.OnConnected(now);
  std::vector<std::int64_t> pauses;
  for (int attempt = 0; attempt < 9; ++attempt) {
    // The site is away for a while, then takes connections and drops them at once.
    const bool drops = attempt == 0 || attempt > 5;
    if (drops) plan.OnConnected(now);
    if (drops) now += ReconnectPlan::kStandsMs - 1;
    ASSERT_TRUE(GoesOnAfter(drops ? kLost : kUnreachable));
    pauses.push_back(Pause());
  }
  EXPECT_EQ(pauses,
            (std::vector<std::int64_t>{1000, 2000, 5000, 10'000, 20'000, 40'000, 60'000, 60'000, 60'000}));
  plan.OnConnected(now);
  now += ReconnectPlan::kStandsMs;
  ASSERT_TRUE(GoesOnAfter(kLost));
  EXPECT_EQ(Pause(), 1000);
}

TEST_F(ReconnectPlanTest, OnlyWhatNobodyWishedIsMadeAnew) {
  for (const EndReason reason : {EndReason::kClosedByPeer, EndReason::kReadFailed}) {
    EXPECT_TRUE(GoesOnAfter(Ended(reason)));
    plan.Stop();
    EXPECT_FALSE(GoesOnAfter(Ended(reason, false))) << "it was never there";
    for (ConnectionEnd wished :
         {ConnectionEnd{.isWished = true}, ConnectionEnd{.farewell = Farewell::kLoggedOut},
          ConnectionEnd{.farewell = Farewell::kReplaced}, ConnectionEnd{.isLoginOpen = true}}) {
      wished.reason = reason;
      wished.wasMade = true;
      EXPECT_FALSE(GoesOnAfter(wished));
    }
  }
  for (const EndReason reason : {EndReason::kUnknownScheme, EndReason::kAddressTooLong,
                                 EndReason::kResolveFailed, EndReason::kConnectFailed, EndReason::kCancelled,
                                 EndReason::kClosedByUser, EndReason::kEndOfRecording})
    EXPECT_FALSE(GoesOnAfter(Ended(reason))) << static_cast<int>(reason);
}

TEST_F(ReconnectPlanTest, ASeriesOutlivesWhatFailsAndEndsWithAWish) {
  for (const ConnectionEnd& failed :
       {kUnreachable, ConnectionEnd{.reason = EndReason::kResolveFailed},
        ConnectionEnd{.reason = EndReason::kReadFailed},
        ConnectionEnd{.reason = EndReason::kClosedByPeer, .wasMade = true, .isLoginOpen = true}}) {
    ASSERT_TRUE(GoesOnAfter(kLost));
    plan.SkipPause();
    EXPECT_FALSE(plan.TakeDue(now + 100'000)) << "it has been taken by hand";
    EXPECT_TRUE(GoesOnAfter(failed));
  }
  EXPECT_FALSE(GoesOnAfter(Ended(EndReason::kCancelled, false)));
  EXPECT_FALSE(GoesOnAfter(kUnreachable)) << "that was the end of it";
  ASSERT_TRUE(GoesOnAfter(kLost));
  plan.Stop();
  EXPECT_FALSE(GoesOnAfter(kUnreachable));
}

TEST_F(ReconnectPlanTest, WhoMayHaveBeenThrownOutThrowsNobodyOut) {
  EXPECT_TRUE(GoesOnAfter(kLost) && plan.MayEndOtherLogins());
  EXPECT_TRUE(GoesOnAfter(Ended(EndReason::kClosedByPeer)) && !plan.MayEndOtherLogins());
  EXPECT_TRUE(GoesOnAfter(kUnreachable) && !plan.MayEndOtherLogins()) << "that tells nothing new";
  const LoginOrder login = MakeLoginOrder(
      {.account = u"alice", .password = u"wonder", .kickOthers = true, .continueToMenu = true});
  const LoginOrder gentle = WithoutEndingOthers(login);
  EXPECT_TRUE(!gentle->kickOthers && login->kickOthers);
  EXPECT_EQ(gentle->account, u"alice");
  EXPECT_EQ(gentle->password, u"wonder");
}

TEST(KeptLoginTest, IsForItsSiteAndUserAlone) {
  const LoginOrder login = MakeLoginOrder({.account = u"Alice", .password = u"wonder"});
  KeptLogin kept;
  const auto keeps = [&] { return kept.For(u"here") == login; };
  kept.Keep(login, u"here");
  EXPECT_TRUE(keeps());
  EXPECT_EQ(kept.For(u"there"), nullptr);
  kept.OnSite(u"here");
  kept.OnUser(u"alice");
  kept.OnUser(u"");
  EXPECT_TRUE(keeps());
  kept.OnUser(u"bob");
  EXPECT_FALSE(keeps());
  kept.Keep(login, u"here");
  kept.OnSite(u"there");
  EXPECT_FALSE(keeps());
  kept.Keep(login, u"");
  EXPECT_EQ(kept.For(u""), nullptr) << "that is no site";
}

}  // namespace
}  // namespace quillet
