#include "bbs/automation/article_jump.h"

#include "bbs/automation/article_code_question.h"
#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

constexpr int kThinking = 25;  // milliseconds, several looks of the jump

class ArticleJumpTest : public AutomationTest {
 protected:
  JumpResult Jump(std::vector<Turn> turns, std::vector<Turn> more = {}, int thinking = kThinking) {
    turns.insert(turns.end(), more.begin(), more.end());
    return Follow(
        turns, [](ScreenWaits& waits) { return JumpToArticle(waits, u"Cats", u"1abcdefg"); }, thinking);
  }
  const Turn prompt_{"s", BoardPrompt()};
  const std::vector<Turn> toCode_ = {{"", ArticleList()},
                                     prompt_,
                                     {"Cats\r", ArticleList({}, u"看板《cats》")},
                                     {"#", At(23, 0, u"搜尋文章代碼(AID): #") + FieldAt(23, 20)}};
};

TEST_F(ArticleJumpTest, TheCodeIsTypedInTheBoardAndNowhereElse) {
  EXPECT_EQ(Jump(toCode_, {{"1abcdefg\r", ArticleList()}}), JumpResult::kFound);
  // The list over the old status line, which is replaced last: the article is left once.
  std::vector<Turn> inArticle = toCode_;
  inArticle[0] = {"", Reader()};
  inArticle[1].typed = "";
  inArticle.insert(
      inArticle.begin() + 1,
      {{"q", At(0, 0, u"【板主:someone】") + At(3, 0, u"●") + At(4, 0)}, {"", ArticleList()}, {"s", ""}});
  EXPECT_EQ(Jump(inArticle, {{"1abcdefg\r", ArticleList()}}), JumpResult::kFound);
  // A message over the first list.
  std::vector<Turn> interrupted = toCode_;
  interrupted[0].page += StarLine(22);
  interrupted.insert(interrupted.begin() + 1, {"\n", ArticleList()});
  EXPECT_EQ(Jump(interrupted, {{"1abcdefg\r", ArticleList()}}, 120), JumpResult::kFound);
  // A name that the BBS does not know may leave the cursor on another board.
  EXPECT_EQ(Jump({{"", ArticleList()}, prompt_, {"Cats\r", ArticleList({}, u"看板《Dogs》")}}),
            JumpResult::kNoBoard);
}

TEST_F(ArticleJumpTest, ThePauseBehindAnUnknownCodeIsPassedWhereThereIsOne) {
  const std::string unknown = ArticleList() + At(22, 0, u"找不到這個文章代碼(AID)");
  EXPECT_EQ(Jump(toCode_, {{"1abcdefg\r", unknown + At(23, 79)}, {"\n", ArticleList()}}),
            JumpResult::kNotFound);
  EXPECT_EQ(Jump(toCode_, {{"1abcdefg\r", unknown + At(3, 1)}}), JumpResult::kNotFound);
}

// Not every list knows the key for another board.
TEST_F(ArticleJumpTest, WhereTheKeyForABoardAsksForSomethingElseItIsLeft) {
  std::vector<Turn> turns = toCode_;
  turns.insert(turns.begin() + 1, {{"s", At(1, 0, u"搜尋使用者: ") + FieldAt(1, 12)},
                                   {"\x03", Menu(u"【使用者名單】")},
                                   {kLeft, MainMenu()}});
  EXPECT_EQ(Jump(turns, {{"1abcdefg\r", ArticleList()}}), JumpResult::kFound);
}

TEST_F(ArticleJumpTest, WhatIsNoNameAndNoCodeIsNotTyped) {
  const struct {
    std::u16string_view board, code;
    JumpResult result;
  } cases[] = {
      {u"", u"1abcdefg", JumpResult::kNoBoard},       {u"Cats\rq", u"1abcdefg", JumpResult::kNoBoard},
      {u"貓", u"1abcdefg", JumpResult::kNoBoard},     {u"ThirteenChars", u"1abcdefg", JumpResult::kNoBoard},
      {u"a b", u"1abcdefg", JumpResult::kNoBoard},    {u"Cats", u"", JumpResult::kNotFound},
      {u"Cats", u"1abc", JumpResult::kNotFound},      {u"Cats", u"1abcdef\r", JumpResult::kNotFound},
      {u"Cats", u"123456789", JumpResult::kNotFound},
  };
  for (const auto& each : cases)
    EXPECT_EQ(Follow({{"", ArticleList()}},
                     [&](ScreenWaits& waits) { return JumpToArticle(waits, each.board, each.code); }),
              each.result)
        << &each - cases;
}

TEST_F(ArticleJumpTest, AnArticlesCodeIsReadOffItsBoxWhichIsTakenAwayAgain) {
  const struct { std::u16string_view box, code; } cases[] = {{u"1aBc-_42", u"1aBc-_42"}, {u"已被刪除", u""}};
  for (const auto& each : cases)
    EXPECT_EQ(Follow({{"", Reader()}, {"Q", ArticleBox(each.box)}, {"\n", Reader()}}, AskArticleCode, 20),
              each.code);
  // Nothing is typed on another page, and a BBS that shows no box is not asked again.
  for (const std::vector<Turn>& turns : {std::vector<Turn>{{"", ArticleList()}},
                                         {{"", Reader() + StarLine(22)}},
                                         {{"", Reader()}, {"Q", At(0, 0, u"沒有反應")}}})
    EXPECT_EQ(Follow(turns,
                     [](ScreenWaits& waits) {
                       waits.EndAfter(std::chrono::milliseconds(300));
                       return AskArticleCode(waits);
                     }),
              u"");
}

}  // namespace
}  // namespace quillet
