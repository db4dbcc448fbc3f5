#include "bbs/automation/article_jump.h"

#include <gtest/gtest.h>

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

using ArticleJumpTest = AutomationTest;

constexpr int kThinking = 25;  // milliseconds, several looks of the jump

std::string Article() {
  return kClearScreen + At(23, 0, u"  瀏覽 第 1/1 頁 (100%) ") + At(23, 79);
}
std::string CodePrompt() {
  return At(23, 0, u"搜尋文章代碼(AID): #") + FieldAt(23, 20);
}

JumpResult Jump(ScreenWaits& waits) {
  return JumpToArticle(waits, u"Cats", u"1abcdefg");
}

TEST_F(ArticleJumpTest, AnArticleWhosePageIsHalfReplacedIsLeftOnce) {
  // The list over the old status line, which is replaced last.
  const std::string half = At(0, 0, u"【板主:someone】") + At(3, 0, u"●") + At(4, 0);
  EXPECT_EQ(Follow({{"", Article()},
                    {"q", half},
                    {"", At(5, 0, u"貓")},
                    {"", ArticleList()},
                    {"s", BoardPrompt()},
                    {"Cats\r", ArticleList()},
                    {"#", CodePrompt()},
                    {"1abcdefg\r", ArticleList()}},
                   Jump, kThinking),
            JumpResult::kFound);
}

TEST_F(ArticleJumpTest, ThePauseBehindAnUnknownCodeIsPassedWhereThereIsOne) {
  const std::string unknown = ArticleList() + At(22, 0, u"找不到這個文章代碼(AID)");
  const std::vector<Turn> toCode = {
      {"", ArticleList()}, {"s", BoardPrompt()}, {"Cats\r", ArticleList()}, {"#", CodePrompt()}};
  std::vector<Turn> paused = toCode;
  paused.push_back({"1abcdefg\r", unknown + At(23, 79)});
  paused.push_back({"\n", ArticleList()});
  EXPECT_EQ(Follow(paused, Jump), JumpResult::kNotFound);
  // A message over the first list.
  std::vector<Turn> interrupted = toCode;
  interrupted[0].page += StarLine(22);
  interrupted.insert(interrupted.begin() + 1, {"\n", ArticleList()});
  interrupted.push_back({"1abcdefg\r", ArticleList()});
  EXPECT_EQ(Follow(interrupted, Jump, 120), JumpResult::kFound);
  std::vector<Turn> onList = toCode;
  onList.push_back({"1abcdefg\r", unknown + At(3, 1)});
  EXPECT_EQ(Follow(onList, Jump), JumpResult::kNotFound);
}

}  // namespace
}  // namespace quillet
