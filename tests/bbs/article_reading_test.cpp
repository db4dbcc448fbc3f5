#include "bbs/article_reading.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <random>

#include "bbs/page_flags.h"
#include "tests/bbs/article_bbs.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

constexpr std::int64_t kTick = 10;

// A reading at one end of a line, a BBS at the other. Keys and screens need `delay` each way together.
class ArticleReadingTest : public WithTables {
 protected:
  struct Key {
    std::string bytes;
    bool own = false;  // of the reading
    std::int64_t arrives = 0;
  };

  void SetUp() override {
    WithTables::SetUp();
    bbs_ = std::make_unique<ArticleBbs>();
    facts_ = std::make_unique<PageFacts>();
    tracker_ = std::make_unique<ArticleTracker>(*facts_);
    reading_ = std::make_unique<ArticleReading>(
        ArticleReading::Handlers{.send = [this](std::string_view keys) { SendOwn(keys); },
                                 .news = [this](const ArticleNews& news) { news_.push_back(news); }});
    Show(bbs_->Screen());
  }

  // A new connection to a new BBS.
  void Restart() {
    reading_->Drop();
    tracker_->Drop();
    bbs_ = std::make_unique<ArticleBbs>();
    line_.clear();
    own_.clear();
    news_.clear();
    Show(bbs_->Screen());
  }
  void SendOwn(std::string_view keys) {
    own_ += keys;
    line_.push_back({std::string(keys), true, now_ + delay_});
  }
  void UserTypes(std::string_view keys) {
    reading_->OnUserKey(now_);
    line_.push_back({std::string(keys), false, now_ + delay_});
  }
  void UserTypes(int key) { UserTypes(KeySequence(key)); }
  void Show(const ScreenSnapshot& screen) {
    tracker_->Look(screen, 0);
    reading_->OnScreen(screen, tracker_->Current(), tracker_->IsOpen(), now_);
    EXPECT_FALSE(reading_->StandsForScreen() && reading_->Lines().Count() == 0);
  }
  // The BBS takes what has arrived, one key after the other.
  void Answer() {
    while (!line_.empty() && line_.front().arrives <= now_) {
      const Key key = line_.front();
      line_.pop_front();
      if (key.own) CheckOwn(key.bytes);
      bbs_->Press(key.bytes);
      Show(bbs_->Screen());
    }
  }
  // No key of the reading's does anything but move in the article, unless it is being opened again.
  void CheckOwn(std::string_view key) {
    if (key == KeySequence(kKeyLeft) || key == KeySequence(kKeyRight)) {
      EXPECT_TRUE(reading_->MustWait());
      EXPECT_EQ(bbs_->reading, key == KeySequence(kKeyLeft));
      return;
    }
    EXPECT_TRUE(bbs_->reading && bbs_->cover.empty()) << "moves in a list, or answers a question";
    EXPECT_FALSE(key == KeySequence(kKeyPageDown) && bbs_->AtEnd()) << "leads to the next article";
  }
  void Pass(std::int64_t time, bool mayRefresh = false) {
    for (const std::int64_t end = now_ + time; now_ < end;) {
      now_ += kTick;
      reading_->OnTick(now_, mayRefresh);
      Answer();
    }
  }
  // At most long enough for a refresh to begin and end.
  template <typename Condition>
  void PassUntil(Condition holds) {
    for (int tick = 0; tick < 10'000 && !holds(); ++tick)
      Pass(kTick, true);
    ASSERT_TRUE(holds());
  }
  // Until the reading has sent something, which the BBS does not get.
  void TickUntilSent() {
    for (int tick = 0; tick < 10'000 && own_.empty(); ++tick) {
      now_ += kTick;
      reading_->OnTick(now_, true);
    }
    ASSERT_FALSE(own_.empty());
  }
  void Open() {
    UserTypes(kKeyRight);
    Pass(delay_ + kTick);
    ASSERT_TRUE(bbs_->reading);
  }
  void ReadWhole() {
    Open();
    Pass(5000);
    ASSERT_TRUE(reading_->Lines().IsComplete());
    reading_->TakeMovedTo();
    own_.clear();
  }
  void ExpectWhole() {
    const ArticleLines& lines = reading_->Lines();
    EXPECT_TRUE(lines.IsComplete());
    const std::vector<std::string> whole = bbs_->Whole();
    ASSERT_EQ(lines.Count(), static_cast<int>(whole.size()));
    for (int index = 0; index < lines.Count(); ++index)
      EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(lines.At(index).text.data()), kCols),
                whole[static_cast<std::size_t>(index)]);
  }
  BbsArticle& Article() { return bbs_->articles[0]; }
  void AddPushes(int count) {
    for (int push = 0; push < count; ++push)
      Article().rows.push_back(PushLine(push));
  }
  static std::string Keys(int key, int times) {
    std::string keys;
    while (times-- > 0)
      keys += KeySequence(key);
    return keys;
  }

  std::int64_t now_ = 1'000'000;
  std::int64_t delay_ = 20;
  std::string own_;  // what the reading has sent
  std::deque<Key> line_;
  std::vector<ArticleNews> news_;
  std::unique_ptr<ArticleBbs> bbs_;
  std::unique_ptr<PageFacts> facts_;
  std::unique_ptr<ArticleTracker> tracker_;
  std::unique_ptr<ArticleReading> reading_;
};

// ---- Fetching

