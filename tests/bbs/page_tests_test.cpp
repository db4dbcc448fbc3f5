#include "bbs/page_tests.h"

#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

constexpr std::uint8_t kYellowOnCyan = 0xCB;
constexpr std::uint8_t kWhiteOnMagenta = 0xAF;
constexpr std::uint8_t kFooterBlue = 0x87;  // white on blue

using PageTest = WithTables;

ScreenSnapshot ReaderPage() {
  ScreenBuilder builder;
  builder.Put(23, 0, u"  瀏覽 第 1/3 頁 ( 33%) ", kFooterBlue);
  builder.Fill(23, 0, 79, kFooterBlue).Cursor(23, 79);
  return builder.screen;
}

ScreenSnapshot WithField(ScreenSnapshot screen, int row, std::u16string_view prompt) {
  ScreenBuilder builder;
  builder.screen = screen;
  const int width = static_cast<int>(ToBig5(prompt).size());
  builder.Put(row, 0, prompt).Fill(row, width, width + 10, kAttrInputField).Cursor(row, width);
  return builder.screen;
}

ScreenSnapshot StarLine(int row, int senderCells, int messageCells, int cursorCol) {
  ScreenBuilder builder;
  builder.Put(row, 0, u"★");
  builder.Fill(row, 0, senderCells, kYellowOnCyan);
  builder.Fill(row, senderCells, senderCells + messageCells, kWhiteOnMagenta);
  return builder.Cursor(row, cursorCol).screen;
}

TEST_F(PageTest, RowPrefixStopsAtTheEdges) {
  ScreenBuilder builder;
  builder.Put(5, 76, u"推 x");
  EXPECT_TRUE(RowStartsWith(builder.screen, 5, 76, u"推 x"));
  EXPECT_FALSE(RowStartsWith(builder.screen, 5, 76, u"推 x "));  // would run past column 79
  EXPECT_FALSE(RowStartsWith(builder.screen, 5, -1, u" "));
  EXPECT_FALSE(RowStartsWith(builder.screen, 24, 0, u" "));
  EXPECT_TRUE(RowStartsWith(builder.screen, 5, 76, u"推噓", 1));
}

TEST_F(PageTest, InputFieldNeedsAPromptOfAnotherColourBeforeIt) {
  const PageTests pages;
  ScreenSnapshot screen = WithField(ScreenBuilder().screen, 20, u"請輸入代號: ");
  EXPECT_TRUE(pages.IsInputField(screen));
  screen.cursorCol += 5;  // typed into, still inside
  EXPECT_TRUE(pages.IsInputField(screen));
  screen.cursorCol += 5;  // behind its end
  EXPECT_FALSE(pages.IsInputField(screen));

  ScreenBuilder edge;  // no cell before the field
  EXPECT_FALSE(pages.IsInputField(edge.Fill(3, 0, 8, kAttrInputField).Cursor(3, 4).screen));
  ScreenBuilder black;  // a black-on-black cell is no prompt
  black.Fill(3, 0, 4, 0x00).Fill(3, 4, 8, kAttrInputField).Cursor(3, 4);
  EXPECT_FALSE(pages.IsInputField(black.screen));
  ScreenBuilder coloured;  // nor is one with a background
  coloured.Fill(3, 0, 4, 0x47).Fill(3, 4, 8, kAttrInputField).Cursor(3, 4);
  EXPECT_FALSE(pages.IsInputField(coloured.screen));
}

TEST_F(PageTest, ListCursorIsAMarkOnAnOrdinaryCellOfTheListRows) {
  const PageTests pages;
  for (int row = 0; row < kRows; ++row) {
    ScreenBuilder angle, bullet;
    EXPECT_EQ(pages.IsListCursor(angle.Put(row, 0, u">").Cursor(row, 0).screen), row >= 2 && row <= 22);
    EXPECT_EQ(pages.IsListCursor(bullet.Put(row, 0, u"●").Cursor(row, 1).screen), row >= 2 && row <= 22);
  }
  ScreenBuilder bright;
  EXPECT_FALSE(pages.IsListCursor(bright.Put(5, 0, u">", 0x0F).Cursor(5, 0).screen));
  ScreenBuilder editor;
  editor.Put(5, 0, u">").Put(23, 0, u" 編輯文章").Cursor(5, 0);
  EXPECT_FALSE(pages.IsListCursor(editor.screen));
}

TEST_F(PageTest, ReaderIsKnownByItsFooterAndStrictlyByItsParkedCursor) {
  const PageTests pages;
  using Form = PageTests::ReaderForm;
  const ScreenSnapshot page = ReaderPage();
  EXPECT_TRUE(pages.IsReader(page, Form::kStrict));

  ScreenSnapshot moving = page;
  moving.cursorCol = 68;
  EXPECT_TRUE(pages.IsReader(moving, Form::kPlain));
  EXPECT_FALSE(pages.IsReader(moving, Form::kStrict));
  ScreenSnapshot colour = page;
  colour.curAttr = 0x0F;
  EXPECT_FALSE(pages.IsReader(colour, Form::kStrict));
  ScreenSnapshot uncoloured = page;
  uncoloured.attr[23][78] = kAttrBlank;
  EXPECT_FALSE(pages.IsReader(uncoloured, Form::kStrict));
  for (const auto& [row, col] : {std::pair{23, 127}, {-1, 79}, {23, -128}, {127, 127}}) {
    ScreenSnapshot outside = page;
    outside.cursorRow = row;
    outside.cursorCol = col;
    EXPECT_FALSE(pages.IsReader(outside, Form::kStrict));
  }
}

