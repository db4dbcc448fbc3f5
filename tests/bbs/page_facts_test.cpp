#include "bbs/page_facts.h"

#include <algorithm>
#include <ctime>

#include "bbs/page_flags.h"
#include "bbs/screen_fields.h"
#include "tests/support/article_pages.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using PageFactsTest = WithTables;

constexpr std::int64_t kNow = 1794000000;  // 6 November 2026 everywhere

// Seconds since 1970 on this machine's clock.
std::int64_t Local(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  std::tm fields{};
  fields.tm_year = year - 1900;
  fields.tm_mon = month - 1;
  fields.tm_mday = day;
  fields.tm_hour = hour;
  fields.tm_min = minute;
  fields.tm_sec = second;
  fields.tm_isdst = -1;
  return std::mktime(&fields);
}

ScreenSnapshot Row(int row, int col, std::u16string_view text) {
  return ScreenBuilder().Put(row, col, text).screen;
}

TEST_F(PageFactsTest, FieldsStepOverWholeCharacters) {
  // "功" ends in "\\" (0x5C), "許" in "\\", "育" in "|": and these in "]", "~" or "^".
  ScreenBuilder builder;
  builder.Put(4, 0, u"功a許b");  // columns 0-1, 2, 3-4, 5
  const ScreenSnapshot& screen = builder.screen;
  EXPECT_EQ(FieldText(screen, 4, 0, 5), u"功a許b");
  EXPECT_EQ(FieldText(screen, 4, 1, 5), u"a許b");  // half a character is not one
  EXPECT_EQ(FieldText(screen, 4, 2, 3), u"a許");   // takes the byte behind its end
  EXPECT_EQ(FieldText(screen, 4, 5, 400), u"b");
  EXPECT_EQ(FieldText(screen, 4, -3, 2), u"功a");
  EXPECT_EQ(FieldText(screen, 24, 0, 5), u"");
  EXPECT_EQ(FieldText(screen, 4, 80, 90), u"");
  EXPECT_FALSE(FindCharacter(screen, 4, 0, 79, '\\'));
  EXPECT_FALSE(FindLastCharacter(screen, 4, 0, 79, '\\'));
  EXPECT_EQ(FindCharacter(screen, 4, 4, 79, 'b'), 5);
  for (int col = 0; col < 6; ++col)
    EXPECT_EQ(IsCharacterStart(screen, 4, col), col != 1 && col != 4);

  EXPECT_EQ(FieldText(Row(4, 76, u" 功a"), 4, 70, 79), u"功a");
  ScreenSnapshot cut = Row(4, 78, u"a");
  cut.text[4][79] = 0xA4;  // a lead byte without its other half
  EXPECT_EQ(FieldText(cut, 4, 70, 79), u"a");
}

TEST_F(PageFactsTest, AuthorEndsAtABlankABracketOrTwelveCharacters) {
  const PageFacts facts;
  const struct {
    std::u16string_view field, author;
  } cases[] = {
      {u"kagami (鏡)", u"kagami"},          {u"kagami(鏡)", u"kagami"},
      {u"abcdefghijklm", u"abcdefghijkl"},  {u"abcdefghijk鏡 x", u"abcdefghijk鏡"},
      {u"鏡鏡鏡鏡鏡鏡鏡", u"鏡鏡鏡鏡鏡鏡"}, {u"(鏡)", u""},
  };
  for (const auto& entry : cases) {
    ScreenBuilder builder;
    builder.screen = ArticleHeader();
    builder.Put(0, 7, std::u16string(30, u' ')).Put(0, 7, entry.field);
    EXPECT_EQ(facts.ParseHeaderAuthor(builder.screen), entry.author);
  }
  ScreenBuilder shifted;  // the character at column 6 reaches into the field
  shifted.screen = ArticleHeader();
  EXPECT_EQ(facts.ParseHeaderAuthor(shifted.Put(0, 6, u"鏡kagami ").screen), u"");
}

