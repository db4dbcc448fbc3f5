#include "bbs/automation/money_run.h"

#include <atomic>
#include <random>

#include "bbs/automation/article_jump.h"
#include "bbs/automation/auto_login.h"
#include "bbs/page_flags.h"
#include "core/charset.h"
#include "demo/content_loader.h"
#include "tests/demo/demo_fixture.h"
#include "tests/demo/live_session.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

// Alice, who has 100, in an article of the small content.
class DemoMoneyTest : public DemoTest {
 protected:
  void SetUp() override {
    DemoTest::SetUp();
    for (const demo::Board& board : demo::LoadContent(QUILLET_SOURCE_DIR "/tests/demo/data").boards)
      for (const demo::ArticlePtr& article : board.articles)
        if (article->kind == demo::ArticleKind::kPlain && here_.code.empty())
          here_ = {.board = FromBig5(board.info.name), .code = FromBig5(article->code)};
    ASSERT_FALSE(here_.code.empty());
  }
  void LogIn(const std::u16string& id, const std::u16string& password) {
    ASSERT_TRUE(live_.Connect(server->Address()));
    ASSERT_EQ(live_.Run([&](ScreenWaits& waits) {
      return AutoLogin(waits, {id, password});
    }),
              LoginResult::kFinished);
  }
  void OpenArticle() {
    ASSERT_TRUE(live_.Run([&](ScreenWaits& waits) {
      return JumpToArticle(waits, here_.board, here_.code) == JumpResult::kFound &&
             waits.OpenArticleUnderCursor(ArticlePart::kTop);
    })) << live_.Dump();
  }
  void StartInArticle() {
    LogIn(u"alice", u"wonder");
    OpenArticle();
  }

  MoneyRunResult Give(std::vector<MoneyGift> gifts, bool codeIsKnown = true) {
    MoneyOrder order{.article = here_, .gifts = std::move(gifts)};
    if (!codeIsKnown) order.article.code.clear();
    MoneyLedger ledger(order.gifts);
    return live_.Run([&](ScreenWaits& waits) {
      RunMoneyOrder(waits, order, ledger);
      return ledger.Result();
    });
  }
  // As the BBS shows it to him.
  int MoneyOf(const std::string& id, const std::string& password) {
    const auto client = Client(id, password);
    client->Send("x\rp\r");
    EXPECT_TRUE(client->WaitForText(0, 0, u"【送人文藝幣】")) << client->Dump();
    EXPECT_TRUE(client->WaitFor([](const ScreenSnapshot& screen) { return screen.cursorRow == 3; }));
    return PageFacts::ParseMoney(client->Screen());
  }
  bool IsInArticle() {
    return WaitUntil([&] { return (live_.Screen().pageFlags & PF_READ_TOP) != 0; });
  }
  bool Shows(int row, std::u16string_view text) {
    return WaitUntil([&] { return RowStartsWith(live_.Screen(), row, 0, text); });
  }

  ArticleReference here_;
  LiveSession live_;
};

TEST_F(DemoMoneyTest, EachGetsHisMoneyAndTheArticleIsOpenAgain) {
  StartInArticle();
  const MoneyRunResult result =
      Give({{u"bob", 10}, {u"nosuchuser", 5}, {u"HUSH", 20}, {u"alice", 1}, {u"bob", 30}}, false);
  EXPECT_EQ(result.end, MoneyRunEnd::kFinished) << live_.Dump();
  ASSERT_EQ(result.gifts.size(), 5u);
  for (const std::size_t given : {0, 2, 4})
    EXPECT_EQ(result.gifts[given].state, GiftState::kGiven) << given;
  for (const std::size_t refused : {1, 3}) {
    EXPECT_EQ(result.gifts[refused].state, GiftState::kRefused) << refused;
    EXPECT_EQ(result.gifts[refused].words, u"沒有這個人，或不能送給他");
  }
  EXPECT_EQ(result.Sum(GiftState::kGiven), 60);
  EXPECT_EQ(MoneyOf("bob", "builder"), 200 + 9 + 27) << "after the BBS's tax";
  EXPECT_EQ(MoneyOf("hush", "h"), 1 + 18);
  EXPECT_TRUE(IsInArticle()) << live_.Dump();
}

