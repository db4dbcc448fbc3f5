#include "render/style/styled_screen.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "bbs/article/push_over_reader.h"
#include "render/style_colours.h"
#include "settings/files/text_lines.h"
#include "settings/setting_table.h"
#include "tests/render/style/styling.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

std::string Cells(int dots, int marks) {
  return std::string(static_cast<std::size_t>(dots), '.') + std::string(static_cast<std::size_t>(marks), 'x');
}

class StyledScreenTest : public WithTables {
 protected:
  StyledScreen Dress(const ScreenSnapshot& screen, std::int64_t postTime = Local(2026, 11, 6, 6, 0)) const {
    return quillet::Dress(screen, wishes_.Rules(), postTime);
  }
  PageRow StyledRow(const ScreenBuilder& builder, int row) const {
    return Dress(AsReader(builder)).page[static_cast<std::size_t>(row)];
  }
  std::u16string Text(const ScreenBuilder& builder, int row) const { return Reads(StyledRow(builder, row)); }

  Wishes wishes_;
};

// ---- Push lines.

TEST_F(StyledScreenTest, PushLinesLieOnTheirOwnGroundInReadableColours) {
  ScreenBuilder builder;
  PutPush(builder, 5, u"推", u"kagami", u"鏡子");
  builder.Put(6, 0, u"推薦這本書：鏡中", 3);
  builder.Put(5, 40, u"紅", static_cast<std::uint8_t>(7 | 1 << kAttrBackgroundShift));

  const PageRow push = StyledRow(builder, 5);
  EXPECT_EQ(push.size, RowSize::kPush);
  EXPECT_EQ(Where(push, [](const PageCell& cell) { return cell.back != 24; }), Cells(40, 2));
  EXPECT_EQ(WhereFore(push, 3), "");
  EXPECT_EQ(WhereFore(push, 44), Cells(9, 31) + ".." + std::string(8, 'x'));
  EXPECT_EQ(WhereFore(push, 11), Cells(3, 6));
  // A line that only begins like one.
  const ScreenSnapshot screen = AsReader(builder);
  EXPECT_EQ(StyledRow(builder, 6), PlainRow(screen.text[6], screen.attr[6]));

  wishes_.settings.grayBackgroundPush = false;
  wishes_.settings.lighterPushLine = false;
  PageRow plain = StyledRow(builder, 5);
  EXPECT_EQ(plain.size, RowSize::kPush);
  EXPECT_EQ(plain.cells, PlainRow(screen.text[5], screen.attr[5]).cells);
}

TEST_F(StyledScreenTest, LinesMergeWithWhatIsShownAboveThem) {
  ScreenBuilder builder;
  const std::u16string_view ids[] = {u"miko", u"troll", u"miko", u"Miko", u"troll", u"troll", u"miko"};
  for (int row = 0; row < 7; ++row)
    PutPush(builder, row, u"推", ids[row], u"一");
  const auto begins = [&] {
    std::vector<std::u16string> rows;
    const StyledScreen dressed = Dress(AsReader(builder));
    for (std::size_t row = 0; row < 7 && dressed.page[row].size == RowSize::kPush; ++row)
      rows.push_back(Reads(dressed.page[row]).substr(0, 9));
    return rows;
  };
  using Rows = std::vector<std::u16string>;
  wishes_.Note(u"troll", ListKind::kBlack);
  wishes_.settings.blackPush = PushTreatment::kRemove;
  EXPECT_EQ(begins(), (Rows{u"推 miko: 一", u"推     : 一", u"推 Miko: 一", u"推 miko: 一"}));
  wishes_.settings.blackPush = PushTreatment::kMaskId;
  const Rows masked = {u"推 miko: 一", u"推 *****: ", u"推 miko: 一", u"推 Miko: 一",
                       u"推 *****: ",  u"推      : ", u"推 miko: 一"};
  EXPECT_EQ(begins(), masked);
  // Two masked ids, of one length: the second is not taken for the first.
  for (const int row : {1, 5})
    PutPush(builder, row, u"推", u"trull", u"一");
  wishes_.Note(u"trull", ListKind::kSuperBlack);
  wishes_.settings.superBlackPush = PushTreatment::kMaskId;
  EXPECT_EQ(begins()[4], u"推 *****: ");
  EXPECT_EQ(begins()[5], u"推 *****: ");
  // Another mark stays, and an arrow's goes with the id.
  PutPush(builder, 2, u"噓", u"miko", u"一");
  PutPush(builder, 1, u"→", u"miko", u"一");
  EXPECT_EQ(begins()[1], u"       : ");
  EXPECT_EQ(WhereStyle(StyledRow(builder, 1), CS_HIDDEN), "") << "the list hides nothing there";
  EXPECT_EQ(begins()[2], u"噓     : 一");
  builder.Put(1, 0, u"→ miko 說      ");
  EXPECT_EQ(Text(builder, 2).substr(0, 9), u"噓 miko: 一") << "a line that is none lies between";
  wishes_.settings.mergePush = false;
  PutPush(builder, 1, u"→", u"miko", u"一");
  EXPECT_EQ(begins()[2], u"噓 miko: 一");
}

