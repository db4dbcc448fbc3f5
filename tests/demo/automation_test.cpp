// The automations from one end to the other at the demo BBS, in a session as the program makes it.
#include <map>

#include "bbs/automation/article_jump.h"
#include "bbs/automation/auto_login.h"
#include "bbs/automation/log_out.h"
#include "bbs/automation/money_run.h"
#include "bbs/automation/push_run.h"
#include "core/charset.h"
#include "core/term_session.h"
#include "demo/content_loader.h"
#include "tests/demo/demo_fixture.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

class DemoAutomationTest : public DemoTest {
 protected:
  void TearDown() override { session_.Disconnect(); }

  // What the automation returns on its worker thread.
  template <typename Automation>
  auto Run(Automation automation) {
    decltype(automation(*static_cast<ScreenWaits*>(nullptr))) result{};
    std::atomic<bool> cancelled{false}, ended{false};
    std::thread worker([&] {
      ScreenWaits waits(session_, classifier_.Pages(), cancelled);
      result = automation(waits);
      ended = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return ended.load(); }, std::chrono::seconds(60))) << Dump();
    cancelled = true;
    worker.join();
    return result;
  }
  void LogIn(const LoginRequest& request) {
    session_.Connect(server->Address(), {}, {.isBbs = true, .autoLogin = true});
    EXPECT_EQ(Run([&](ScreenWaits& waits) { return AutoLogin(waits, request); }), LoginResult::kFinished);
    EXPECT_TRUE(Shows([](const ScreenSnapshot& screen) {
      return RowStartsWith(screen, 0, 0, u"【主功能表】");
    })) << Dump();
  }
  JumpResult Jump(const ArticleReference& to) {
    return Run([&](ScreenWaits& waits) { return JumpToArticle(waits, to.board, to.code); });
  }
  bool Open(ArticlePart part) {
    return Run([&](ScreenWaits& waits) { return waits.OpenArticleUnderCursor(part); });
  }
  template <typename Condition>
  bool Shows(Condition condition) {
    return WaitUntil([&] { return condition(Screen()); });
  }
  bool ShowsArticle() {
    return Shows([](const ScreenSnapshot& screen) { return (screen.pageFlags & PF_READ_TOP) != 0; });
  }
  const ScreenSnapshot& Screen() {
    session_.live.Read(copy_);
    return copy_.screen;
  }
  std::string Dump() { return DumpScreen(Screen()); }
  // The first ordinary article of the small content.
  ArticleReference AnArticle() {
    for (const demo::Board& board : demo::LoadContent(content).boards)
      for (const demo::ArticlePtr& article : board.articles)
        if (article->kind == demo::ArticleKind::kPlain)
          return {.board = FromBig5(board.info.name), .code = FromBig5(article->code)};
    throw std::runtime_error("no article");
  }

  ScreenClassifier classifier_;
  TermSession session_{[this] {
    SessionOptions options;
    options.watcher = &classifier_;
    return options;
  }()};
  LiveScreen::Copy copy_;
};

TEST_F(DemoAutomationTest, EveryLoginEndsOnTheMainMenuAndLeavesByGoodbye) {
  const LoginRequest requests[] = {
      {u"alice", u"wonder"},   {u"mail", u"m"},          {u"notice", u"n"},
      {u"bottom", u"b"},       {u"top", u"t"},           {u"found", u"f"},
      {u"twin", u"double"},    {u"parade", u"p"},        {u"twin", u"double", true},
      {u"parade", u"p", true}, {u"guest", u"not needed"}};
  using enum DemoOptions::Writes;
  for (const auto writes : {kWhole, kAsBbs, kEveryByte}) {
    Start(writes);
    for (const LoginRequest& request : requests) {
      SCOPED_TRACE(testing::Message() << &request - requests << " writes " << static_cast<int>(writes));
      LogIn(request);
    }
    EXPECT_TRUE(Shows([this](const auto& screen) { return classifier_.Pages().IsListCursor(screen); }));
    EXPECT_EQ(Run([](ScreenWaits& waits) { return LogOut(waits); }), LogOutResult::kSaidGoodbye);
  }
}

