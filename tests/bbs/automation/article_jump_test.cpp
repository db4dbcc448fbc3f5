#include "bbs/automation/article_jump.h"

#include "bbs/automation/article_code_question.h"
#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

class ArticleJumpTest : public AutomationTest {
 protected:
  // From `start`, which ends on a page that knows the key for a board, to the code, and `end` behind it.
  JumpResult Jump(const Turns& start, const Turns& end, int thinking = 25) {
    const Turns toCode{{"s", BoardPrompt()},
                       {"Cats\r", ArticleList({}, u"看板《cats》")},
                       {"#", At(23, 0, u"搜尋文章代碼(AID): #") + FieldAt(23, 20)}};
    return JumpIn(start + toCode + end, thinking);
  }
  JumpResult JumpIn(const Turns& turns, int thinking = 0) {
    return Follow(
        turns, [](ScreenWaits& waits) { return JumpToArticle(waits, u"Cats", u"1abcdefg"); }, thinking);
  }
  const Turn list_{"", ArticleList()}, found_{"1abcdefg\r", ArticleList()};
};

TEST_F(ArticleJumpTest, TheCodeIsTypedInTheBoardAndNowhereElse) {
  EXPECT_EQ(Jump({list_}, {found_}), JumpResult::kFound);
  // The article is left once.
  EXPECT_EQ(Jump({{"", Reader()}, {"q", HalfDrawnList()}, list_}, {found_}), JumpResult::kFound);
  EXPECT_EQ(Jump({{"", ArticleList() + StarLine(22)}, {"\n", ArticleList()}}, {found_}, 120),
            JumpResult::kFound);
  // Not every list knows the key for another board.
  EXPECT_EQ(Jump({list_,
                  {"s", At(1, 0, u"搜尋使用者: ") + FieldAt(1, 12)},
                  {"\x03", Menu(u"【使用者名單】")},
                  {kLeft, MainMenu()}},
                 {found_}),
            JumpResult::kFound);
  // A name that the BBS does not know may leave the cursor on another board.
  EXPECT_EQ(JumpIn({list_, {"s", BoardPrompt()}, {"Cats\r", ArticleList({}, u"看板《Dogs》")}}),
            JumpResult::kNoBoard);
}

TEST_F(ArticleJumpTest, ThePauseBehindAnUnknownCodeIsPassedWhereThereIsOne) {
  const std::string unknown = ArticleList() + At(22, 0, u"找不到這個文章代碼(AID)");
  EXPECT_EQ(Jump({list_}, {{"1abcdefg\r", unknown + At(23, 79)}, {"\n", ArticleList()}}),
            JumpResult::kNotFound);
  EXPECT_EQ(Jump({list_}, {{"1abcdefg\r", unknown + At(3, 1)}}), JumpResult::kNotFound);
}

TEST_F(ArticleJumpTest, WhatIsNoNameAndNoCodeIsNotTyped) {
  const auto jump = [&](std::u16string_view board, std::u16string_view code) {
    return Follow({list_}, [&](ScreenWaits& waits) { return JumpToArticle(waits, board, code); });
  };
  for (const auto board : {u"", u"Cats\rq", u"貓", u"ThirteenChars", u"a b"})
    EXPECT_EQ(jump(board, u"1abcdefg"), JumpResult::kNoBoard);
  for (const auto code : {u"", u"1abc", u"1abcdef\r", u"123456789"})
    EXPECT_EQ(jump(u"Cats", code), JumpResult::kNotFound);
}

TEST_F(ArticleJumpTest, AnArticlesCodeIsReadOffItsBoxWhichIsTakenAwayAgain) {
  for (const std::u16string_view code : {u"1aBc-_42", u"已被刪除"})
    EXPECT_EQ(Follow({{"", Reader()}, {"Q", ArticleBox(code)}, {"\n", Reader()}}, AskArticleCode, 20),
              code == u"1aBc-_42" ? code : u"");
  // Nothing is typed on another page, and a BBS that shows no box is not asked again.
  for (const Turns& turns :
       {Turns{list_}, Turns{{"", Reader() + StarLine(22)}}, Turns{{"", Reader()}, {"Q", ""}}})
    EXPECT_EQ(Follow(turns,
                     [](ScreenWaits& waits) {
                       waits.EndAfter(std::chrono::milliseconds(300));
                       return AskArticleCode(waits);
                     }),
              u"");
}

}  // namespace
}  // namespace quillet
