// Classifying a screen must take nothing from the heap.
#include <memory>
#include <string>

#include "bbs/page_understanding.h"
#include "bbs/screen_classifier.h"
#include "tests/support/allocation_count.h"
#include "tests/support/article_pages.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using ClassifierAllocationTest = WithTables;

TEST_F(ClassifierAllocationTest, NoPageTakesMemory) {
  const PageTests pages;
  ScreenBuilder list, field, push, banner;
  list.Put(1, 0, u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ");
  list.Put(5, 0, u">").Put(23, 0, u" 文章選讀 ").Cursor(5, 0);
  field.Put(22, 0, u"[搜尋]關鍵字:").Fill(22, 13, 40, kAttrInputField).Cursor(22, 13);
  push.Put(23, 0, u"→ kagami: x 確定[y/N]:y").Cursor(23, 24);
  banner.Put(0, 0, u"【").Put(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ").Cursor(23, 79);
  ScreenSnapshot screens[] = {list.screen,   field.screen,           push.screen,
                              banner.screen, ScreenBuilder().screen, WithReaderFooter(ArticleHeader())};
  PageUnderstanding understanding;
  for (ScreenSnapshot& screen : screens) {
    const int before = allocations;
    ClassifyScreen(pages, screen, ScreenReason::kUpdated);
    understanding.Look(screen);
    EXPECT_EQ(allocations, before);
  }
  // The counter counts.
  const int before = allocations;
  EXPECT_EQ(*std::make_unique<int>(7), 7);
  EXPECT_EQ(std::string(100, 'x').size(), 100u);
  EXPECT_GE(allocations, before + 1);
}

}  // namespace
}  // namespace quillet
