#include "bbs/line_flags.h"

#include <vector>

#include "bbs/page_facts.h"
#include "bbs/page_flags.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

class LineFlagsTest : public WithTables {
 protected:
  static LineFlags FlagsOf(ScreenBuilder builder, std::uint32_t pageFlags,
                           const std::vector<std::u16string>& words = {}) {
    builder.screen.pageFlags = pageFlags;
    return FlagLines(PageFacts(), builder.screen, Keywords(words));
  }
  static std::vector<int> RowsWith(const LineFlags& flags, std::uint8_t mask) {
    std::vector<int> rows;
    for (int row = 0; row < kRows; ++row)
      if ((flags[static_cast<std::size_t>(row)] & mask) != 0) rows.push_back(row);
    return rows;
  }
};

TEST_F(LineFlagsTest, PushLinesInTheReaderAndUnderItsPrompts) {
  ScreenBuilder page;
  for (const int row : {0, 7, 8, 21, 22, 23})
    page.Put(row, 0, u"推 kagami: 推");
  const std::vector<int> lines = {0, 7, 8, 21, 22};
  EXPECT_EQ(RowsWith(FlagsOf(page, PF_READING), LF_PUSH), lines);
  EXPECT_EQ(RowsWith(FlagsOf(page, PF_READING | PF_STAR_LINE), LF_PUSH), lines);
  EXPECT_EQ(RowsWith(FlagsOf(page, PF_INPUT_FIELD), LF_PUSH), lines);
  EXPECT_EQ(RowsWith(FlagsOf(page, PF_PUSH_LINE | PF_PUSH_OVER_READER), LF_PUSH),
            (std::vector<int>{0, 7, 8, 21, 22, 23}));
  for (const std::uint32_t other :
       {std::uint32_t{0}, std::uint32_t{PF_EDITOR}, std::uint32_t{PF_LIST_CURSOR},
        std::uint32_t{PF_EDITOR | PF_INPUT_FIELD}, std::uint32_t{PF_ARTICLE_LIST}})
    EXPECT_EQ(RowsWith(FlagsOf(page, other), LF_PUSH), std::vector<int>{});
}

TEST_F(LineFlagsTest, MarksOfAnArticleList) {
  const struct {
    std::u16string_view line;
    int mark;
  } cases[] = {
      {u"  12345  99 1/05 kagami       □ x", LF_LIST_READ},
      {u"  12345 s 9 1/05 kagami       □ x", LF_LIST_READ},
      {u"  12345 ~ 9 1/05 kagami       □ x", LF_LIST_NEWS},
      {u"> 12345 + 9 1/05 kagami       □ x", 0},
      {u"  12345 M 9 1/05 kagami       □ x", 0},
      {u"  12345 ~ 9 1/05 -            □ x", LF_DELETED},
      {u"  12345     1/05 -            □ (本文已被刪除)", LF_DELETED},
      {u"  12345 ", 0},  // drawn half
      {u"", 0},          // below the last article
  };
  for (const auto& entry : cases)
    for (const int row : {2, 3, 22, 23}) {
      const LineFlags flags = FlagsOf(ScreenBuilder().Put(row, 0, entry.line), PF_ARTICLE_LIST);
      for (int other = 0; other < kRows; ++other)
        EXPECT_EQ(flags[static_cast<std::size_t>(other)],
                  other == row && row != 2 && row != 23 ? entry.mark : 0);
    }
  ScreenBuilder trap;  // the second byte of a character is no mark
  trap.Put(5, 0, u"  12345 ~ 9 1/05 kagami").screen.text[5][7] = 0xA4;
  EXPECT_EQ(FlagsOf(trap, PF_ARTICLE_LIST)[5], 0);
  EXPECT_EQ(FlagsOf(ScreenBuilder().Put(5, 0, cases[3].line), PF_LIST_CURSOR)[5], 0);
}

TEST_F(LineFlagsTest, KeywordsWithoutRegardToCase) {
  const struct {
    std::u16string_view word, line;
    bool contained;
  } cases[] = {
      {u"Moon", u"[閒聊] MOON", true}, {u"moon", u"moo", false}, {u"ａ", u"Ａ", true}, {u"ω", u"Ω", true},
      {u"月亮", u"月光 亮", false},    {u"[", u"{", false},
  };
  for (const auto& entry : cases) {
    const std::vector<std::u16string> words = {u"zzz", std::u16string(entry.word), u""};
    EXPECT_EQ(Keywords(words).Contained(entry.line), entry.contained);
    const LineFlags flags = FlagsOf(ScreenBuilder().Put(9, 20, entry.line), PF_READING, words);
    EXPECT_EQ(RowsWith(flags, LF_KEYWORD), entry.contained ? std::vector<int>{9} : std::vector<int>{});
  }
  EXPECT_TRUE(Keywords({u""}).Empty());
  const Keywords nested({u"Apple", u"Apple Watch", u"x"});
  const struct {
    std::u16string_view text;
    std::size_t length;
  } begins[] = {{u"APPLE watches", 11}, {u"apple watc", 5}, {u"an apple", 0}, {u"x", 1}, {u"", 0}};
  for (const auto& entry : begins)
    EXPECT_EQ(nested.LengthAtBegin(entry.text), entry.length);

  ScreenBuilder list;
  list.Put(2, 30, u"moon").Put(4, 17, u"kagami       □ moon").Put(5, 17, u"-            □ moon");
  list.Put(23, 30, u"moon");
  EXPECT_EQ(RowsWith(FlagsOf(list, PF_ARTICLE_LIST, {u"moon"}), LF_KEYWORD), std::vector<int>{4});
  EXPECT_EQ(RowsWith(FlagsOf(list, 0, {u"moon"}), LF_KEYWORD), std::vector<int>{});
}

}  // namespace
}  // namespace quillet