TEST_F(DemoMoneyTest, NothingIsGivenWhenTheMoneyDoesNotSufficeForAll) {
  StartInArticle();
  const MoneyRunResult result = Give({{u"bob", 60}, {u"hush", 41}});
  EXPECT_EQ(result.end, MoneyRunEnd::kNotEnough);
  EXPECT_EQ(result.money, 100);
  EXPECT_EQ(result.Count(GiftState::kNotYet), 2);
  EXPECT_EQ(MoneyOf("bob", "builder"), 200);
  EXPECT_TRUE(IsInArticle()) << live_.Dump();
}

TEST_F(DemoMoneyTest, MessagesThatSwallowKeysNeitherLoseNorRepeatAGift) {
  StartInArticle();
  const auto bob = Client("bob", "builder");
  std::atomic<bool> over{false};
  std::thread friends([&] {
    while (!over) {
      bob->Send("\x15\r" + ToBig5(u"在嗎") + "\r \x1b[D\x1b[D");
      std::this_thread::sleep_for(std::chrono::milliseconds(40));
    }
  });
  const MoneyRunResult result = Give(std::vector<MoneyGift>(12, {u"hush", 2}));
  over = true;
  friends.join();
  const int arrived = MoneyOf("hush", "h") - 1;
  EXPECT_EQ(arrived, 2 * result.Count(GiftState::kGiven)) << "as the ledger has it";
  EXPECT_EQ(result.Count(GiftState::kAsked), 0);
  EXPECT_GE(arrived, 18) << live_.Dump();
}

TEST_F(DemoMoneyTest, AStoppedRunHasGivenWhatItsLedgerSays) {
  StartInArticle();
  std::mt19937 random(7);
  int before = 1;
  for (int run = 0; run < 8; ++run) {
    const MoneyOrder order{.article = here_, .gifts = std::vector<MoneyGift>(5, {u"hush", 1})};
    MoneyLedger ledger(order.gifts);
    live_.Start([&](ScreenWaits& waits) { RunMoneyOrder(waits, order, ledger); });
    const int stopAfter = static_cast<int>(random() % 5);
    ASSERT_TRUE(WaitUntil([&] { return ledger.Tried() >= stopAfter; })) << live_.Dump();
    std::this_thread::sleep_for(std::chrono::milliseconds(random() % 30));  // a random moment of the run
    live_.Cancel();
    // What was left of the run is answered by whoever comes next; from there the next one finds its way.
    live_.session.SendBytes("\x03\n");
    ASSERT_TRUE(WaitUntil([&] {
      return live_.classifier.Pages().IsListCursor(live_.Screen()) ||
             live_.classifier.Pages().IsReader(live_.Screen(), PageTests::ReaderForm::kStrict);
    })) << live_.Dump();
    const MoneyRunResult result = ledger.Result();
    EXPECT_TRUE(result.end == MoneyRunEnd::kTakenOver || result.Count(GiftState::kNotYet) == 0);
    EXPECT_LE(result.Count(GiftState::kAsked), 1) << "at most one is in doubt";
    const int now = MoneyOf("hush", "h");
    EXPECT_GE(now - before, result.Count(GiftState::kGiven));
    EXPECT_LE(now - before, result.Count(GiftState::kGiven) + result.Count(GiftState::kAsked));
    before = now;
  }
}

TEST_F(DemoMoneyTest, APromptOfTheUsersIsLeftAlone) {
  StartInArticle();
  live_.session.SendBytes("/");
  ASSERT_TRUE(Shows(22, u"[搜尋]關鍵字:")) << live_.Dump();
  const ScreenSnapshot before = live_.Screen();
  const MoneyRunResult result = Give({{u"bob", 1}});
  EXPECT_EQ(result.end, MoneyRunEnd::kBusy);
  EXPECT_EQ(live_.Screen().text, before.text);
  EXPECT_EQ(result.Count(GiftState::kNotYet), 1);
}

TEST_F(DemoMoneyTest, WhoMayNotGiveIsToldTheBbssWords) {
  LogIn(u"guest", u"");
  ASSERT_TRUE(WaitUntil([&] { return live_.classifier.Pages().IsAnyKeyBanner(live_.Screen()); }));
  OpenArticle();
  const MoneyRunResult result = Give({{u"bob", 1}});
  EXPECT_EQ(result.end, MoneyRunEnd::kRefused) << live_.Dump();
  EXPECT_EQ(result.said, u"訪客沒有文藝幣");
  EXPECT_TRUE(IsInArticle()) << live_.Dump();
}

}  // namespace
}  // namespace quillet
