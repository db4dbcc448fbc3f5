#include "bbs/page_kind.h"

#include <gtest/gtest.h>
#include <ostream>

#include "bbs/page_flags.h"
#include "platform/utf8.h"
#include "tests/support/pages.h"
#include "tests/support/tables.h"

namespace quillet {

void PrintTo(PageKind kind, std::ostream* out) {
  constexpr const char* kNames[] = {"other",  "menu",   "list",   "article list",
                                    "reader", "editor", "typing", "pause"};
  *out << kNames[static_cast<int>(kind)];
}

namespace {

constexpr int kBottom = kRows - 1;

using PageKindTest = WithTables;

// As the classifier leaves it.
PageKind Of(const ScreenSnapshot& screen) {
  return KindOf(Classified(screen));
}

// With the flags that the classifier gives to the pages of a walk through the demo BBS.
TEST_F(PageKindTest, OfThePagesOfAWalkAndWhereTextIsTyped) {
  struct Page {
    std::u16string_view bottom;
    std::uint32_t flags;
    int fieldCells;
    PageKind kind;
    bool takesText = false;
  };
  const Page pages[] = {
      {u"搜尋看板: ", PF_INPUT_FIELD, 12, PageKind::kTyping, true},
      {u"檔案處理: ", PF_INPUT_FIELD, 3, PageKind::kTyping},
      {u"請選擇: ", PF_ARTICLE_LIST | PF_INPUT_FIELD, 4, PageKind::kTyping, true},
      {u" 文章選讀 ", PF_LIST_CURSOR | PF_ARTICLE_LIST, 0, PageKind::kArticleList},
      {u"任意鍵", PF_ARTICLE_LIST | PF_ANYKEY_BANNER, 0, PageKind::kPause},
      {u"  瀏覽 第 2/5 頁", PF_READING | PF_READ_END, 0, PageKind::kReader},
      {u"您覺得這篇文章", PF_PUSH_LINE, 0, PageKind::kTyping},
      {u"推 greeted: ", PF_PUSH_LINE | PF_INPUT_FIELD, 40, PageKind::kTyping, true},
      {u"推 greeted: 確定", PF_PUSH_LINE | PF_PUSH_CONFIRM | PF_INPUT_FIELD, 5, PageKind::kTyping},
      {u"  瀏覽 第 1/1 頁", PF_READING | PF_DISPUTED_NOTICE, 0, PageKind::kPause},
      {u" ★ 這份文件是可播放的文字動畫", PF_ANIMATION_PROMPT, 0, PageKind::kTyping},
      {u" >>> 動畫播放中", PF_PAUSE, 0, PageKind::kPause},
      {u" 編輯文章", PF_EDITOR, 0, PageKind::kEditor, true},
      {u" 編輯文章", PF_INPUT_FIELD | PF_EDITOR, 2, PageKind::kTyping},
      {u"", 0, 0, PageKind::kOther, true},
  };
  for (const Page& page : pages) {
    ScreenBuilder builder;
    builder.Put(kBottom, 0, page.bottom).Fill(kBottom, 30, 30 + page.fieldCells, kAttrInputField);
    builder.Cursor(kBottom, 30).screen.pageFlags = page.flags;
    EXPECT_EQ(KindOf(builder.screen), page.kind) << Utf8FromUtf16(page.bottom);
    EXPECT_EQ(Understand(builder.screen).typing == Typing::kText, page.takesText)
        << Utf8FromUtf16(page.bottom);
  }
}

TEST_F(PageKindTest, AMenuIsToldFromAListByTheKeysOfItsLines) {
  const auto chosen = [](std::u16string_view line, int cursorCol) {
    return Of(ScreenBuilder().Put(12, 0, line).Cursor(12, cursorCol).screen);
  };
  EXPECT_EQ(chosen(u"         ●  (A)nnounce    【 精華公佈欄 】", 10), PageKind::kMenu);
  EXPECT_EQ(chosen(u"        >(0)hat          【 聊天室 】", 8), PageKind::kMenu);
  EXPECT_EQ(chosen(u"●    1   kagami        鏡                    203.0.113.7", 1), PageKind::kList);
  EXPECT_EQ(chosen(u">    12 + 11/06 kagami       ◇ (A)(B) 選哪個", 0), PageKind::kList);
  EXPECT_EQ(chosen(u"●", 1), PageKind::kList) << "an empty list";
  EXPECT_EQ(chosen(std::u16string(77, u' ') + u">(A", 77), PageKind::kList) << "cut at the edge";
  EXPECT_EQ(chosen(u"我是 (A)nnounce", 3), PageKind::kOther) << "no cursor mark";
  ScreenBuilder message;
  message.Put(12, 0, u"         ●  (A)nnounce").Put(22, 0, u"★").Cursor(22, 40);
  message.screen.pageFlags = PF_LIST_CURSOR | PF_STAR_LINE;
  EXPECT_EQ(KindOf(message.screen), PageKind::kMenu) << "the cursor is the message's";
}

TEST_F(PageKindTest, WhatWaitsOrIsTypedComesBeforeThePageBelow) {
  const ScreenSnapshot reader = WithReaderFooter(ArticleHeader());
  ASSERT_EQ(Of(reader), PageKind::kReader);
  const auto over = [&reader] {
    ScreenBuilder page;
    page.screen = reader;
    return page;
  };
  EXPECT_EQ(Of(over().Put(22, 0, u"某個問題: ").Fill(22, 10, 30, kAttrInputField).Cursor(22, 10).screen),
            PageKind::kTyping)
      << "a prompt that no page test knows";
  EXPECT_EQ(Of(over().Put(kBottom, 0, u" ◆ 本板禁止快速連續推文，請再等 3 秒").Cursor(kBottom, 79).screen),
            PageKind::kPause);
  EXPECT_EQ(Of(over().Put(kBottom, 0, u"→ kagami: ").Cursor(kBottom, 10).screen), PageKind::kTyping);
  EXPECT_EQ(Of(ScreenBuilder().screen), PageKind::kOther);
}

}  // namespace
}  // namespace quillet
