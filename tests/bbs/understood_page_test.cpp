#include "bbs/understood_page.h"

#include <random>
#include <vector>

#include "bbs/keywords.h"
#include "bbs/screen_classifier.h"
#include "bbs/screen_fields.h"
#include "tests/support/article_pages.h"
#include "tests/support/tables.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

class UnderstoodPageTest : public WithTables {
 protected:
  static UnderstoodPage PageOf(ScreenBuilder builder, std::uint32_t pageFlags,
                               const std::vector<std::u16string>& words = {}) {
    builder.screen.pageFlags = pageFlags;
    UnderstoodPage page = Understand(builder.screen);
    KeywordMarks().Mark(builder.screen, Keywords(words), page);
    return page;
  }
  static std::vector<int> RowsWith(const UnderstoodPage& page, std::uint8_t mask) {
    std::vector<int> rows;
    for (int row = 0; row < kRows; ++row)
      if ((page.Line(row).flags & mask) != 0) rows.push_back(row);
    return rows;
  }
};

TEST_F(UnderstoodPageTest, PushLinesInTheReaderAndUnderItsPrompts) {
  ScreenBuilder page;
  for (const int row : {0, 7, 8, 21, 22, 23})
    page.Put(row, 0, u"推 kagami: 推");
  const std::vector<int> lines = {0, 7, 8, 21, 22};
  EXPECT_EQ(RowsWith(PageOf(page, PF_READING), LF_PUSH), lines);
  EXPECT_EQ(RowsWith(PageOf(page, PF_READING | PF_STAR_LINE), LF_PUSH), lines);
  EXPECT_EQ(RowsWith(PageOf(page, PF_INPUT_FIELD), LF_PUSH), lines);
  EXPECT_EQ(RowsWith(PageOf(page, PF_PUSH_LINE | PF_PUSH_OVER_READER), LF_PUSH),
            (std::vector<int>{0, 7, 8, 21, 22, 23}));
  for (const std::uint32_t other :
       {std::uint32_t{0}, std::uint32_t{PF_EDITOR}, std::uint32_t{PF_LIST_CURSOR},
        std::uint32_t{PF_EDITOR | PF_INPUT_FIELD}, std::uint32_t{PF_ARTICLE_LIST}})
    EXPECT_EQ(RowsWith(PageOf(page, other), LF_PUSH), std::vector<int>{});
}

TEST_F(UnderstoodPageTest, PartsOfAPushLine) {
  const struct {
    std::u16string_view line;
    PushKind kind;
    std::u16string_view words, address, time;
  } cases[] = {
      {u"推 kagami: 鏡子 1.2.3.4 11/06 06:04", PushKind::kGood, u"鏡子", u"1.2.3.4", u"11/06 06:04"},
      {u"噓 kagami  : 1.2.3 99/99 99:99", PushKind::kBad, u"1.2.3", u"", u"99/99 99:99"},
      {u"→ kagami:11/06 06:04", PushKind::kNote, u"11/06 06:04", u"", u""},
  };
  for (const auto& entry : cases) {
    const ScreenBuilder builder = ScreenBuilder().Put(9, 0, entry.line);
    const UnderstoodPage page = PageOf(builder, PF_READING);
    ASSERT_TRUE(page.Line(9).push);
    const PushLine& push = *page.Line(9).push;
    EXPECT_EQ(push.kind, entry.kind);
    EXPECT_EQ(PushAuthor(builder.screen, page, 9), u"kagami");
    EXPECT_EQ(FieldText(builder.screen.text[9], push.words), entry.words);
    EXPECT_EQ(FieldText(builder.screen.text[9], push.address), entry.address);
    EXPECT_EQ(FieldText(builder.screen.text[9], push.time), entry.time);
    EXPECT_EQ(push.stamp.has_value(), !entry.time.empty());
  }
}

