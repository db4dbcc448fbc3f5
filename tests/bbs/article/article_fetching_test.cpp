// The article reading pages on through the whole of the article that is open.
#include <functional>

#include "bbs/page_flags.h"
#include "tests/bbs/article/article_reading_fixture.h"

namespace quillet {
namespace {

using ArticleFetchingTest = ArticleReadingTest;

TEST_F(ArticleFetchingTest, TheWholeArticleIsFetchedPageByPage) {
  Open();
  EXPECT_EQ(reading_->TakeMovedTo(), 0);
  EXPECT_TRUE(reading_->StandsForScreen());
  Pass(3000);
  ExpectWhole();
  EXPECT_EQ(own_, Keys(kKeyPageDown, 4));  // 104 rows, 23 and then 22 more with each page
  EXPECT_TRUE(bbs_->AtEnd());
  EXPECT_EQ(reading_->TakeMovedTo(), std::nullopt);
  EXPECT_TRUE(reading_->StandsForScreen());

  UserTypes(kKeyLeft);
  Pass(3000);
  EXPECT_EQ(reading_->Lines().Count(), 0);
  EXPECT_FALSE(reading_->StandsForScreen());
  EXPECT_EQ(bbs_->selected, 0);
}

TEST_F(ArticleFetchingTest, OneKeyAtATimeAndAPauseBeforeEach) {
  delay_ = 1000;
  Open();
  const std::int64_t arrived = now_ - kTick;
  EXPECT_EQ(reading_->NextTick(), arrived + ArticleReading::kPause);
  Pass(ArticleReading::kPause - 2 * kTick);
  EXPECT_EQ(own_, "");
  Pass(kTick);
  EXPECT_EQ(own_, Keys(kKeyPageDown, 1));
  EXPECT_TRUE(reading_->IsFetching());
  EXPECT_EQ(reading_->NextTick(), std::nullopt);
  Show(bbs_->Screen());  // the same page again is no answer
  Pass(delay_ - kTick);
  EXPECT_EQ(own_, Keys(kKeyPageDown, 1));
  Pass(kTick + ArticleReading::kPause);
  EXPECT_EQ(own_, Keys(kKeyPageDown, 2));
}

TEST_F(ArticleFetchingTest, ABbsThatDoesNotAnswerIsLeftAlone) {
  Open();
  Pass(ArticleReading::kPause);
  line_.clear();
  Pass(60'000);
  EXPECT_EQ(own_, Keys(kKeyPageDown, 1));
  EXPECT_FALSE(reading_->IsFetching());
  EXPECT_TRUE(reading_->StandsForScreen());
  // What comes late is still its own.
  reading_->TakeMovedTo();
  reading_->WantMore(now_);
  now_ += ArticleReading::kNoAnswer + 100;
  reading_->OnTick(now_, false);
  Answer();
  EXPECT_EQ(bbs_->top, 22);
  EXPECT_EQ(reading_->TakeMovedTo(), std::nullopt);
  UserTypes(kKeyDown);
  Pass(5000);
  ExpectWhole();
}

TEST_F(ArticleFetchingTest, ABbsThatNeverComesFurtherIsNotAskedForEver) {
  Open();
  for (int page = 0; page < 1000; ++page) {
    Pass(ArticleReading::kPause + kTick);
    line_.clear();
    bbs_->top = page % 2;  // two pages that have been seen, and nothing beyond
    Show(bbs_->Screen());
  }
  EXPECT_LT(own_.size(), Keys(kKeyPageDown, 40).size());
}

TEST_F(ArticleFetchingTest, UnderWhateverLiesOverTheArticleNothingIsSentAndTheScreenShows) {
  Open();
  const ScreenSnapshot page = bbs_->Screen();
  const std::function<void(ScreenBuilder&)> covers[] = {
      [](ScreenBuilder& over) { over.Put(23, 0, u"您覺得這篇文章 1.值得推薦 "); },
      [](ScreenBuilder& over) {
        over.screen.BlankRow(22, 0);
        over.Put(22, 0, u"[搜尋]關鍵字:").Fill(22, 13, 40, kAttrInputField).Cursor(22, 13);
      },
      [](ScreenBuilder& over) {
        over.screen.BlankRow(22, 0);
        over.Put(22, 0, u"★someone", 0xCB).Put(22, 9, u" hello ", 0xAF).Cursor(22, 16);
      },
      [](ScreenBuilder& over) {  // help, in the same reader
        over.screen.Clear();
        over.Put(0, 0, u"說明");
        over.screen = WithReaderFooter(over.screen, u"  瀏覽 第 1/2 頁 ( 50%)  目前顯示: 第 01~23 行");
      },
  };
  for (const auto& cover : covers) {
    SCOPED_TRACE(&cover - covers);
    ScreenBuilder builder;
    builder.screen = page;
    cover(builder);
    builder.screen.pageFlags = page.pageFlags;
    Show(bbs_->Classified(builder.screen));
    EXPECT_FALSE(reading_->StandsForScreen());
    reading_->WantMore(now_);
    Pass(20'000, true);
    EXPECT_EQ(own_, "");
    EXPECT_GT(reading_->Lines().Count(), 0);
    UserTypes("?");  // which takes it away
    line_.clear();
    Show(page);
    EXPECT_TRUE(reading_->StandsForScreen());
  }
  EXPECT_EQ(reading_->TakeMovedTo(), 0);
  Pass(5000);
  ExpectWhole();
}

TEST_F(ArticleFetchingTest, AHalfDrawnPageChangesNothingForAMoment) {
  ReadWhole();
  ScreenSnapshot half = bbs_->Screen();
  half.cursorRow = 5;
  ScreenSnapshot cleared = half;
  cleared.Clear();
  for (const ScreenSnapshot& screen : {half, cleared}) {
    Show(bbs_->Classified(screen));
    EXPECT_TRUE(reading_->StandsForScreen());
    Pass(ArticleReading::kHalfDrawn - kTick);
    EXPECT_TRUE(reading_->StandsForScreen());
    Pass(kTick);
    EXPECT_FALSE(reading_->StandsForScreen());
    Show(bbs_->Screen());
    EXPECT_TRUE(reading_->StandsForScreen());
  }
}

TEST_F(ArticleFetchingTest, TheUsersMovesAreToldAndAPageBeyondWhatIsKnownIsTheBbssOwn) {
  bbs_->articles[1] = ArticleOf(400);
  ReadWhole();
  UserTypes(kKeyHome);
  Pass(100);
  EXPECT_EQ(reading_->TakeMovedTo(), 0);
  EXPECT_EQ(reading_->TakeMovedTo(), std::nullopt);

  UserTypes("f");
  Pass(100);
  EXPECT_EQ(bbs_->selected, 1);
  UserTypes(kKeyEnd);
  own_.clear();
  Pass(100);
  EXPECT_FALSE(reading_->StandsForScreen());
  Pass(20'000);
  EXPECT_EQ(own_, "");
  EXPECT_TRUE(bbs_->AtEnd());
  UserTypes(kKeyHome);
  Pass(5000);
  ExpectWhole();
}

TEST_F(ArticleFetchingTest, WithoutTheOptionNoKeyIsSentAndPagesAreGatheredAllTheSame) {
  reading_->SetOptions({.fetchAll = false});
  Open();
  Pass(3000);
  for (int page = 0; page < 4; ++page) {
    UserTypes(kKeyPageDown);
    Pass(100, true);
    EXPECT_EQ(reading_->TakeMovedTo(), bbs_->top);
  }
  ExpectWhole();
  AddPushes(3);
  Pass(100'000, true);
  EXPECT_EQ(own_, "");
}

}  // namespace
}  // namespace quillet
