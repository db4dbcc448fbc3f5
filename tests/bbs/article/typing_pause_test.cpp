// A key of the reading's own follows the user's keys only when it cannot reach a page that those lead to.
#include "bbs/article/typing_pause.h"

#include <random>

#include "tests/bbs/article/article_reading_fixture.h"

namespace quillet {
namespace {

using TypingPauseTest = ArticleReadingTest;

TEST_F(TypingPauseTest, AKeyOfTheUsersStopsItForAWhile) {
  Open();
  Pass(ArticleReading::kPause);
  ASSERT_EQ(own_, Keys(kKeyPageDown, 1));
  UserTypes(kKeyDown);
  Pass(ArticleReading::kCalm - kTick);
  EXPECT_EQ(own_, Keys(kKeyPageDown, 1));
  // The page asked for came first, then the user's: one line further.
  EXPECT_EQ(bbs_->top, 23);
  EXPECT_EQ(reading_->TakeMovedTo(), 23);
  Pass(2 * kTick);
  EXPECT_EQ(own_, Keys(kKeyPageDown, 2));
  Pass(3000);
  ExpectWhole();
}

TEST_F(TypingPauseTest, WhoScrollsOnNeedNotWait) {
  Open();
  UserTypes(kKeyDown);
  Pass(200);
  ASSERT_EQ(own_, "");
  EXPECT_EQ(reading_->TakeMovedTo(), 1);
  reading_->WantMore(now_);
  EXPECT_EQ(own_, Keys(kKeyPageDown, 1));
  Pass(1000);
  ExpectWhole();
  EXPECT_EQ(reading_->TakeMovedTo(), std::nullopt);
}

TEST_F(TypingPauseTest, NoKeyFollowsOneThatTheBbsHasNotAnsweredYet) {
  Open();
  delay_ = 4900;
  UserTypes(kKeyLeft);
  reading_->WantMore(now_);
  Pass(4000);
  reading_->WantMore(now_);
  Pass(1000);
  EXPECT_EQ(own_, "");
  EXPECT_FALSE(bbs_->reading);
}

TEST_F(TypingPauseTest, AKeyWithoutAnEffectHoldsItUpForALimitedTime) {
  Open();
  reading_->OnUserKey(now_);  // nothing comes of it
  Pass(ArticleReading::kNoAnswer - kTick);
  EXPECT_EQ(own_, "");
  Pass(3000);
  ExpectWhole();
}

TEST_F(TypingPauseTest, WhoMovesThroughTheArticleIsNotDisturbedButFetchingGoesOn) {
  Open();
  while (!reading_->Lines().IsComplete() && now_ < 1'100'000) {
    reading_->OnLocalMove(now_);
    Pass(kTick);
  }
  ASSERT_TRUE(reading_->Lines().IsComplete()) << "moving asks the BBS for nothing and holds nothing up";
  own_.clear();
  for (int move = 0; move < 100; ++move) {
    reading_->OnLocalMove(now_);
    Pass(1000, true);
  }
  EXPECT_EQ(own_, "");
  Pass(ArticleReading::kRefreshCalm - 1000 - kTick, true);
  EXPECT_EQ(own_, "");
  Pass(2 * kTick, true);
  EXPECT_EQ(own_, Keys(kKeyLeft, 1));
}

// On a slow line, whatever the user types: CheckOwn sees every key of the reading's that reaches the BBS.
TEST_F(TypingPauseTest, NoKeyOfItsOwnEverGoesAstray) {
  std::mt19937 random(11);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  const std::string keys[] = {std::string(KeySequence(kKeyLeft)),     std::string(KeySequence(kKeyRight)),
                              std::string(KeySequence(kKeyPageDown)), std::string(KeySequence(kKeyPageUp)),
                              std::string(KeySequence(kKeyDown)),     std::string(KeySequence(kKeyEnd)),
                              std::string(KeySequence(kKeyHome)),     "f"};
  int whole = 0;
  for (int round = 0; round < 1500; ++round) {
    delay_ = below(2) == 0 ? 20 : below(static_cast<int>(TypingPause::kDoubt));
    for (int burst = below(4); burst > 0; --burst) {
      // The view holds keys back.
      PassUntil([&] { return !reading_->MustWait(); });
      UserTypes(keys[below(8)]);
      if (below(2) == 0) Pass(below(300), true);
    }
    if (below(3) == 0) reading_->WantMore(now_);
    if (below(5) == 0) bbs_->articles[static_cast<std::size_t>(below(2))].rows.push_back(PushText(round));
    if (below(40) == 0 && line_.empty() && !reading_->MustWait()) {
      bbs_->cover = u" ◆ 系統訊息 ";
      Show(bbs_->Screen());
    }
    Pass(below(10) == 0 ? 45'000 : below(4000), below(2) == 0);
    if (reading_->Lines().IsComplete() && reading_->StandsForScreen()) ++whole;
  }
  EXPECT_GT(whole, 300);
}

}  // namespace
}  // namespace quillet