TEST_F(UnderstoodPageTest, MarksOfAnArticleList) {
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
      const UnderstoodPage page = PageOf(ScreenBuilder().Put(row, 0, entry.line), PF_ARTICLE_LIST);
      for (int other = 0; other < kRows; ++other)
        EXPECT_EQ(page.Line(other).flags, other == row && row != 2 && row != 23 ? entry.mark : 0);
    }
  ScreenBuilder trap;  // the second byte of a character is no mark
  trap.Put(5, 0, u"  12345 ~ 9 1/05 kagami").screen.text[5][7] = 0xA4;
  EXPECT_EQ(PageOf(trap, PF_ARTICLE_LIST).Line(5).flags, 0);
  EXPECT_EQ(PageOf(ScreenBuilder().Put(5, 0, cases[3].line), PF_LIST_CURSOR).Line(5).flags, 0);
}

TEST_F(UnderstoodPageTest, PartsOfAListLine) {
  ScreenBuilder builder;
  builder.Put(4, 0, u"●12345 +爆 1/05 kagami       □ 鏡子  ").Put(5, 0, u"    ★  m  11/06 -");
  const UnderstoodPage page = PageOf(builder, PF_ARTICLE_LIST);
  const auto text = [&](int row, CellRange range) {
    return FieldText(builder.screen.text[static_cast<std::size_t>(row)], range);
  };
  const ListedArticle& first = page.Line(4).listed.value();
  EXPECT_EQ(NumberOf(builder.screen, 4, first), 12345);
  EXPECT_EQ(first.mark, '+');
  EXPECT_EQ(text(4, first.pushCount), u"爆");
  EXPECT_EQ(first.author, (CellRange{17, 23}));
  EXPECT_EQ(first.title, (CellRange{30, 37}));
  EXPECT_EQ(ListedTitle(builder.screen, page, 4), u"□ 鏡子");
  const ListedArticle& pinned = page.Line(5).listed.value();
  EXPECT_EQ(NumberOf(builder.screen, 5, pinned), 0);
  EXPECT_TRUE(pinned.pushCount.IsEmpty() && pinned.title.IsEmpty());
  EXPECT_FALSE(page.Line(6).listed);
}

TEST_F(UnderstoodPageTest, TheFooterTellsWhereTheReaderStands) {
  ScreenBuilder builder;
  builder.Put(23, 0, u"  瀏覽 第 12/34 頁 ( 33%)  目前顯示: 第 221~242 行");
  const ReaderFooter footer = PageOf(builder, PF_READING).footer;
  EXPECT_EQ(footer, (ReaderFooter{.lines = LineRange{221, 242}, .lastLine = 242, .page = 12, .percent = 33}));
  EXPECT_EQ(PageOf(builder, PF_LIST_CURSOR).footer, ReaderFooter{});
}

TEST_F(UnderstoodPageTest, KeywordsWithoutRegardToCase) {
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
    const UnderstoodPage page = PageOf(ScreenBuilder().Put(9, 20, entry.line), PF_READING, words);
    EXPECT_EQ(RowsWith(page, LF_KEYWORD), entry.contained ? std::vector<int>{9} : std::vector<int>{});
  }
  ScreenBuilder otherPair;  // a second pair of bytes for the same character
  otherPair.screen.text[9][20] = 0x82;
  otherPair.screen.text[9][21] = 0xA7;
  EXPECT_EQ(RowsWith(PageOf(otherPair, PF_READING, {u"具"}), LF_KEYWORD), std::vector<int>{9});
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
  UnderstoodPage page = PageOf(list, PF_ARTICLE_LIST, {u"moon"});
  EXPECT_EQ(RowsWith(page, LF_KEYWORD), std::vector<int>{4});
  KeywordMarks().Mark(list.screen, Keywords({u"sun"}), page);
  EXPECT_EQ(RowsWith(page, LF_KEYWORD), std::vector<int>{}) << "other words than before";
  EXPECT_EQ(RowsWith(PageOf(list, 0, {u"moon"}), LF_KEYWORD), std::vector<int>{});
}

// ---- Screen after screen.