TEST_F(StyledScreenTest, AgesComeFromTheStampAndTheArticlesYear) {
  ScreenBuilder builder;
  const std::u16string_view tails[] = {u"11/06 10:00", u"02/30 10:00", u"11/06", u"x11/06 11:40"};
  int row = 0;
  for (const auto tail : tails)
    PutPush(builder, row++, u"推", u"kagami", u"一", tail);
  const Page page = Dress(AsReader(builder)).page;
  EXPECT_EQ(page[0].age, u"2小時前");
  for (const std::size_t none : {1, 2, 3, 10})
    EXPECT_EQ(page[none].age, u"") << none;
  EXPECT_EQ(Dress(AsReader(builder), Local(2025, 11, 6, 9, 0)).page[0].age, u"11個月前");
  wishes_.now = Local(2026, 11, 6, 9, 58);
  EXPECT_EQ(Dress(AsReader(builder)).page[0].age, u"0分鐘前") << "the BBS's clock is ahead";
}

TEST_F(StyledScreenTest, BlackListedPushLinesByLevel) {
  ScreenBuilder builder;
  PutPush(builder, 3, u"推", u"troll", u"壞 a話　!");
  builder.Put(4, 0, u"※ 編輯");
  PutPush(builder, 7, u"推", u"troll", u"壞 1.2.3. 4", u"");
  const auto begin = [&] { return Text(builder, 3).substr(0, 17); };
  const auto hidden = [&] { return WhereStyle(StyledRow(builder, 3), CS_HIDDEN); };
  const std::u16string shown = u"推 troll: 壞 a話　!  ";
  for (const ListKind kind : {ListKind::kBlack, ListKind::kSuperBlack}) {
    wishes_.Note(u"troll", kind);
    auto& level = kind == ListKind::kBlack ? wishes_.settings.blackPush : wishes_.settings.superBlackPush;
    for (const PushTreatment open : {PushTreatment::kNone, PushTreatment::kNoPictures}) {
      level = open;
      EXPECT_EQ(begin(), shown);
    }
    level = PushTreatment::kHideText;
    EXPECT_EQ(begin(), u"推 troll: ＊ *＊　*  ");
    EXPECT_EQ(hidden(), Cells(10, 2) + ".xxx..x");
    EXPECT_TRUE(Text(builder, 3).ends_with(u" 140.112.8.8 11/06 10:00"));
    EXPECT_EQ(Text(builder, 7), u"推 troll: ＊ ****** *") << "its end is no stamp";
    level = PushTreatment::kMaskId;
    EXPECT_EQ(begin(), u"推 *****: ＊ *＊　*  ");
    wishes_.settings.hideCharShowStar = false;
    EXPECT_EQ(begin(), u"推      :       　 ");
    EXPECT_EQ(hidden(), Cells(3, 5) + "..xx.xxx..x") << "blanks that hide";
    wishes_.settings.hideCharShowStar = true;
    level = PushTreatment::kRemove;
    EXPECT_EQ(Text(builder, 3), u"※ 編輯");
    wishes_.reveal = Reveal::kHidden;
    EXPECT_EQ(begin(), shown);
    wishes_.reveal = Reveal::kDescriptions;
    EXPECT_EQ(Text(builder, 3), u"※ 編輯");
    wishes_.reveal = Reveal::kNothing;
  }
  for (const ListKind kind : {ListKind::kWhite, ListKind::kNone}) {
    wishes_.Note(u"troll", kind);
    EXPECT_EQ(begin(), shown);
  }
}

