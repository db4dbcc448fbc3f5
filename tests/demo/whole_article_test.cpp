#include <chrono>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include "bbs/article_code_question.h"
#include "bbs/article_jump.h"
#include "bbs/article_reading.h"
#include "bbs/auto_login.h"
#include "bbs/page_flags.h"
#include "bbs/push_over_reader.h"
#include "core/key_sequence.h"
#include "core/notify_target.h"
#include "demo/content_loader.h"
#include "demo/demo_server.h"
#include "tests/demo/live_session.h"
#include "tests/support/tables.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

// The messages of the session's threads, for the one thread of the test.
class Inbox : public NotifyTarget {
 public:
  bool Post(unsigned message, std::uintptr_t, std::uintptr_t second) override {
    if (message != kMessageScreen) return true;
    const std::lock_guard lock(mutex_);
    screens_.emplace_back(reinterpret_cast<ScreenSnapshot*>(second));
    return true;
  }
  std::unique_ptr<ScreenSnapshot> Take() {
    const std::lock_guard lock(mutex_);
    if (screens_.empty()) return nullptr;
    auto screen = std::move(screens_.front());
    screens_.pop_front();
    return screen;
  }

 private:
  std::mutex mutex_;
  std::deque<std::unique_ptr<ScreenSnapshot>> screens_;
};

// A user with the reading that a window would have, on the content that comes with the program.
class DemoWholeArticleTest : public WithTables {
 protected:
  template <typename Condition>
  bool Until(Condition condition) {
    const bool held = WaitUntil([&] {
      Turn();
      return condition();
    });
    EXPECT_TRUE(held) << live_.Dump();
    return held;
  }
  template <typename Automation>
  auto Run(Automation automation) {
    decltype(automation(*static_cast<ScreenWaits*>(nullptr))) result{};
    live_.Start([&](ScreenWaits& waits) { result = automation(waits); });
    EXPECT_TRUE(Until([&] { return live_.ended.load(); }));
    live_.Cancel();
    return result;
  }
  void SetUp() override {
    WithTables::SetUp();
    const std::filesystem::path content = QUILLET_SOURCE_DIR "/demo/content";
    DemoOptions options;
    options.contentFolder = content;
    server_ = std::make_unique<DemoServer>(options);
    ASSERT_EQ(server_->Error(), "");
    for (const demo::Board& board : demo::LoadContent(content).boards)
      for (const demo::ArticlePtr& article : board.articles) {
        if (article->kind != demo::ArticleKind::kPlain) continue;
        if (!longest_ || article->body.size() > longest_->body.size()) {
          longest_ = article;
          board_ = board.info.name;
        }
      }
    ASSERT_GT(longest_->body.size(), 500u);

    reading_ = std::make_unique<ArticleReading>(
        ArticleReading::Handlers{.send =
                                     [this](std::string_view keys) {
                                       sent_.emplace_back(keys);
                                       live_.session.SendBytes(keys);
                                     },
                                 .news = [this](const ArticleNews& news) { news_.push_back(news); }});
    ASSERT_TRUE(live_.Connect(server_->Address()));
    ASSERT_EQ(Run([](ScreenWaits& waits) {
                return AutoLogin(waits, {u"reader", u"quillet"});
              }),
              LoginResult::kFinished);
    ASSERT_EQ(Run([&](ScreenWaits& waits) {
                return JumpToArticle(waits, FromBig5(board_), FromBig5(longest_->code));
              }),
              JumpResult::kFound);
  }

