// Pages of the known BBS as the view gets them: marked by the classifier. The program links quillet_bbs.
#pragma once

#include <utility>

#include "bbs/page_flags.h"
#include "bbs/screen_classifier.h"
#include "tests/support/article_pages.h"
#include "tests/support/understanding.h"

namespace quillet {

inline ScreenSnapshot Classified(ScreenSnapshot screen) {
  static const PageTests tests;
  screen.sessionState = SessionState::kConnected;
  screen.isBbsSite = 1;
  ClassifyScreen(tests, screen, ScreenReason::kUpdated);
  return screen;
}

inline ScreenSnapshot Classified(const ScreenBuilder& page) {
  return Classified(page.screen);
}

// Entries in the rows 3 to `last`, the cursor at `cursor`.
inline ScreenBuilder ListPage(int cursor, int last, std::u16string_view bottom,
                              std::u16string_view title = u"[問題] 鏡子裡是誰") {
  ScreenBuilder page;
  page.Put(0, 0, u"【板主:kagami】").Put(1, 0, u"[←]離開").Put(2, 0, u"   編號    日 期 作  者");
  for (int row = 3; row <= last; ++row)
    page.Put(row, 3, u"1234 + 11/06 kagami       □ " + std::u16string(title));
  return page.Put(cursor, 0, u"●").Cursor(cursor, 1).Put(23, 0, bottom);
}
inline ScreenSnapshot ArticleList(int cursor, int last, std::u16string_view title = u"[問題] 鏡子裡是誰") {
  return Classified(ListPage(cursor, last, u" 文章選讀 ", title));
}
inline ScreenSnapshot BoardList(int cursor, int last) {
  return Classified(ListPage(cursor, last, u" 選擇看板 "));
}

// Items in the rows 12 to 14.
inline ScreenSnapshot MenuPage(int cursor) {
  ScreenBuilder page;
  page.Put(3, 28, u"(o)(o) 一隻貓");
  page.Put(12, 28, u"(A)nnounce    【 精華公佈欄 】").Put(13, 28, u"(F)avorite    【 我的最愛區 】");
  page.Put(14, 28, u"(C)lass       【 分組討論區 】").Put(cursor, 24, u"●").Cursor(cursor, 25);
  return Classified(page.Put(23, 0, u"[11/06 (s)選看板"));
}

// The status lines of an article's first page, of one within it and of its last.
inline constexpr std::uint8_t kFooterTop = 0xAB, kFooterMiddle = 0xCF, kFooterEnd = 0x8F;
inline ScreenSnapshot ReaderPage(std::u16string_view footer, std::uint8_t colour, ScreenBuilder page = {}) {
  for (int row = 0; row < 23; ++row)
    if (page.screen.RowText(row).find_first_not_of(' ') == std::string_view::npos)
      page.Put(row, 0, u"一行字");
  return Classified(WithReaderFooter(page.screen, footer, colour));
}
inline ScreenSnapshot ReaderMiddle(ScreenBuilder page = {}) {
  return ReaderPage(u"  瀏覽 第 2/9 頁 ( 40%)  目前顯示: 第 81~103 行", kFooterMiddle, std::move(page));
}

inline ScreenSnapshot ReaderEnd() {
  return ReaderPage(u"  瀏覽 第 9/9 頁 (100%)  目前顯示: 第 181~203 行", kFooterEnd);
}
inline ScreenSnapshot ReaderTop() {
  return ReaderPage(u"  瀏覽 第 1/9 頁 ( 11%)  目前顯示: 第 01~22 行", kFooterTop);
}

inline ScreenSnapshot EditorPage() {
  return Classified(ScreenBuilder().Put(0, 0, u"哈囉").Put(23, 0, u" 編輯文章 ").Cursor(2, 4));
}
inline ScreenSnapshot TypingPage() {
  return Classified(ScreenBuilder().Put(20, 0, u"代號: ").Fill(20, 6, 20, kAttrInputField).Cursor(20, 6));
}

inline ScreenSnapshot MessagePage() {
  return Classified(ScreenBuilder().Put(23, 0, u" ◆ 沒有符合的文章").Cursor(23, 79));
}
// An instant message lies over the page.
inline ScreenSnapshot StarLine(ScreenSnapshot screen) {
  screen.pageFlags |= PF_STAR_LINE;
  screen.cursorRow = 22;
  screen.cursorCol = 40;
  return screen;
}

}  // namespace quillet