TEST_F(StyledScreenTest, RemovedLinesCloseUpAndPromptsStay) {
  wishes_.Note(u"troll", ListKind::kBlack);
  wishes_.settings.blackPush = PushTreatment::kRemove;
  ScreenBuilder builder;
  for (int row = 0; row < 23; ++row)
    PutPush(builder, row, u"推", row % 4 == 1 ? u"troll" : u"miko", u"一");

  // Rows 1, 5, 9, 13, 17 and 21 go.
  StyledScreen dressed = Dress(AsReader(builder));
  EXPECT_EQ(dressed.rowOf[1], 2);
  EXPECT_EQ(dressed.rowOf[16], 22);
  EXPECT_EQ(dressed.rowOf[17], -1);
  EXPECT_EQ(dressed.rowOf[23], 23);

  // The prompt of a push, and a question, are where the BBS has them.
  builder.Put(22, 8, u", 使用 → 加註方式 ").Put(23, 0, u"→ miko: ", 0xE0).Cursor(23, 10);
  ScreenSnapshot prompt = Classified(builder.screen);
  MarkPushOverReader(PF_READING, prompt);
  dressed = Dress(prompt);
  EXPECT_EQ(dressed.rowOf[15], 20);
  EXPECT_EQ(dressed.rowOf[22], 22);
  EXPECT_EQ(dressed.page[23].size, RowSize::kPush);
  builder.Put(20, 0, u"▲ 回應至", kAttrBlank).Fill(20, 8, 30, 0xE0).Cursor(20, 12);
  dressed = Dress(Classified(builder.screen));
  EXPECT_EQ(dressed.rowOf[14], 19);
  EXPECT_EQ(dressed.rowOf[20], 20);
  // Behind the question a line cannot go; its text does.
  EXPECT_EQ(Reads(dressed.page[21]).substr(0, 13), u"推 *****: ＊   ");
}

TEST_F(StyledScreenTest, ThePushBeingTypedIsNotMerged) {
  ScreenBuilder builder;
  PutPush(builder, 22, u"→", u"miko", u"一");
  builder.Put(23, 0, u"→ miko: ", 0xE0).Cursor(23, 8);
  ScreenSnapshot prompt = Classified(builder.screen);
  MarkPushOverReader(PF_READING, prompt);
  EXPECT_EQ(Reads(Dress(prompt).page[23]), u"→ miko:");
}

// ---- Marks of ids.

TEST_F(StyledScreenTest, ListedIdsAreMarkedWhereverTheyStand) {
  ScreenBuilder builder;
  builder.screen = ArticleHeader();
  PutPush(builder, 8, u"推", u"kagami", u"一");
  PutPush(builder, 9, u"→", u"kagami", u"二");
  PutPush(builder, 10, u"→", u"kagam", u"三");
  wishes_.Note(u"kagami", ListKind::kWhite, u"好人", 0x0A, true);
  wishes_.Note(u"", ListKind::kBlack, u"nobody", 0xFE, true);

  Page page = Dress(AsReader(builder)).page;
  EXPECT_EQ(WhereStyle(page[0], CS_UNDERLINE), Cells(7, 6));
  EXPECT_EQ(WhereStyle(page[8], CS_UNDERLINE), Cells(3, 6));
  for (const std::size_t row : {0u, 8u})
    EXPECT_EQ(page[row].pennants, 0x0A);
  for (const std::size_t row : {1u, 5u, 9u, 10u}) {
    EXPECT_EQ(page[row].pennants, 0) << row;
    EXPECT_EQ(WhereStyle(page[row], CS_UNDERLINE), "") << row;
  }
  EXPECT_EQ(page[8].tag, u"");

  wishes_.reveal = Reveal::kDescriptions;
  page = Dress(AsReader(builder)).page;
  EXPECT_EQ(page[0].tag + page[8].tag, u"好人好人");
  EXPECT_EQ(page[9].tag + page[10].tag, u"");
}