  // What a window does all the time. The reading's clock stands still while it waits for the server, so that
  // a busy machine is no BBS that does not answer.
  void Turn() {
    while (const auto screen = inbox_.Take()) {
      MarkPushOverReader(flags_, *screen);
      flags_ = screen->pageFlags;
      cursorRow_ = screen->cursorRow;
      tracker_.Look(*screen, 0);
      reading_->OnScreen(*screen, tracker_.Current(), tracker_.IsOpen(), now_);
    }
    if (!reading_->IsFetching() && !reading_->MustWait()) ++now_;
    reading_->OnTick(now_, true);
  }
  // Faster than it does for people.
  void PassTime(std::int64_t milliseconds) {
    constexpr std::int64_t kStep = 50;
    const std::int64_t end = now_ + milliseconds;
    Until([&] {
      if (!reading_->IsFetching() && !reading_->MustWait()) now_ += kStep;
      return now_ >= end;
    });
  }
  void UserTypes(std::string_view keys) {
    reading_->OnUserKey(now_);
    live_.session.SendBytes(keys);
  }
  void Open() {
    ASSERT_TRUE(Until([&] { return (flags_ & PF_ARTICLE_LIST_CURSOR) != 0; }));
    UserTypes(KeySequence(kKeyRight));
    ASSERT_TRUE(Until([&] { return reading_->Lines().Count() > 0; }));
  }
  void ReadWhole() {
    Open();
    ASSERT_TRUE(Until([&] { return reading_->Lines().IsComplete(); }));
  }
  void LeaveAndExpectTheList() {
    UserTypes(KeySequence(kKeyLeft));
    ASSERT_TRUE(Until([&] { return (flags_ & PF_ARTICLE_LIST_CURSOR) != 0; }));
    EXPECT_EQ(PageFacts::ParseListAuthor(live_.Screen(), cursorRow_), FromBig5(longest_->authorId));
    EXPECT_NE(PageFacts::ParseListTitle(live_.Screen(), cursorRow_).find(FromBig5(longest_->title)),
              std::u16string::npos)
        << live_.Dump();
    EXPECT_FALSE(reading_->StandsForScreen());
  }
  // Another user on the same article.
  std::unique_ptr<TestClient> OtherReader() {
    auto client = std::make_unique<TestClient>(server_->Port());
    EXPECT_TRUE(client->LogIn("hasty", "hasty")) << client->Dump();
    EXPECT_TRUE(client->EnterBoard(board_)) << client->Dump();
    client->Send("#" + longest_->code + "\rl");
    EXPECT_TRUE(client->WaitForFlags(PF_READING | PF_READ_TOP)) << client->Dump();
    return client;
  }
  // Line by line to the end, as the rows come up from below.
  std::vector<std::string> RowsPagedByHand() {
    const auto client = OtherReader();
    std::vector<std::string> rows;
    for (int row = 0; row < kRows - 1; ++row)
      rows.emplace_back(client->Seen().RowText(row));
    while ((client->Seen().pageFlags & PF_READ_END) == 0) {
      const int line = PageFacts::ParseReaderLastLine(client->Seen());
      client->Send("j");
      if (!client->WaitFor([&](const ScreenSnapshot& screen) {
            return IsWholeReaderPage(client->Seen()) && PageFacts::ParseReaderLastLine(screen) == line + 1 &&
                   PageFacts::ParseReaderLastLine(client->Seen()) == line + 1;
          }))
        break;
      rows.emplace_back(client->Seen().RowText(kRows - 2));
    }
    return rows;
  }
  std::string RowAt(int index) const {
    return {reinterpret_cast<const char*>(reading_->Lines().At(index).text.data()), kCols};
  }

  Inbox inbox_;
  std::unique_ptr<DemoServer> server_;
  LiveSession live_{&inbox_};
  demo::ArticlePtr longest_;
  std::string board_;
  PageFacts facts_;
  ArticleTracker tracker_{facts_};
  std::unique_ptr<ArticleReading> reading_;
  std::vector<std::string> sent_;
  std::vector<ArticleNews> news_;
  std::uint32_t flags_ = 0;
  int cursorRow_ = 0;
  std::int64_t now_ = 0;
};

