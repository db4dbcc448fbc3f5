// An article reading at one end of a line and a BBS of one board at the other, for the tests of what the
// reading sends and when.
#pragma once

#include <deque>
#include <gtest/gtest.h>
#include <memory>

#include "bbs/article/article_reading.h"
#include "bbs/page_understanding.h"
#include "tests/bbs/article/article_bbs.h"
#include "tests/support/tables.h"

namespace quillet {

// Keys and screens need `delay_` each way together.
class ArticleReadingTest : public WithTables {
 protected:
  static constexpr std::int64_t kTick = 10;
  struct Key {
    std::string bytes;
    bool own = false;  // of the reading
    std::int64_t arrives = 0;
  };

  void SetUp() override {
    WithTables::SetUp();
    bbs_ = std::make_unique<ArticleBbs>();
    reading_ = std::make_unique<ArticleReading>(
        ArticleReading::Handlers{.send = [this](std::string_view keys) { SendOwn(keys); },
                                 .news = [this](const ArticleNews& news) { news_.push_back(news); }});
    Show(bbs_->Screen());
  }

  // A new connection to a new BBS.
  void Restart() {
    reading_->Drop();
    tracker_.Drop();
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
    const UnderstoodPage& page = understanding_.Look(screen);
    tracker_.Look(screen, page, 0);
    reading_->OnScreen(screen, page, tracker_.Current(), tracker_.IsOpen(), now_);
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
      Article().rows.push_back(PushText(push));
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
  PageUnderstanding understanding_;
  ArticleTracker tracker_;
  std::unique_ptr<ArticleReading> reading_;
};

}  // namespace quillet
