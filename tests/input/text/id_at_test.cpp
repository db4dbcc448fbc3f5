#include "input/text/id_at.h"

#include <gtest/gtest.h>

#include "tests/support/article_pages.h"
#include "tests/support/pages.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

class IdAtTest : public WithTables {
 protected:
  // The id at each column of the row, told once for each run of columns: "3-9 someone".
  static std::string IdsIn(const ScreenSnapshot& screen, int row) {
    std::string all;
    const UnderstoodPage page = Understand(screen);
    for (int col = -1; col <= kCols; ++col)
      if (const auto placed = PlacedIdAt(screen, page, row, col)) {
        EXPECT_EQ(IdAt(screen, page, row, col), placed->id);
        if (col == placed->first)
          all += std::to_string(placed->first) + "-" + std::to_string(placed->last) + " " +
                 std::string(placed->id.begin(), placed->id.end()) + ";";
        EXPECT_TRUE(col >= placed->first && col < placed->last);
      }
    return all;
  }
};

TEST_F(IdAtTest, AListLineHasItsAuthor) {
  ScreenBuilder page;
  page.Put(5, 3, u"1234 + 12 6/07").Put(5, 17, u"SomeBody12").Put(5, 30, u"□ Title");
  page.Put(6, 17, u"-").Put(6, 30, u"(本文已被刪除)");
  page.Put(7, 17, u"中文abc");
  page.Put(2, 17, u"heading");
  page.screen.pageFlags = PF_ARTICLE_LIST;
  EXPECT_EQ(IdsIn(page.screen, 5), "17-27 SomeBody12;");
  for (const int row : {-1, 2, 6, 7, 8, 23, 24})
    EXPECT_EQ(IdsIn(page.screen, row), "") << row;
  page.screen.pageFlags = PF_LIST_CURSOR;
  EXPECT_EQ(IdsIn(page.screen, 5), "");
}

TEST_F(IdAtTest, AnArticleHasItsAuthorAndWhoPushed) {
  ScreenBuilder page;
  page.screen = ArticleHeader(u"author99 (暱稱)");
  page.Put(8, 0, u"推 pusher      : good http://a.example 06/07 12:00").Put(9, 0, u"他說 nobody: 不好");
  page.Put(23, 0, u"推 bottom: x");
  for (const std::uint32_t flags :
       {std::uint32_t{PF_READING}, std::uint32_t{PF_PUSH_OVER_READER | PF_ARTICLE_LIST}}) {
    page.screen.pageFlags = flags;
    EXPECT_EQ(IdsIn(page.screen, 0), "7-15 author99;");
    EXPECT_EQ(IdsIn(page.screen, 8), "3-9 pusher;");
    for (const int row : {-1, 1, 9, 23, 24})
      EXPECT_EQ(IdsIn(page.screen, row), "") << row;
  }
}

TEST_F(IdAtTest, ALineOfTheLocalArticleHasTheSame) {
  ScreenBuilder page;
  page.screen = ArticleHeader(u"author99 (暱稱)");
  page.Put(5, 0, u"→ pusher: so");
  page.screen.text[7] = page.screen.text[0];
  page.screen.attr[7] = page.screen.attr[0];
  const ScreenSnapshot screen =
      Classified(WithReaderFooter(page.screen, u"  瀏覽 第 1/2 頁 ( 50%)  目前顯示: 第 01~22 行", 0xAB));
  ArticleLines lines;
  ASSERT_EQ(lines.Add(screen, Understand(screen)), ArticleLines::Added::kMore);
  EXPECT_EQ(PlacedIdInArticle(lines.At(0), 14), (PlacedId{7, 15, u"author99"}));
  EXPECT_EQ(IdInArticle(lines.At(0), 15), u"");
  EXPECT_EQ(IdInArticle(lines.At(7), 10), u"") << "a header that the text quotes";
  EXPECT_EQ(PlacedIdInArticle(lines.At(5), 3), (PlacedId{3, 9, u"pusher"}));
  EXPECT_EQ(IdInArticle(lines.At(5), 2), u"");
}

}  // namespace
}  // namespace quillet
