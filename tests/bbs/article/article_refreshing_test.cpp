// The article reading opens the article anew for what has been added to it.
#include <functional>

#include "bbs/article/article_reopening.h"
#include "tests/bbs/article/article_reading_fixture.h"

namespace quillet {
namespace {

using ArticleRefreshingTest = ArticleReadingTest;

TEST_F(ArticleRefreshingTest, NewPushesAppearAndTheBbsEndsAtTheEnd) {
  // Also where the first line more makes a second page.
  for (const auto& [rows, pushes] :
       {std::pair{17, 1}, {18, 1}, {19, 1}, {19, 60}, {100, 12}, {100, 30}, {100, 200}}) {
    SCOPED_TRACE(testing::Message() << rows << " rows and " << pushes << " pushes");
    Restart();
    Article() = ArticleOf(rows);
    ReadWhole();
    AddPushes(pushes);
    Pass(ArticleReading::kRefreshInterval + 5000, true);
    ExpectWhole();
    ASSERT_EQ(news_.size(), 1u);
    EXPECT_EQ(news_[0], (ArticleNews{.newPushes = pushes}));
    EXPECT_TRUE(bbs_->AtEnd());
    EXPECT_EQ(reading_->TakeMovedTo(), std::nullopt);
    EXPECT_FALSE(reading_->IsRefreshing());
  }
}

TEST_F(ArticleRefreshingTest, WithoutNewsARefreshCostsThreeKeysAndSaysNothing) {
  ReadWhole();
  bool stood = true;
  for (int tick = 0; tick < 3500; ++tick) {
    Pass(kTick, true);
    stood = stood && reading_->StandsForScreen();
  }
  EXPECT_EQ(own_, Keys(kKeyLeft, 1) + Keys(kKeyRight, 1) + Keys(kKeyEnd, 1));
  EXPECT_TRUE(stood);
  EXPECT_TRUE(news_.empty());
  ExpectWhole();
}

TEST_F(ArticleRefreshingTest, ARefreshWaitsForItsTime) {
  ReadWhole();
  Pass(100'000, false);
  EXPECT_EQ(own_, "");
  UserTypes(kKeyHome);
  Pass(ArticleReading::kRefreshCalm - kTick, true);
  EXPECT_EQ(own_, "");
  Pass(2 * kTick, true);
  EXPECT_EQ(own_, Keys(kKeyLeft, 1));
  Pass(1000, true);
  own_.clear();
  Pass(ArticleReading::kRefreshInterval - 1500, true);
  EXPECT_EQ(own_, "");
  reading_->SetOptions({.refreshPush = false});
  Pass(100'000, true);
  EXPECT_EQ(own_, "");
}

TEST_F(ArticleRefreshingTest, WhatTheUserHasAddedShowsSoonAndIsNoNews) {
  ReadWhole();
  reading_->SetOptions({.refreshPush = false});
  AddPushes(3);
  UserTypes(kKeyHome);
  reading_->WantRefresh();
  Pass(ArticleReading::kCalm - kTick, true);
  EXPECT_EQ(own_, "");
  Pass(2000, true);
  ExpectWhole();
  EXPECT_TRUE(news_.empty());
  own_.clear();
  Pass(100'000, true);
  EXPECT_EQ(own_, "") << "once";
}

TEST_F(ArticleRefreshingTest, AnEditedTextIsReadAgainAndTold) {
  struct Edit {
    const char* name;
    std::function<void(std::vector<std::u16string>&)> change;
    bool edited;
    int pushes;
  };
  const Edit edits[] = {
      {"on the first page", [](auto& rows) { rows[3] = u"改過"; }, true, 0},
      {"a line more in the middle", [](auto& rows) { rows.insert(rows.begin() + 60, u"多一行"); }, true, 0},
      {"a line less, and a push",
       [](auto& rows) { rows.erase(rows.begin() + 30), rows.push_back(PushText(9)); }, true, 1},
      {"a note at the end",
       [](auto& rows) {
         rows.insert(rows.end(), {u"※ 編輯: kagami, 11/06/2026 07:00:00", PushText(9)});
       },
       true, 1},
      {"pushes only",
       [](auto& rows) {
         rows.insert(rows.end(), {PushText(9), PushText(10)});
       },
       false, 2},
  };
  for (const bool tell : {true, false})
    for (const Edit& edit : edits) {
      SCOPED_TRACE(edit.name);
      Restart();
      Article() = ArticleOf(100);
      AddPushes(40);
      reading_->SetOptions({.tellChanges = tell});
      ReadWhole();
      edit.change(Article().rows);
      Pass(ArticleReading::kRefreshInterval + 10'000, true);
      ExpectWhole();
      const ArticleNews expected{.newPushes = edit.pushes, .edited = edit.edited && tell};
      EXPECT_EQ(news_, expected == ArticleNews{} ? std::vector<ArticleNews>{} : std::vector{expected});
    }
}

TEST_F(ArticleRefreshingTest, AnythingUnexpectedEndsTheRefresh) {
  const std::u16string pause = u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ";
  const std::u16string animation = u" ★ 這份文件是可播放的文字動畫，要開始播放嗎？ [Y/n]";
  // What happens to the BBS when it has taken so many keys, and what was sent in the end.
  struct Surprise {
    int keys;
    std::function<void(ArticleBbs&)> happens;
    std::string sent;
  };
  const std::string left = Keys(kKeyLeft, 1), right = Keys(kKeyRight, 1);
  const Surprise surprises[] = {
      {1, [&](ArticleBbs& bbs) { bbs.cover = pause; }, left},
      {1, [&](ArticleBbs& bbs) { bbs.articles[0].author = u"-"; }, left},
      {1, [&](ArticleBbs& bbs) { bbs.articles[0].author = u"someone"; }, left},
      {2, [&](ArticleBbs& bbs) { bbs.cover = animation; }, left + right},
      {2, [&](ArticleBbs& bbs) { bbs.cover = u" ◆ 此文章無內容 "; }, left + right},
      {2, [&](ArticleBbs& bbs) { bbs.articles[0].title = u"別的"; }, left + right},
  };
  for (const Surprise& surprise : surprises) {
    SCOPED_TRACE(&surprise - surprises);
    Restart();
    ReadWhole();
    TickUntilSent();
    for (int key = 1; key <= surprise.keys; ++key) {
      ASSERT_EQ(line_.size(), 1u);
      EXPECT_TRUE(reading_->MustWait());
      bbs_->Press(line_.front().bytes);
      line_.clear();
      if (key == surprise.keys) surprise.happens(*bbs_);
      Show(bbs_->Screen());
    }
    const bool another = bbs_->Article().title == u"別的";  // which is then read as any article
    const ScreenSnapshot shown = bbs_->Screen();
    Pass(another ? 5000 : 100'000, true);
    EXPECT_EQ(own_, surprise.sent + (another ? Keys(kKeyPageDown, 4) : std::string()));
    if (!another) {
      EXPECT_EQ(bbs_->Screen().text, shown.text);
    }
    EXPECT_EQ(reading_->StandsForScreen(), another);
    EXPECT_FALSE(reading_->IsRefreshing() || reading_->MustWait());
    EXPECT_TRUE(news_.empty());
  }
}

TEST_F(ArticleRefreshingTest, ARefreshWithoutAnAnswerIsOverAfterAWhile) {
  for (const int answered : {0, 1}) {
    SCOPED_TRACE(answered);
    Restart();
    ReadWhole();
    TickUntilSent();
    for (int key = 0; key < answered; ++key) {
      now_ = line_.front().arrives;
      Answer();
    }
    line_.clear();
    const std::int64_t since = now_;
    PassUntil([&] { return !reading_->MustWait(); });
    EXPECT_EQ(now_ - since, ArticleReading::kNoAnswer);
    EXPECT_EQ(reading_->StandsForScreen(), answered == 0);  // the article still shows, or the list
    own_.clear();
    Pass(100'000, true);
    EXPECT_EQ(own_, "");
  }
}

TEST_F(ArticleRefreshingTest, AKeyDuringTheRefreshStopsItAndTheNextOneFindsTheNews) {
  ReadWhole();
  AddPushes(60);
  // Held back while it must be, then sent.
  PassUntil([&] { return reading_->MustWait(); });
  PassUntil([&] {
    EXPECT_TRUE(bbs_->reading || reading_->MustWait());
    return !reading_->MustWait();
  });
  EXPECT_TRUE(reading_->IsRefreshing());
  own_.clear();
  UserTypes(kKeyDown);
  EXPECT_FALSE(reading_->IsRefreshing());
  Pass(1900, true);
  EXPECT_EQ(own_, "");
  EXPECT_EQ(bbs_->top, 1);
  EXPECT_TRUE(reading_->StandsForScreen());
  EXPECT_TRUE(news_.empty());
  Pass(ArticleReading::kRefreshInterval + 5000, true);
  ExpectWhole();
  EXPECT_EQ(news_, std::vector{ArticleNews{.newPushes = 60}});
}

TEST_F(ArticleRefreshingTest, ARefreshStoppedBeyondWhatIsKnownFindsItsWayBack) {
  ReadWhole();
  AddPushes(60);
  PassUntil([&] { return bbs_->AtEnd() && !reading_->Lines().IsComplete(); });
  reading_->OnUserKey(now_);
  EXPECT_TRUE(reading_->StandsForScreen());
  Pass(ArticleReading::kNoAnswer + 1000, true);
  ExpectWhole();
  EXPECT_TRUE(reading_->StandsForScreen());
  EXPECT_EQ(news_, std::vector{ArticleNews{.newPushes = 60}});
}

TEST_F(ArticleRefreshingTest, OnlyAnArticleFromAListOfArticlesIsOpenedAnew) {
  ScreenBuilder digest;
  digest.Put(0, 0, u"【精華文章】").Put(3, 0, u"●").Cursor(3, 1);
  Show(bbs_->Classified(digest.screen));
  bbs_->reading = true;
  Show(bbs_->Screen());
  Pass(100'000, true);
  ExpectWhole();
  EXPECT_EQ(own_, Keys(kKeyPageDown, 4));
}

}  // namespace
}  // namespace quillet
