#include <map>

#include "bbs/automation/article_jump.h"
#include "bbs/automation/auto_login.h"
#include "demo/content_loader.h"
#include "demo/demo_server.h"
#include "tests/demo/live_session.h"
#include "tests/support/tables.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

// On the content that comes with the program, logged in.
class DemoJumpTest : public WithTables {
 protected:
  struct Target {
    std::u16string board;
    std::u16string code;
    int number = 0;  // of its line in the list
    demo::ArticleKind kind{};
  };

  void SetUp() override {
    WithTables::SetUp();
    const std::filesystem::path content = QUILLET_SOURCE_DIR "/demo/content";
    DemoOptions options;
    options.contentFolder = content;
    server_ = std::make_unique<DemoServer>(options);
    ASSERT_EQ(server_->Error(), "");
    for (const demo::Board& board : demo::LoadContent(content).boards) {
      int number = 0;
      for (const demo::ArticlePtr& article : board.articles) {
        ++number;
        if (article->kind != demo::ArticleKind::kDeleted)
          targets_.push_back({FromBig5(board.info.name), FromBig5(article->code), number, article->kind});
      }
    }
    ASSERT_TRUE(live_.Connect(server_->Address()));
    EXPECT_EQ(live_.Run([](ScreenWaits& waits) {
      return AutoLogin(waits, {u"reader", u"quillet"});
    }),
              LoginResult::kFinished);
  }

  JumpResult Jump(const Target& target) {
    return live_.Run([&](ScreenWaits& waits) { return JumpToArticle(waits, target.board, target.code); });
  }
  // Types and waits until the screen shows something else.
  void Type(const std::string& keys) {
    const ScreenSnapshot before = live_.Screen();
    live_.session.SendBytes(keys);
    EXPECT_TRUE(WaitUntil([&] { return live_.Screen().text != before.text; })) << keys;
  }
  bool Shows(int row, int col, std::u16string_view text) {
    return WaitUntil([&] { return RowStartsWith(live_.Screen(), row, col, text); });
  }
  bool ShowsMenu() {
    return WaitUntil([&] { return live_.classifier.Pages().IsListCursor(live_.Screen()); });
  }
  void ExpectOn(const Target& target) {
    const ScreenSnapshot screen = live_.Screen();
    EXPECT_TRUE(live_.classifier.Pages().IsArticleListStrict(screen)) << live_.Dump();
    EXPECT_NE(FromBig5(screen.RowText(0)).find(u"《" + target.board + u"》"), std::u16string::npos);
    EXPECT_EQ(std::stoi(std::string(screen.RowText(screen.cursorRow).substr(2, 5))), target.number)
        << live_.Dump();
  }

  std::unique_ptr<DemoServer> server_;
  std::vector<Target> targets_;
  LiveSession live_;
};

TEST_F(DemoJumpTest, FiftyArticlesInAllBoardsAreFoundByTheirCodes) {
  std::map<std::u16string, int> perBoard;
  int found = 0;
  for (const Target& target : targets_) {
    if (perBoard[target.board]++ % 3 != 0) continue;  // neighbours are of other boards, then
    ASSERT_EQ(Jump(target), JumpResult::kFound) << live_.Dump();
    ExpectOn(target);
    // The next jump starts in the article.
    if (target.kind == demo::ArticleKind::kPlain && ++found % 4 == 0) {
      EXPECT_TRUE(
          live_.Run([](ScreenWaits& waits) { return waits.OpenArticleUnderCursor(ArticlePart::kEnd); }));
    }
  }
  EXPECT_GE(perBoard.size(), 12u);
  EXPECT_GE(found, 50);
}

TEST_F(DemoJumpTest, WhatTheBbsDoesNotKnowLeavesTheUserOnAList) {
  const Target& known = targets_.front();
  EXPECT_EQ(Jump({known.board, u"1zzzzzzz"}), JumpResult::kNotFound);
  EXPECT_TRUE(live_.classifier.Pages().IsArticleListStrict(live_.Screen())) << live_.Dump();
  // From the board list, where the name selects a board and the last one stays selected.
  Type("qq");
  ASSERT_TRUE(Shows(0, 0, u"【主功能表】"));
  Type("b\r");
  ASSERT_TRUE(Shows(0, 0, u"【看板列表】"));
  EXPECT_EQ(Jump({u"NoSuchBoard", known.code}), JumpResult::kNoBoard);
  EXPECT_TRUE(ShowsMenu()) << live_.Dump();
  EXPECT_EQ(Jump(known), JumpResult::kFound);
  ExpectOn(known);
}

TEST_F(DemoJumpTest, WhatIsNoNameAndNoCodeIsNotTyped) {
  ASSERT_TRUE(ShowsMenu());
  const ScreenSnapshot before = live_.Screen();
  for (const auto board : {u"", u"Cats\rq", u"貓", u"ThirteenChars", u"a b"})
    EXPECT_EQ(Jump({board, targets_.front().code}), JumpResult::kNoBoard);
  for (const auto code : {u"", u"1abc", u"1abcdef\r", u"123456789"})
    EXPECT_EQ(Jump({targets_.front().board, code}), JumpResult::kNotFound);
  EXPECT_EQ(live_.Screen().text, before.text);
}

TEST_F(DemoJumpTest, EveryPageThatCanBeLeftIsLeft) {
  // What is typed on the main menu, and what shows then.
  struct Start {
    std::vector<std::string> keys;
    int row, col;
    std::u16string text;
  };
  const Start starts[] = {
      {{"m\r"}, 0, 0, u"【郵件選單】"},
      {{"m\r", "\r"}, 0, 0, u"【郵件列表】"},
      {{"\x15"}, 0, 0, u"【使用者名單】"},
      {{"x\r"}, 0, 0, u"【系統資訊】"},
      {{"x\r", "\r"}, 23, 2, u"瀏覽"},
      {{"b\r"}, 0, 0, u"【看板列表】"},
      {{"b\r", "\r", "z"}, 0, 0, u"【精華文章】"},
      {{"b\r", "\r", "h"}, 23, 2, u"瀏覽"},
      {{"b\r", "\r", "Q"}, 23, 1, u"▄▄▄"},
      {{"b\r", "\r", "l", "Q"}, 23, 1, u"▄▄▄"},
  };
  for (const Start& start : starts) {
    SCOPED_TRACE(&start - starts);
    for (int page = 0; page < 6 && !RowStartsWith(live_.Screen(), 0, 0, u"【主功能表】"); ++page)
      Type("q");
    for (const std::string& keys : start.keys) {
      Type(keys);
      ASSERT_TRUE(WaitUntil([&] { return live_.Screen().cursorRow != 0; }));
    }
    ASSERT_TRUE(Shows(start.row, start.col, start.text)) << live_.Dump();
    EXPECT_EQ(Jump(targets_[20]), JumpResult::kFound) << live_.Dump();
    ExpectOn(targets_[20]);
  }
  // The pages before an article of its own kind.
  for (const Target& target : targets_) {
    if (target.kind == demo::ArticleKind::kPlain) continue;
    ASSERT_EQ(Jump(target), JumpResult::kFound);
    Type("l");
    EXPECT_EQ(Jump(targets_[20]), JumpResult::kFound) << live_.Dump();
    ExpectOn(targets_[20]);
  }
}

}  // namespace
}  // namespace quillet