// Draws on: a line or two, sometimes another page or other flags.
class Drawn {
 public:
  explicit Drawn(unsigned seed) : random_(seed) {}
  const ScreenSnapshot& Next() {
    if (Below(8) == 0) screen_ = pages_[Below(4)];
    for (std::size_t count = Below(3); count > 0; --count)
      DrawLine(Below(kRows));
    if (Below(12) == 0) screen_.attr[0][Below(70)] = static_cast<std::uint8_t>(random_());
    screen_.cursorRow = static_cast<int>(Below(kRows));
    screen_.cursorCol = static_cast<int>(Below(kCols));
    if (Below(3) == 0) screen_.pageFlags = random_() & 0x7FFFF;
    if (Below(3) == 0) ClassifyScreen(tests_, screen_, ScreenReason::kUpdated);
    return screen_;
  }

 private:
  std::size_t Below(std::size_t limit) { return (random_() >> 8) % limit; }
  void DrawLine(std::size_t row) {
    const std::u16string_view lines[] = {u"推 kagami: 鏡子 http://a.example/b 11/06 06:04",
                                         u"→ k : #1a2B3c4_ (Test)",
                                         u"噓 9k: x",
                                         u"  12345 ~99 1/05 kagami       □ 鏡子",
                                         u"        , 使用 → 加註方式 ",
                                         u"│ (AID): #1a2B3c4_ (Test)"};
    ScreenBuilder builder;
    builder.Put(static_cast<int>(row), 0, lines[Below(6)]);
    screen_.text[row] = builder.screen.text[row];
    for (std::size_t noise = Below(5); noise == 1 || noise == 2; --noise)
      screen_.text[row][Below(kCols)] = "\xA4 a:/#"[Below(6)];
  }

  std::minstd_rand random_;
  PageTests tests_;
  ScreenSnapshot screen_ = ScreenBuilder().screen;
  const ScreenSnapshot pages_[4] = {screen_, WithReaderFooter(ArticleHeader()), ArticleHeader(),
                                    ScreenBuilder().Put(23, 0, u" 文章選讀 ").screen};
};

TEST_F(UnderstoodPageTest, WhatIsKeptFromTheScreenBeforeMakesNoDifference) {
  const PageFacts facts;
  PageUnderstanding kept;
  KeywordMarks keptMarks;
  const Keywords keywords({u"kagami", u"鏡"});
  Drawn drawn(7);
  int marked = 0;
  int pushes = 0;
  int listed = 0;
  int links = 0;
  for (int round = 0; round < 4000; ++round) {
    const ScreenSnapshot& screen = drawn.Next();
    const UnderstoodPage& page = kept.Look(screen);
    ASSERT_EQ(page, PageUnderstanding().Look(screen)) << round;
    // The same as each fact asked for alone.
    ASSERT_EQ(HeaderAuthor(screen, page), facts.ParseHeaderAuthor(screen));
    ASSERT_EQ(HeaderPostTime(screen, page, 0), facts.ParseHeaderTime(screen, 0));
    for (int row = 0; row < kRows; ++row) {
      const PageLine& line = page.Line(row);
      ASSERT_EQ(page.IsPromptRow(row), facts.IsArrowInputRow(screen, row));
      if (page.content == PageContent::kArticle && row != kBottomRow) {
        ASSERT_EQ(PushAuthor(screen, page, row), facts.ParsePushAuthor(screen, row));
      }
      if (page.content == PageContent::kList) {
        ASSERT_EQ(ListedAuthor(screen, page, row), PageFacts::ParseListAuthor(screen, row));
        ASSERT_EQ((line.flags & LF_MARK_MASK) == LF_DELETED, PageFacts::IsDeletedListLine(screen, row));
      }
      pushes += line.push.has_value();
      listed += line.listed.has_value();
      links += !line.links.IsEmpty();
    }
    // The picture does not see all screens.
    if (round % 3 == 0) continue;
    UnderstoodPage lookedAt = page;
    UnderstoodPage alone = page;
    keptMarks.Mark(screen, keywords, lookedAt);
    KeywordMarks().Mark(screen, keywords, alone);
    ASSERT_EQ(lookedAt, alone) << round;
    marked += RowsWith(alone, LF_KEYWORD).size() > 1 ? 1 : 0;
  }
  EXPECT_GT(std::min({pushes, listed, links, marked}), 300) << "the screens reach what they are about";
}

}  // namespace
}  // namespace quillet