TEST_F(PageTest, APromptDrawnOverTheReaderIsNoReader) {
  const PageTests pages;
  const ScreenSnapshot page = ReaderPage();
  for (const std::u16string_view prompt :
       {u"標題：", u"[搜尋]關鍵字:", u"區分大小寫(Y/N/Q)? [N]", u" 要把範例加入到文章內嗎?[y/N]",
        u"把這篇文章收入到暫存檔？[y/N]", u" 確定要選這篇嗎?[y/N]"})
    EXPECT_FALSE(pages.IsReader(WithField(page, 22, prompt), PageTests::ReaderForm::kPlain));
  EXPECT_FALSE(pages.IsReader(WithField(page, 1, u"請輸入看板名稱(按空白鍵自動搜尋):"),
                              PageTests::ReaderForm::kPlain));
  // The same words as part of the article are not a prompt.
  ScreenBuilder quoted;
  quoted.screen = page;
  EXPECT_TRUE(pages.IsReader(quoted.Put(22, 0, u"[搜尋]關鍵字:").screen, PageTests::ReaderForm::kPlain));
}

TEST_F(PageTest, TopOfTheArticleHasThreeForms) {
  const PageTests pages;
  ScreenBuilder magenta, blue, red, none;
  EXPECT_TRUE(pages.IsReaderTop(magenta.Fill(23, 2, 3, 0xA7).screen));
  EXPECT_TRUE(pages.IsReaderTop(blue.Fill(23, 2, 3, kFooterBlue).Put(23, 37, u" 01~").screen));
  EXPECT_TRUE(pages.IsReaderTop(red.Fill(23, 60, 61, 0x27).Put(23, 9, u" 1/").screen));
  EXPECT_FALSE(pages.IsReaderTop(none.Fill(23, 2, 3, kFooterBlue).Put(23, 37, u" 23~").screen));
}

TEST_F(PageTest, HelpLineIsComparedOverTheWholeRow) {
  const PageTests pages;
  const std::u16string help =
      u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ";
  ASSERT_EQ(ToBig5(help).size(), 80u);
  ScreenBuilder exact, altered, byPrompt;
  EXPECT_TRUE(pages.IsArticleList(exact.Put(1, 0, help).screen));
  EXPECT_FALSE(pages.IsArticleList(altered.Put(1, 0, help).Put(1, 79, u".").screen));
  EXPECT_TRUE(pages.IsArticleList(byPrompt.Put(23, 0, u" 文章選讀 ").screen));
  EXPECT_FALSE(pages.IsArticleListStrict(byPrompt.Put(5, 0, u">").Cursor(5, 0).screen));
  EXPECT_TRUE(pages.IsArticleListStrict(byPrompt.Put(1, 0, help).screen));
}

TEST_F(PageTest, StarLineIsTwoRunsAndTheCursorRightBehindThem) {
  const PageTests pages;
  EXPECT_TRUE(pages.IsStarLine(StarLine(22, 14, 20, 34)));
  EXPECT_TRUE(pages.IsStarLine(StarLine(23, 4, 3, 7)));
  EXPECT_FALSE(pages.IsStarLine(StarLine(21, 14, 20, 34)));
  EXPECT_FALSE(pages.IsStarLine(StarLine(22, 3, 20, 23)));   // sender too short
  EXPECT_FALSE(pages.IsStarLine(StarLine(22, 14, 2, 16)));   // message too short
  EXPECT_FALSE(pages.IsStarLine(StarLine(22, 14, 20, 35)));  // cursor elsewhere
  EXPECT_FALSE(pages.IsStarLine(StarLine(22, 14, 66, 79)));  // runs to the edge
}

TEST_F(PageTest, AnyKeyBannerPausesExceptOnFourPages) {
  const PageTests pages;
  const auto banner = [] {
    ScreenBuilder builder;
    builder.Put(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ");
    return builder.Cursor(23, 79);
  };
  EXPECT_TRUE(pages.IsAnyKeyBanner(banner().screen));
  EXPECT_TRUE(pages.IsPause(banner().screen));
  EXPECT_FALSE(pages.IsAnyKeyBanner(banner().Cursor(23, 78).screen));
  EXPECT_FALSE(pages.IsPause(banner().Put(0, 0, u" 奧拉拉文藝坊 ").screen));
  EXPECT_FALSE(pages.IsPause(banner().Put(20, 0, u"│ 文章代碼").screen));
  EXPECT_FALSE(pages.IsPause(banner().Put(0, 0, u"請選擇簽名檔 (1-9, 0=不加 x=隨機)[1]: ").screen));
  EXPECT_FALSE(pages.IsPause(banner().Put(0, 0, u"【看板列表】").screen));
  EXPECT_TRUE(pages.IsPause(banner().Put(0, 0, u"【看板列表】").Fill(22, 0, 1, 0x27).screen));
  ScreenBuilder playing;
  EXPECT_TRUE(
      pages.IsPause(playing.Put(23, 0, u" >>> 動畫播放中... 可按 q, Ctrl-C 或其它任意鍵停止 ").screen));
}

TEST_F(PageTest, PushConfirmIsReadTwelveColumnsLeftOfTheCursor) {
  const PageTests pages;
  ScreenBuilder builder;
  builder.Put(23, 0, u"推 reader: 好文").Put(23, 60, u" 確定[y/N]:y");
  EXPECT_TRUE(pages.IsPushConfirm(builder.Cursor(23, 72).screen));
  EXPECT_FALSE(pages.IsPushConfirm(builder.Cursor(23, 73).screen));
  EXPECT_FALSE(pages.IsPushConfirm(builder.Cursor(23, 3).screen));
  EXPECT_FALSE(pages.IsPushConfirm(builder.Cursor(23, -128).screen));
  EXPECT_TRUE(pages.IsPushLine(builder.screen));
}

}  // namespace
}  // namespace quillet