TEST_F(DemoWholeArticleTest, ALongArticleIsFetchedAsItReadsByHandAndLeftAsUsual) {
  ReadWhole();
  EXPECT_TRUE(reading_->StandsForScreen());
  const std::vector<std::string> byHand = RowsPagedByHand();
  ASSERT_EQ(reading_->Lines().Count(), static_cast<int>(byHand.size()));
  for (int index = 0; index < reading_->Lines().Count(); ++index)
    ASSERT_EQ(RowAt(index), byHand[static_cast<std::size_t>(index)]) << index;
  EXPECT_EQ(sent_.size(), (byHand.size() - 23 + 21) / 22);
  LeaveAndExpectTheList();
}

TEST_F(DemoWholeArticleTest, WhoTypesInTheMiddleHasTheArticleToThemselves) {
  Open();
  ASSERT_TRUE(Until([&] { return sent_.size() == 5; }));
  UserTypes("/");
  ASSERT_TRUE(Until([&] { return (flags_ & PF_INPUT_FIELD) != 0; }));
  EXPECT_FALSE(reading_->StandsForScreen());
  PassTime(ArticleReading::kCalm + ArticleReading::kNoAnswer);
  EXPECT_EQ(sent_.size(), 5u);

  UserTypes("\x03");
  ASSERT_TRUE(Until([&] { return reading_->StandsForScreen(); }));
  EXPECT_EQ(sent_.size(), 5u);
  ASSERT_TRUE(Until([&] { return reading_->Lines().IsComplete(); }));
  LeaveAndExpectTheList();
}

TEST_F(DemoWholeArticleTest, LeavingInTheMiddleLeadsToTheList) {
  Open();
  ASSERT_TRUE(Until([&] { return sent_.size() == 3; }));
  LeaveAndExpectTheList();
  PassTime(ArticleReading::kCalm + ArticleReading::kNoAnswer);
  EXPECT_EQ(sent_.size(), 3u);
}

TEST_F(DemoWholeArticleTest, APushOfAnotherUsersAppearsByItself) {
  ReadWhole();
  const int count = reading_->Lines().Count();
  const std::size_t keys = sent_.size();
  const auto other = OtherReader();
  other->Send("X");
  ASSERT_TRUE(other->WaitForText(23, 0, u"您覺得這篇文章"));
  other->Send("1" + ToBig5(u"寫得真好") + "\ry\r");
  ASSERT_TRUE(other->WaitForText(23, 2, u"瀏覽"));
  other->Send("$");
  ASSERT_TRUE(other->WaitForText(22, 0, u"推 hasty: 寫得真好")) << other->Dump();
  PassTime(ArticleReading::kRefreshInterval);
  ASSERT_TRUE(Until([&] { return !news_.empty(); }));
  EXPECT_EQ(news_, std::vector{ArticleNews{.newPushes = 1}});
  ASSERT_EQ(reading_->Lines().Count(), count + 1);
  EXPECT_EQ(RowAt(count).substr(0, 10), ToBig5(u"推 hasty: "));
  EXPECT_TRUE(reading_->Lines().IsComplete());
  EXPECT_TRUE(reading_->StandsForScreen());
  EXPECT_EQ(reading_->TakeMovedTo(), 0);  // where it was opened
  EXPECT_EQ(sent_[keys], KeySequence(kKeyLeft));
  LeaveAndExpectTheList();
}

TEST_F(DemoWholeArticleTest, TheCodeIsAskedForOverTheOpenArticle) {
  ReadWhole();
  reading_->OnUserKey(now_);
  const ScreenSnapshot before = live_.Screen();
  EXPECT_EQ(Run([](ScreenWaits& waits) { return AskArticleCode(waits); }), FromBig5(longest_->code));
  ASSERT_TRUE(Until([&] { return reading_->StandsForScreen(); }));
  EXPECT_EQ(live_.Screen().text, before.text);
  EXPECT_EQ(tracker_.Current().code, FromBig5(longest_->code));
}

}  // namespace
}  // namespace quillet
