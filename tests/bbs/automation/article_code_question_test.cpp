#include "bbs/automation/article_code_question.h"

#include <gtest/gtest.h>

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

using ArticleCodeQuestionTest = AutomationTest;

std::string Article() {
  return kClearScreen + At(0, 0, u"內文") + "\x1b[37;44m" +
         At(23, 0, u"  瀏覽 第 1/1 頁 (100%)  目前顯示: 第 01~05 行") + At(23, 60) + std::string(19, ' ') +
         "\x1b[m" + At(23, 79);
}
std::string Box(std::u16string_view code) {
  return At(19, 0, u"│ 文章代碼(AID): #") + ToBig5(code) + ToBig5(u" (Cats) [bbs.example] 貓") +
         At(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ") + At(23, 79);
}

TEST_F(ArticleCodeQuestionTest, TheBoxIsReadAndTakenAwayAgain) {
  EXPECT_EQ(Follow({{"", Article()}, {"Q", Box(u"1aBc-_42")}, {"\n", Article()}}, AskArticleCode, 20),
            u"1aBc-_42");
}

TEST_F(ArticleCodeQuestionTest, ABoxWithoutACodeIsTakenAwayToo) {
  EXPECT_EQ(Follow({{"", Article()}, {"Q", Box(u"已被刪除")}, {"\n", Article()}}, AskArticleCode), u"");
}

TEST_F(ArticleCodeQuestionTest, NothingIsTypedOnAnotherPage) {
  for (const std::string& page : {ArticleList(), Article() + StarLine(22)})
    EXPECT_EQ(Follow({{"", page}}, AskArticleCode), u"");
}

TEST_F(ArticleCodeQuestionTest, ABbsThatShowsNoBoxIsNotAskedAgain) {
  EXPECT_EQ(Follow({{"", Article()}, {"Q", At(0, 0, u"沒有反應")}}, AskArticleCode), u"");
}

}  // namespace
}  // namespace quillet
