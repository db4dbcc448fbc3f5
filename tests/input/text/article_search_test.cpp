#include "input/text/article_search.h"

#include <gtest/gtest.h>

#include "tests/support/kept_lines.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

class ArticleSearchTest : public WithTables {
 protected:
  int CountOf(std::u16string_view wanted) {
    search.SetWanted(wanted);
    search.Read(lines);
    return search.Count();
  }

  ArticleSearch search;
  KeptLines lines = {u"臺北的ＡＢＣ與abc", u"", u"aaaa", u"台　北 Ω"};
};

TEST_F(ArticleSearchTest, WhatReadsAlikeIsAlikeAndHitsAreWholeCharacters) {
  EXPECT_EQ(CountOf(u"aBc"), 2);
  EXPECT_EQ(search.HitsIn(lines.Line(0)), (std::vector<ColumnSpan>{{6, 12}, {14, 17}}));
  EXPECT_EQ(CountOf(u"台"), 2);
  EXPECT_EQ(CountOf(u"臺 北"), 1);
  EXPECT_EQ(CountOf(u"ω"), 1);
  EXPECT_EQ(CountOf(u"aa"), 2) << "they do not overlap";
  EXPECT_EQ(CountOf(u"ω "), 0) << "nothing stands behind the end of a line";
  for (const std::u16string& none : {std::u16string(), std::u16string(1, u'\0'), std::u16string(81, u'a')})
    EXPECT_EQ(CountOf(none), 0);
  // The second byte of one character and the first of the next are none, nor is what no character has.
  ArticleLine hostile;
  hostile.text.fill(0xFF);
  hostile.attr.fill(0xFF);
  lines.lines.assign(100'000, hostile);
  EXPECT_EQ(CountOf(u"北"), 0);
  EXPECT_EQ(CountOf(std::u16string(1, u'\0')), 0);
}

TEST_F(ArticleSearchTest, HitsAreNumberedThroughAllLinesAndGoOnAsTheyGrow) {
  ASSERT_EQ(CountOf(u"a"), 6);
  int number = 0;
  for (int line = 0; line < lines.Count(); ++line)
    for (const ColumnSpan cols : search.HitsIn(lines.Line(line))) {
      EXPECT_EQ(search.At(number, lines), (SearchHit{line, cols}));
      EXPECT_EQ(search.NumberFrom(line, cols.first, lines), number);
      EXPECT_EQ(search.NumberFrom(line, cols.first + 1, lines), ++number);
    }
  EXPECT_EQ(number, 6);
  for (const int outside : {-1, 6, 1000})
    EXPECT_TRUE(search.At(outside, lines).cols.IsEmpty());
  EXPECT_EQ(search.NumberFrom(-1, 0, lines), 0);
  EXPECT_EQ(search.NumberFrom(4, 0, lines), 6);

  lines.lines.push_back(LineOf(u"a"));
  search.Read(lines, 4);
  EXPECT_EQ(search.Count(), 7);
  lines.lines.resize(1);
  search.Read(lines, 4);
  EXPECT_EQ(search.Count(), 2);
}

}  // namespace
}  // namespace quillet