TEST_F(StyledScreenTest, DescriptionsStandBehindTheTextWhereThereIsRoom) {
  wishes_.Note(u"kagami", ListKind::kBlack, u"好人");
  wishes_.reveal = Reveal::kDescriptions;
  wishes_.settings.mergePush = false;
  ScreenBuilder builder;
  const std::u16string longWords(16, u'長');
  PutPush(builder, 4, u"推", u"kagami", u"一　");            // "　" is room too
  PutPush(builder, 5, u"推", u"kagami", longWords);          // up to column 43, the address is at 55
  PutPush(builder, 6, u"推", u"kagami", longWords + u"ab");  // one column too many
  PutPush(builder, 8, u"推", u"kagami", u"沒有時間", u"");
  const auto tagCol = [&](int row) { return static_cast<int>(StyledRow(builder, row).tagCol); };
  EXPECT_EQ(tagCol(4), 15);
  EXPECT_EQ(tagCol(5), 44);
  EXPECT_EQ(tagCol(6), 10);
  EXPECT_EQ(tagCol(8), 20);
  // Blanks that hide are room.
  wishes_.settings.blackPush = PushTreatment::kHideText;
  wishes_.settings.hideCharShowStar = false;
  EXPECT_EQ(tagCol(6), 11);

  const auto headerTagCol = [&](std::u16string_view author) {
    builder.screen = ArticleHeader(author);
    return tagCol(0);
  };
  EXPECT_EQ(headerTagCol(u"kagami (鏡)"), 19);
  EXPECT_EQ(headerTagCol(u"kagami (很長很長的暱稱 暱稱 暱稱)"), 41);
  EXPECT_EQ(headerTagCol(u"kagami (很長很長很長很長很長很長的暱稱暱稱)"), 14);
}

TEST_F(StyledScreenTest, NothingTellsWhoseAMaskedIdIs) {
  ScreenBuilder builder;
  PutPush(builder, 8, u"推", u"troll", u"一");
  wishes_.Note(u"troll", ListKind::kBlack, u"吵", 0x0A, true);
  wishes_.settings.blackPush = PushTreatment::kMaskId;
  wishes_.myId = u"troll";
  for (const bool stars : {true, false}) {
    wishes_.settings.hideCharShowStar = stars;
    const PageRow masked = StyledRow(builder, 8);
    EXPECT_EQ(masked.pennants, 0);
    EXPECT_EQ(WhereStyle(masked, CS_UNDERLINE), "");
    EXPECT_EQ(WhereFore(masked, 26), "");
    EXPECT_EQ(masked.tag, u"");
  }
  wishes_.reveal = Reveal::kDescriptions;
  EXPECT_EQ(StyledRow(builder, 8).tag, u"吵");
  wishes_.reveal = Reveal::kHidden;
  const PageRow shown = StyledRow(builder, 8);
  EXPECT_EQ(shown.pennants, 0x0A);
  EXPECT_EQ(WhereStyle(shown, CS_UNDERLINE), Cells(3, 5));
  EXPECT_EQ(WhereFore(shown, 26), Cells(3, 5));
  // Flags would give the disguise away.
  wishes_.settings.work = true;
  EXPECT_EQ(StyledRow(builder, 8).pennants, 0);
  EXPECT_EQ(WhereStyle(StyledRow(builder, 8), CS_UNDERLINE), Cells(3, 5));
}

TEST_F(StyledScreenTest, OwnIdIsColouredWhateverItsCase) {
  ScreenBuilder builder;
  PutPush(builder, 8, u"推", u"Kagami", u"一");
  PutPush(builder, 9, u"推", u"kagam", u"一");
  wishes_.myId = u"kagami";
  EXPECT_EQ(WhereFore(StyledRow(builder, 8), 26), Cells(3, 6));
  EXPECT_EQ(WhereFore(StyledRow(builder, 9), 26), "") << "the beginning of it";
  wishes_.settings.colorMyId = false;
  EXPECT_EQ(WhereFore(StyledRow(builder, 8), 26), "");
}

// ---- Lists.

void PutListLine(ScreenBuilder& builder, int row, char16_t mark, std::u16string_view author,
                 std::u16string_view title) {
  builder.Put(row, 1, u"   123").Put(row, 8, std::u16string(1, mark)).Put(row, 11, u"11/06");
  builder.Put(row, 17, author).Put(row, 30, title);
}