TEST_F(ArticleReadingTest, TheWholeArticleIsFetchedPageByPage) {
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

TEST_F(ArticleReadingTest, AnArticleOfOnePageNeedsNoKey) {
  Article() = ArticleOf(12);
  Open();
  Pass(3000);
  ExpectWhole();
  EXPECT_EQ(own_, "");
}

TEST_F(ArticleReadingTest, OneKeyAtATimeAndAPauseBeforeEach) {
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

TEST_F(ArticleReadingTest, AKeyOfTheUsersStopsItForAWhile) {
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

TEST_F(ArticleReadingTest, WhoScrollsOnNeedNotWait) {
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

TEST_F(ArticleReadingTest, NoKeyFollowsOneThatTheBbsHasNotAnsweredYet) {
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

TEST_F(ArticleReadingTest, AKeyWithoutAnEffectHoldsItUpForALimitedTime) {
  Open();
  reading_->OnUserKey(now_);  // nothing comes of it
  Pass(ArticleReading::kNoAnswer - kTick);
  EXPECT_EQ(own_, "");
  Pass(3000);
  ExpectWhole();
}

TEST_F(ArticleReadingTest, ABbsThatDoesNotAnswerIsLeftAlone) {
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

TEST_F(ArticleReadingTest, ABbsThatNeverComesFurtherIsNotAskedForEver) {
  Open();
  for (int page = 0; page < 1000; ++page) {
    Pass(ArticleReading::kPause + kTick);
    line_.clear();
    bbs_->top = page % 2;  // two pages that have been seen, and nothing beyond
    Show(bbs_->Screen());
  }
  EXPECT_LT(own_.size(), Keys(kKeyPageDown, 40).size());
}

TEST_F(ArticleReadingTest, UnderWhateverLiesOverTheArticleNothingIsSentAndTheScreenShows) {
  Open();
  const ScreenSnapshot page = bbs_->Screen();
  const std::function<void(ScreenBuilder&)> covers[] = {
      [](ScreenBuilder& over) { over.Put(23, 0, u"您覺得這篇文章 1.值得推薦 "); },
      [](ScreenBuilder& over) { over.Put(23, 0, u" ◆ 本文已刪除 ").Cursor(23, 79); },
      [](ScreenBuilder& over) {
        over.screen.BlankRow(22, 0);
        over.Put(22, 0, u"[搜尋]關鍵字:").Fill(22, 13, 40, kAttrInputField).Cursor(22, 13);
      },
      [](ScreenBuilder& over) {
        over.screen.BlankRow(22, 0);
        over.Put(22, 0, u"★someone", 0xCB).Put(22, 9, u" hello ", 0xAF).Cursor(22, 16);
      },
      [](ScreenBuilder& over) {
        over.screen.BlankRow(23, 0);
        over.Put(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ").Cursor(23, 79);
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

TEST_F(ArticleReadingTest, AHalfDrawnPageChangesNothingForAMoment) {
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

TEST_F(ArticleReadingTest, TheUsersMovesAreToldAndAPageBeyondWhatIsKnownIsTheBbssOwn) {
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

TEST_F(ArticleReadingTest, WithoutTheOptionNoKeyIsSentAndPagesAreGatheredAllTheSame) {
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

// ---- Refreshing

TEST_F(ArticleReadingTest, NewPushesAppearAndTheBbsEndsAtTheEnd) {
  for (const int pushes : {1, 12, 30, 200}) {
    SCOPED_TRACE(pushes);
    Restart();
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

TEST_F(ArticleReadingTest, WithoutNewsARefreshCostsThreeKeysAndSaysNothing) {
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

TEST_F(ArticleReadingTest, ARefreshWaitsForItsTime) {
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

TEST_F(ArticleReadingTest, WhatTheUserHasAddedShowsSoonAndIsNoNews) {
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

TEST_F(ArticleReadingTest, WhoMovesThroughTheArticleIsNotDisturbedButFetchingGoesOn) {
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

TEST_F(ArticleReadingTest, AnEditedTextIsReadAgainAndTold) {
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
       [](auto& rows) { rows.erase(rows.begin() + 30), rows.push_back(PushLine(9)); }, true, 1},
      {"a note at the end",
       [](auto& rows) {
         rows.insert(rows.end(), {u"※ 編輯: kagami, 11/06/2026 07:00:00", PushLine(9)});
       },
       true, 1},
      {"pushes only",
       [](auto& rows) {
         rows.insert(rows.end(), {PushLine(9), PushLine(10)});
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

TEST_F(ArticleReadingTest, AnythingUnexpectedEndsTheRefresh) {
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

TEST_F(ArticleReadingTest, ARefreshWithoutAnAnswerIsOverAfterAWhile) {
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

TEST_F(ArticleReadingTest, AKeyDuringTheRefreshStopsItAndTheNextOneFindsTheNews) {
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

TEST_F(ArticleReadingTest, ARefreshStoppedBeyondWhatIsKnownFindsItsWayBack) {
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

TEST_F(ArticleReadingTest, OnlyAnArticleFromAListOfArticlesIsOpenedAnew) {
  ScreenBuilder digest;
  digest.Put(0, 0, u"【精華文章】").Put(3, 0, u"●").Cursor(3, 1);
  Show(bbs_->Classified(digest.screen));
  bbs_->reading = true;
  Show(bbs_->Screen());
  Pass(100'000, true);
  ExpectWhole();
  EXPECT_EQ(own_, Keys(kKeyPageDown, 4));
}

// ---- Everything at once

// On a slow line, whatever the user types: CheckOwn sees every key of the reading's that reaches the BBS.
TEST_F(ArticleReadingTest, NoKeyOfItsOwnEverGoesAstray) {
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
    if (below(5) == 0) bbs_->articles[static_cast<std::size_t>(below(2))].rows.push_back(PushLine(round));
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