TEST_F(PageFactsTest, LabelsMustBeBoxes) {
  const PageFacts facts;
  const ScreenSnapshot page = ArticleHeader();
  for (int col = 0; col <= 5; ++col) {
    ScreenSnapshot other = page;
    other.attr[0][static_cast<std::size_t>(col)] = 0x47;
    EXPECT_EQ(facts.ParseHeaderAuthor(other), u"") << col;
  }
  for (std::size_t col = kBoardLabelCol; col < kBoardLabelCol + 8; ++col) {
    ScreenSnapshot other = page;
    other.attr[0][col] = 0x17;
    EXPECT_EQ(facts.ParseHeaderBoard(other), u"") << col;
    other = page;
    other.text[0][col] = 'x';
    EXPECT_EQ(facts.ParseHeaderBoard(other), u"") << col;
  }
  // The outer cells of the label's word may have any foreground on white, its inner ones may not.
  ScreenSnapshot edges = page;
  edges.attr[0][0] = edges.attr[0][5] = 0xE0;
  EXPECT_EQ(facts.ParseHeaderAuthor(edges), u"kagami");
  edges.attr[0][1] = 0xE0;
  EXPECT_EQ(facts.ParseHeaderAuthor(edges), u"");
}

TEST_F(PageFactsTest, BoardFieldEndsAtColumn76) {
  const PageFacts facts;
  for (const int col : {54, 55, 60, 68, 69, 72}) {
    ScreenBuilder builder;
    builder.screen = ArticleHeader();
    builder.Put(0, 55, std::u16string(25, u' '));
    PutBoardLabel(builder, col).Put(0, col + 8, u"ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    const std::u16string board = facts.ParseHeaderBoard(builder.screen);
    EXPECT_EQ(board.size(), col < 55 || col > 68 ? 0u : 69u - static_cast<unsigned>(col)) << col;
  }
}

TEST_F(PageFactsTest, ANicknameCutThroughACharacterHidesNoBoard) {
  ScreenSnapshot page = ArticleHeader();
  page.text[0][kBoardLabelCol - 1] = 0xC3;  // a lead byte, and the label's first blank behind it
  EXPECT_EQ(PageFacts().ParseHeaderBoard(page), u"Astronomy");
}

TEST_F(PageFactsTest, TimesThatThereAreNotAreUnknown) {
  const PageFacts facts;
  const auto timeOf = [&](std::u16string_view row) {
    return facts.ParseHeaderTime(ScreenBuilder().Put(2, 0, u" 時間 ").Put(2, 7, row).screen, kNow);
  };
  EXPECT_EQ(timeOf(u"Fri Nov  6 06:04:05 2026"), Local(2026, 11, 6, 6, 4, 5));
  EXPECT_EQ(timeOf(u"Fri Foo  6 06:04:05 2026"),
            Local(2026, 11, 6, 6, 4, 5));  // another month's name is the current month
  EXPECT_EQ(timeOf(u"Fri nov  6 06:04:05 2026"), Local(2026, 11, 6, 6, 4, 5));
  EXPECT_EQ(timeOf(u"Thu Feb 29 00:00:00 2024"), Local(2024, 2, 29));
  EXPECT_EQ(timeOf(u"Fri Dec 31 23:59:59 9999"), std::max<std::int64_t>(0, Local(9999, 12, 31, 23, 59, 59)));
  EXPECT_EQ(timeOf(u"Sat Jan  3 00:00:00 1970"), Local(1970, 1, 3));
  for (const std::u16string_view row :
       {u"Wed Feb 29 00:00:00 2023", u"Thu Feb 31 00:00:00 2024", u"Thu Nov  0 00:00:00 2026",
        u"Thu Nov 31 00:00:00 2026", u"Thu Nov 99 99:99:99 2026", u"Thu Nov  6 24:00:00 2026",
        u"Thu Nov  6 06:60:00 2026", u"Thu Nov  6 06:04:61 2026", u"Tue Dec 30 23:59:59 1969",
        u"Thu Nov  6 06:04:05     ", u"Thu Nov  6 06:04:05 0000", u"Thu Nov  6 06:04:05 20", u"",
        u"Thu Nov  6 06", u"Thu Nov  a 06:04:05 2026", u"Thu Nov  6 -1:04:05 2026",
        u"鏡鏡鏡鏡鏡鏡鏡鏡鏡鏡鏡鏡鏡"})
    EXPECT_EQ(timeOf(row), 0);
}

TEST_F(PageFactsTest, TheCurrentMonthIsThatOfTheLocalClock) {
  const PageFacts facts;
  const ScreenSnapshot page = ScreenBuilder().Put(2, 0, u" 時間  Fri Foo 15 12:00:00 2026").screen;
  for (int month = 2; month <= 12; ++month) {
    const std::int64_t begins = Local(2026, month, 1);
    EXPECT_EQ(facts.ParseHeaderTime(page, begins), Local(2026, month, 15, 12)) << month;
    EXPECT_EQ(facts.ParseHeaderTime(page, begins - 1), Local(2026, month - 1, 15, 12)) << month;
  }
}

TEST_F(PageFactsTest, ListLine) {
  ScreenBuilder builder;
  builder.Put(5, 0, u"  12345 ~99 1/05 abcdefghijkl □ [閒聊] 今天的月亮好圓");
  EXPECT_EQ(PageFacts::ParseListAuthor(builder.screen, 5), u"abcdefghijkl");
  EXPECT_EQ(PageFacts::ParseListTitle(builder.screen, 5), u"□ [閒聊] 今天的月亮好圓");
  EXPECT_FALSE(PageFacts::IsDeletedListLine(builder.screen, 5));
  builder.Put(6, 17, u"-            □ (本文已被刪除)").Put(2, 17, u"-").Put(23, 17, u"-");
  EXPECT_TRUE(PageFacts::IsDeletedListLine(builder.screen, 6));
  for (const int row : {-1, 0, 2, 23, 24}) {
    EXPECT_EQ(PageFacts::ParseListAuthor(builder.screen, row), u"");
    EXPECT_FALSE(PageFacts::IsDeletedListLine(builder.screen, row));
  }
  // A character across the title's first column is not of the title.
  builder.Put(7, 17, u"鏡鏡鏡鏡鏡鏡鏡標題");
  EXPECT_EQ(PageFacts::ParseListAuthor(builder.screen, 7), u"鏡鏡鏡鏡鏡鏡");
  EXPECT_EQ(PageFacts::ParseListTitle(builder.screen, 7).substr(0, 2), u"標題");
}

TEST_F(PageFactsTest, InformationBox) {
  const auto box = [](int row, std::u16string_view title) {
    return ScreenBuilder()
        .Put(row, 0, u"│ 文章代碼(AID): #1abC-_9Z (Astronomy) [bbs.example] ")
        .Put(row, 54, title)
        .screen;
  };
  for (const int row : {19, 20}) {
    EXPECT_EQ(PageFacts::ParseInfoBoxAid(box(row, u"x")), u"1abC-_9Z");
    EXPECT_EQ(PageFacts::ParseInfoBoxBoard(box(row, u"x")), u"Astronomy");
  }
  EXPECT_EQ(PageFacts::ParseInfoBoxAid(box(18, u"x")), u"");
  EXPECT_EQ(PageFacts::ParseInfoBoxTitle(box(21, u"x")), u"");

  const struct {
    std::u16string_view title, listed;
  } cases[] = {
      {u"Re: Hello", u"R: Hello"},
      {u"Re:Hello", u"R: Hello"},
      {u"rE:  Hello", u"R:  Hello"},
      {u"fw:x", u"轉 x"},
      {u"Re Hello", u"□ Re Hello"},
      {u"ABCDEFGHIJKLMNOPQRST?UV", u"□ ABCDEFGHIJKLMNOPQRST"},
      {u"ABCDEFGHIJKLMNOPQRSTUVW", u"□ ABCDEFGHIJKLMNOPQRSTU"},
      {u"", u""},
  };
  for (const auto& entry : cases)
    EXPECT_EQ(PageFacts::ParseInfoBoxTitle(box(19, entry.title)), entry.listed);

  // A character whose second byte is "]" is no bracket: 0xA45D does not end the site's name.
  ScreenBuilder trap;
  trap.screen = box(19, u"x");
  trap.Put(19, 40, u"          ");
  trap.screen.text[19][40] = 0xA4;
  trap.screen.text[19][41] = ']';
  EXPECT_EQ(PageFacts::ParseInfoBoxTitle(trap.Put(19, 50, u"] x").screen), u"□ x x");

  ScreenBuilder half;  // drawn half, or not a code
  half.Put(19, 18, u"#1abC");
  EXPECT_EQ(PageFacts::ParseInfoBoxAid(half.screen), u"");
  EXPECT_EQ(PageFacts::ParseInfoBoxBoard(half.screen), u"");
  EXPECT_EQ(PageFacts::ParseInfoBoxAid(Row(19, 18, u"#1ab(-_9Z")), u"");
  EXPECT_EQ(PageFacts::ParseInfoBoxBoard(Row(19, 18, u"#1abC-_9Z (ABCDEFGHIJKL)")), u"ABCDEFGHIJKL");
  EXPECT_EQ(PageFacts::ParseInfoBoxBoard(Row(19, 18, u"#1abC-_9Z (ABCDEFGHIJKLM)")), u"");
}

TEST_F(PageFactsTest, PushLines) {
  const PageFacts facts;
  const struct {
    std::u16string_view line, author;
  } cases[] = {
      {u"推 kagami: 推", u"kagami"},
      {u"→ abcdefghijkl: x", u"abcdefghijkl"},
      {u"→ abcdefghijklm: x", u""},  // the colon comes too late
      {u"→ abcdefghijk : x", u"abcdefghijk"},
      {u"推 kagami  x: x", u""},
      {u"推 9kagami: x", u""},
      {u"推  kagami: x", u""},
      {u"推 kag鏡: x", u""},
      {u"推 : x", u""},
      {u"※ kagami: x", u""},
  };
  for (const auto& entry : cases) {
    const ScreenSnapshot screen = Row(12, 0, entry.line);
    EXPECT_EQ(facts.IsPushCommentLine(screen, 12), !entry.author.empty());
    EXPECT_EQ(facts.ParsePushAuthor(screen, 12), entry.author);
  }
  for (const int row : {-1, 24, 1000})
    EXPECT_FALSE(facts.IsPushCommentLine(Row(12, 0, u"推 kagami: x"), row));
}

TEST_F(PageFactsTest, RowsOfThePushPromptOverAnArticle) {
  const PageFacts facts;
  ScreenSnapshot screen = Row(22, 0, u"作者本人, 使用 → 加註方式 ");
  for (const int row : {21, 22, 23})
    EXPECT_FALSE(facts.IsArrowInputRow(screen, row));
  screen.pageFlags = PF_PUSH_OVER_READER;
  EXPECT_FALSE(facts.IsArrowInputRow(screen, 21));
  EXPECT_TRUE(facts.IsArrowInputRow(screen, 22));
  EXPECT_TRUE(facts.IsArrowInputRow(screen, 23));
  screen.text[22][8] = ' ';
  EXPECT_FALSE(facts.IsArrowInputRow(screen, 22));
}

TEST_F(PageFactsTest, ReaderPosition) {
  const PageFacts facts;
  const ScreenSnapshot footer = Row(23, 0, u"  瀏覽 第 12/34 頁 ( 33%)  目前顯示: 第 221~242 行");
  EXPECT_EQ(PageFacts::ParseReaderLastLine(footer), 242);
  EXPECT_EQ(facts.ParseReaderPage(footer), 12);
  EXPECT_EQ(PageFacts::ParseReaderLastLine(Row(23, 0, u"  瀏覽 P.1(33%)")), kNoLine);
  EXPECT_EQ(facts.ParseReaderPage(Row(23, 0, u"  瀏覽 P.1(33%)")), std::nullopt);
  EXPECT_EQ(facts.ParseReaderPage(Row(23, 0, u"  瀏覽 第 x 頁")), std::nullopt);
  EXPECT_EQ(PageFacts::ParseReaderLastLine(Row(23, 35, u"~42")), kNoLine);
  EXPECT_EQ(PageFacts::ParseReaderLastLine(Row(23, 36, u"~42")), 42);
  EXPECT_EQ(PageFacts::ParseReaderLastLine(Row(23, 36, u"~0 ")), 1);
  EXPECT_EQ(PageFacts::ParseReaderLastLine(Row(23, 79, u"~")), 1);
  EXPECT_EQ(PageFacts::ParseReaderLastLine(Row(23, 60, u"~99999999999999999999")), 2147483647);
  ScreenSnapshot trap = Row(23, 50, u"~7");
  trap.text[23][40] = 0xA4;  // and the second byte of this character is a "~"
  trap.text[23][41] = '~';
  EXPECT_EQ(PageFacts::ParseReaderLastLine(trap), 7);
}

TEST_F(PageFactsTest, Money) {
  const struct {
    int col;
    std::u16string_view text;
    std::int32_t money;
  } cases[] = {
      {50, u"(現有文藝幣$1234)", 1234},   {50, u"($1)($22)", 22},
      {45, u"($1) 又 ($22)", kNoMoney},  // the first is too far left
      {50, u"$1234", kNoMoney},           {50, u")$1", kNoMoney},
      {50, u"$99999999999)", 2147483647}, {0, u"", kNoMoney},
  };
  for (const auto& entry : cases)
    EXPECT_EQ(PageFacts::ParseMoney(Row(1, entry.col, entry.text)), entry.money);
}

}  // namespace
}  // namespace quillet