ScreenSnapshot AsList(ScreenBuilder builder, int cursorRow) {
  builder.Put(1, 0, u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ");
  builder.Put(23, 0, u" 文章選讀 ").Put(cursorRow, 0, u"●").Cursor(cursorRow, 1);
  return Classified(builder.screen);
}

class StyledListTest : public StyledScreenTest {
 protected:
  PageRow ListRow(int row) const { return Dress(AsList(builder_, 20)).page[static_cast<std::size_t>(row)]; }

  ScreenBuilder builder_;
};

TEST_F(StyledListTest, TitlesOfReadArticlesAreDarker) {
  PutListLine(builder_, 3, u' ', u"kagami", u"□ 讀過");
  PutListLine(builder_, 4, u'~', u"kagami", u"□ 新推文");
  PutListLine(builder_, 5, u'+', u"kagami", u"□ 沒讀過");
  PutListLine(builder_, 6, u'm', u"kagami", u"□ 色");
  builder_.Fill(6, 33, 35, 0x0B);
  PutListLine(builder_, 7, u' ', u"-", u"(本文已被刪除)");
  const std::string title = Cells(30, 50);
  EXPECT_EQ(WhereFore(ListRow(3), kReadTitle), title);
  EXPECT_EQ(WhereFore(ListRow(4), kReadTitle), title);
  EXPECT_EQ(WhereFore(ListRow(5), kReadTitle), "");
  EXPECT_EQ(WhereFore(ListRow(6), kReadTitle), Cells(30, 3) + Cells(2, 45));
  EXPECT_EQ(WhereFore(ListRow(7), kReadTitle), "");
  wishes_.settings.darkerReadArticle = false;
  EXPECT_EQ(WhereFore(ListRow(3), kReadTitle), "");
  EXPECT_EQ(WhereFore(ListRow(4), kReadTitle), title);
  wishes_.settings.darkerUpdatedArticle = false;
  EXPECT_EQ(WhereFore(ListRow(4), kReadTitle), "");
}

TEST_F(StyledListTest, KeywordsAreColouredAndNotDarkened) {
  wishes_.keywords = {u"鏡子", u"Moon"};
  PutListLine(builder_, 3, u' ', u"kagami", u"□ MOON與鏡子moon");
  PutListLine(builder_, 4, u' ', u"-", u"(鏡子)");
  EXPECT_EQ(WhereFore(ListRow(3), 28), Cells(33, 4) + ".." + std::string(8, 'x'));
  EXPECT_EQ(WhereFore(ListRow(3), kReadTitle), "");
  EXPECT_EQ(WhereFore(ListRow(4), 28), "");

  wishes_.keywords = {u"Apple", u"apple watch", u"Watch Band", u"月亮", u"月", u"鏡子"};
  PutListLine(builder_, 3, u'+', u"kagami", u"Apple Watch Band, apple, watch, 月亮月");
  EXPECT_EQ(WhereFore(ListRow(3), 28), Cells(30, 16) + Cells(2, 5) + Cells(9, 6))
      << "overlaps are coloured whole";
  ScreenBuilder reader;
  reader.Put(4, 0, u"看鏡子").Put(4, 20, u"鏡子", 0x70).Put(4, 40, u"鏡子", 0xE4);
  EXPECT_EQ(WhereFore(StyledRow(reader, 4), 28), Cells(2, 4));
}

TEST_F(StyledListTest, DescriptionsStandBehindTheTitleOrTheAuthor) {
  wishes_.Note(u"kagami", ListKind::kWhite, u"好人");
  wishes_.reveal = Reveal::kDescriptions;
  PutListLine(builder_, 4, u'+', u"kagami", u"□ " + std::u16string(18, u'長'));
  PutListLine(builder_, 5, u'+', u"kagami", u"□ " + std::u16string(18, u'長') + u"a");
  EXPECT_EQ(ListRow(4).tagCol, 70);
  EXPECT_EQ(ListRow(5).tagCol, 24);
}

TEST_F(StyledListTest, TitlesOfBlackListedAuthorsByLevel) {
  PutListLine(builder_, 3, u' ', u"troll", u"□ 壞話");
  wishes_.keywords = {u"壞話"};
  const auto shown = [&] { return Reads(ListRow(3)).substr(17); };
  for (const ListKind kind : {ListKind::kBlack, ListKind::kSuperBlack}) {
    wishes_.Note(u"troll", kind, u"", 0x02, true);
    auto& level = kind == ListKind::kBlack ? wishes_.settings.blackTitle : wishes_.settings.superBlackTitle;
    level = TitleTreatment::kNone;
    EXPECT_EQ(shown(), u"troll        □ 壞話");
    level = TitleTreatment::kHideText;
    EXPECT_EQ(shown(), u"troll        ＊ ＊＊");
    EXPECT_EQ(WhereFore(ListRow(3), kReadTitle), "");
    EXPECT_EQ(WhereFore(ListRow(3), 28), "");
    level = TitleTreatment::kMaskId;
    EXPECT_EQ(shown(), u"*****        ＊ ＊＊");
    EXPECT_EQ(WhereStyle(ListRow(3), CS_UNDERLINE), "");
    EXPECT_EQ(ListRow(3).pennants, 0);
    wishes_.reveal = Reveal::kHidden;
    EXPECT_EQ(shown(), u"troll        □ 壞話");
    EXPECT_EQ(ListRow(3).pennants, 0x02);
    wishes_.reveal = Reveal::kNothing;
  }
}

TEST_F(StyledListTest, TitleWordsHideButForWhiteListedAuthors) {
  PutListLine(builder_, 3, u'+', u"kagami", u"□ 聊SPAM的");
  wishes_.titleWords = {u"", u"spam"};
  const auto shown = [&] { return Reads(ListRow(3)).substr(17); };
  EXPECT_EQ(shown(), u"kagami       ＊ ＊****＊");
  wishes_.settings.blackTitle = TitleTreatment::kMaskId;
  EXPECT_EQ(shown(), u"******       ＊ ＊****＊");
  wishes_.settings.hideCharShowStar = false;
  EXPECT_EQ(Reads(ListRow(3)), u"    123 +  11/06");
  wishes_.Note(u"kagami", ListKind::kWhite);
  EXPECT_EQ(shown(), u"kagami       □ 聊SPAM的");
}

TEST_F(StyledListTest, EverySettingOfTheLinesIsSeen) {
  wishes_.Note(u"troll", ListKind::kBlack);
  wishes_.Note(u"villain", ListKind::kSuperBlack);
  wishes_.myId = u"miko";
  ScreenBuilder reader;
  int line = 3;
  for (const std::u16string_view id : {u"troll", u"villain", u"miko", u"miko"}) {
    PutPush(reader, line, u"推", id, u"一");
    PutListLine(builder_, line, u" +~ "[line - 3], id, u"□ 月亮");
    ++line;
  }
  Settings usual;
  usual.blackPush = PushTreatment::kHideText;
  const auto seen = [&](const Settings& settings) {
    wishes_.settings = settings;
    return std::pair(Dress(AsReader(reader)).page, Dress(AsList(builder_, 6)).page);
  };
  for (const SettingRow& row : SettingTable()) {
    if (row.actedOnBy != ActedOnBy::kStyling) continue;
    bool isSeen = false;
    for (int number = row.least; number <= row.most; ++number) {
      Settings other = usual;
      ApplyRow(row, ToText(number), other);
      isSeen = isSeen || seen(other) != seen(usual);
    }
    EXPECT_TRUE(isSeen) << std::string(row.key.begin(), row.key.end());
  }
}

TEST_F(StyledListTest, BarLiesOverTheRowWithTheListsCursor) {
  const auto bars = [&](const ScreenSnapshot& screen) {
    std::string rows;
    for (const PageRow& row : Dress(screen).page) {
      const auto cells = WhereStyle(row, CS_BAR).size();
      rows += cells == 0 ? '.' : cells == kCols ? 'x' : '?';
    }
    return rows;
  };
  const std::string none(24, '.');
  std::string at20 = none;
  at20[20] = 'x';
  EXPECT_EQ(bars(AsList(builder_, 20)), at20);
  // A menu has one too; a prompt and a message over a list do not.
  EXPECT_EQ(bars(Classified(ScreenBuilder().Put(20, 24, u"●").Cursor(20, 25).screen)), at20);
  EXPECT_EQ(bars(Classified(ScreenBuilder().Put(20, 24, u"●").Cursor(23, 2).screen)), none);
  ScreenSnapshot message = AsList(builder_, 20);
  message.pageFlags |= PF_STAR_LINE;
  EXPECT_EQ(bars(message), none);
  wishes_.settings.showHighlight = false;
  EXPECT_EQ(bars(AsList(builder_, 20)), none);
}

}  // namespace
}  // namespace quillet