TEST_F(DemoAutomationTest, ArticlesInAllBoardsAreFoundByTheirCodesAndOpened) {
  content = QUILLET_SOURCE_DIR "/demo/content";
  Start(DemoOptions::Writes::kAsBbs);
  LogIn({u"reader", u"quillet"});
  int jumps = 0;
  for (const demo::Board& board : demo::LoadContent(content).boards)
    for (std::size_t at = 0; at < board.articles.size(); at += 3) {
      const demo::Article& article = *board.articles[at];
      if (article.kind == demo::ArticleKind::kDeleted) continue;
      ASSERT_EQ(Jump({FromBig5(board.info.name), FromBig5(article.code)}), JumpResult::kFound) << Dump();
      const ScreenSnapshot screen = Screen();
      EXPECT_TRUE(classifier_.Pages().IsArticleListStrict(screen)) << Dump();
      EXPECT_EQ(std::stoul(std::string(screen.RowText(screen.cursorRow).substr(2, 5))), at + 1) << Dump();
      // The next jump starts in the article, or on the page before it.
      if (++jumps % 4 != 0) continue;
      if (article.kind == demo::ArticleKind::kPlain)
        EXPECT_TRUE(Open(ArticlePart::kEnd)) << Dump();
      else
        session_.SendBytes("l");
    }
  EXPECT_GE(jumps, 50);
  EXPECT_EQ(Jump({u"NoSuchBoard", u"1zzzzzzz"}), JumpResult::kNoBoard);
}

TEST_F(DemoAutomationTest, EachPieceStandsBelowTheArticleInItsTurn) {
  LogIn({u"alice", u"wonder"});
  ASSERT_EQ(Jump(AnArticle()), JumpResult::kFound);
  ASSERT_TRUE(Open(ArticlePart::kTop));
  const PushOrder order{.text = u"第一句\n第二句，\n", .author = u"alice", .asksCode = true};
  PushLedger ledger(order);
  const PushRunResult result = Run([&](ScreenWaits& waits) { return RunPushOrder(waits, order, ledger); });
  EXPECT_EQ(result.outcome, PushOutcome::kDone) << Dump();
  EXPECT_EQ(result.pushed, 2);
  EXPECT_EQ(result.code, AnArticle().code);
  session_.SendBytes("q");
  ASSERT_EQ(Jump(AnArticle()), JumpResult::kFound);
  ASSERT_TRUE(Open(ArticlePart::kEnd));
  const std::string page = Dump();
  EXPECT_LT(page.find("第一句"), page.find("第二句，")) << page;
}

TEST_F(DemoAutomationTest, EachGetsHisMoneyAndTheArticleIsOpenAgain) {
  LogIn({u"alice", u"wonder"});
  ASSERT_EQ(Jump(AnArticle()), JumpResult::kFound);
  ASSERT_TRUE(Open(ArticlePart::kTop));
  MoneyOrder order{.article = AnArticle(),
                   .gifts = {{u"bob", 10}, {u"nosuchuser", 5}, {u"HUSH", 20}, {u"alice", 1}, {u"bob", 30}}};
  order.article.code.clear();  // it is asked for
  MoneyLedger ledger(order.gifts);
  Run([&](ScreenWaits& waits) {
    RunMoneyOrder(waits, order, ledger);
    return true;
  });
  const MoneyRunResult result = ledger.Result();
  EXPECT_EQ(result.end, MoneyRunEnd::kFinished) << Dump();
  for (std::size_t at = 0; at < result.gifts.size(); ++at) {
    const bool isGiven = at % 2 == 0;
    EXPECT_EQ(result.gifts[at].state, isGiven ? GiftState::kGiven : GiftState::kRefused) << at;
    EXPECT_EQ(result.gifts[at].words, isGiven ? u"" : u"沒有這個人，或不能送給他") << at;
  }
  EXPECT_EQ(result.Sum(GiftState::kGiven), 60);
  EXPECT_TRUE(ShowsArticle()) << Dump();
  const auto bob = Client("bob", "builder");
  bob->Send("x\rp\r");
  EXPECT_TRUE(bob->WaitFor([](const ScreenSnapshot& screen) {
    return PageFacts::ParseMoney(screen) == 200 + 9 + 27;  // after the BBS's tax
  })) << bob->Dump();
}

}  // namespace
}  // namespace quillet
