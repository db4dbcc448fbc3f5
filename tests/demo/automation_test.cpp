// The automations from one end to the other at the demo BBS.
#include "bbs/automation/article_jump.h"
#include "bbs/automation/auto_login.h"
#include "bbs/automation/log_out.h"
#include "bbs/automation/money_run.h"
#include "bbs/automation/push_run.h"
#include "core/charset.h"
#include "demo/content_loader.h"
#include "tests/demo/demo_fixture.h"
#include "tests/support/automation_runner.h"

namespace quillet {
namespace {

class DemoAutomationTest : public DemoTest, protected AutomationRunner {
 protected:
  void TearDown() override { session_.Disconnect(); }

  void LogIn(const LoginRequest& request) {
    session_.Connect(server->Address(), {}, {.isBbs = true, .autoLogin = true});
    EXPECT_EQ(Await([&](ScreenWaits& waits) { return AutoLogin(waits, request); }), LoginResult::kFinished);
    EXPECT_TRUE(WaitUntil([&] { return RowStartsWith(Screen(), 0, 0, u"【主功能表】"); })) << Dump();
  }
  JumpResult Jump(const std::string& board, const std::string& code) {
    return Await([&](ScreenWaits& waits) { return JumpToArticle(waits, FromBig5(board), FromBig5(code)); });
  }
  bool Open(ArticlePart part) {
    return Await([&](ScreenWaits& waits) { return waits.OpenArticleUnderCursor(part); });
  }
  const ScreenSnapshot& Screen() {
    session_.live.Read(copy_);
    return copy_.screen;
  }
  std::string Dump() { return DumpScreen(Screen()); }

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
    EXPECT_EQ(Await(LogOut), LogOutResult::kSaidGoodbye);
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
      ASSERT_EQ(Jump(board.info.name, article.code), JumpResult::kFound) << Dump();
      const ScreenSnapshot screen = Screen();
      EXPECT_TRUE(pages_.IsArticleListStrict(screen)) << Dump();
      EXPECT_EQ(std::stoul(std::string(screen.RowText(screen.cursorRow).substr(2, 5))), at + 1) << Dump();
      // The next jump starts in the article, or on the page before it.
      const bool isPlain = article.kind == demo::ArticleKind::kPlain;
      EXPECT_TRUE(!isPlain || ++jumps % 4 != 0 || Open(ArticlePart::kEnd)) << Dump();
      if (!isPlain) session_.SendBytes("l");
    }
  EXPECT_GE(jumps, 50);
  EXPECT_EQ(Jump("NoSuchBoard", "1zzzzzzz"), JumpResult::kNoBoard);
}

TEST_F(DemoAutomationTest, WhatIsPushedStandsBelowTheArticleAndTheMoneyArrives) {
  const demo::Board board = demo::LoadContent(content).boards[1];
  const std::string code = board.articles[0]->code;
  LogIn({u"alice", u"wonder"});
  ASSERT_EQ(Jump(board.info.name, code), JumpResult::kFound);
  ASSERT_TRUE(Open(ArticlePart::kTop));
  const PushOrder pushes{.text = u"第一句\n第二句，\n", .author = u"alice", .asksCode = true};
  PushLedger ofPushes(pushes);
  const auto push = Await([&](ScreenWaits& waits) { return RunPushOrder(waits, pushes, ofPushes); });
  EXPECT_EQ(push.outcome, PushOutcome::kDone) << Dump();
  EXPECT_EQ(push.code, FromBig5(code));

  MoneyOrder gifts{
      .article = {.board = FromBig5(board.info.name), .code = {}, .lastLine = 0},  // its code is asked for
      .gifts = {{u"bob", 10}, {u"nosuchuser", 5}, {u"HUSH", 20}, {u"alice", 1}, {u"bob", 30}}};
  MoneyLedger ofGifts(gifts.gifts);
  const auto give = [&](ScreenWaits& waits) { return RunMoneyOrder(waits, gifts, ofGifts), true; };
  EXPECT_TRUE(Await(give));
  const MoneyRunResult result = ofGifts.Result();
  EXPECT_EQ(result.end, MoneyRunEnd::kFinished) << Dump();
  for (std::size_t at = 0; at < result.gifts.size(); ++at)
    EXPECT_EQ(result.gifts[at].state, at % 2 == 0 ? GiftState::kGiven : GiftState::kRefused) << at;
  EXPECT_TRUE(WaitUntil([&] { return (Screen().pageFlags & PF_READ_TOP) != 0; })) << Dump();
  const auto bob = Client("bob", "builder", board.info.name);
  bob->Send("1\rl$");
  ASSERT_TRUE(bob->WaitForFlags(PF_READ_END));
  EXPECT_LT(bob->Dump().find("第一句"), bob->Dump().find("第二句，")) << bob->Dump();
  bob->Send("qqqx\rp\r");
  EXPECT_TRUE(bob->WaitFor([](const ScreenSnapshot& screen) {
    return PageFacts::ParseMoney(screen) == 200 + 9 + 27;  // after the BBS's tax
  })) << bob->Dump();
}

}  // namespace
}  // namespace quillet
