// The kinds of the pages that a recorded walk through the demo BBS passes, and of those that it does not.
#include "input/page_kind.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bbs/screen_classifier.h"
#include "core/notify_target.h"
#include "core/term_screen.h"
#include "input/takes_text.h"
#include "platform/utf8.h"
#include "tests/input/bbs_page.h"
#include "tests/support/article_pages.h"
#include "tests/support/tables.h"

namespace quillet {

void PrintTo(PageKind kind, std::ostream* out) {
  constexpr const char* kNames[] = {"other",  "menu",   "list",   "article list",
                                    "reader", "editor", "typing", "pause"};
  *out << kNames[static_cast<int>(kind)];
}

namespace {

constexpr int kBottom = kRows - 1;
constexpr std::uint8_t kSecondOfBullet = 0xB4;

// Every screen that the view would get on the walk.
class Walk : private NotifyTarget {
 public:
  Walk() {
    TermScreen screen;
    screen.SetWatcher(&classifier_);
    screen.notifyWindow = this;
    screen.sessionState = 2;
    screen.isBbsSite = 1;
    screen.curAttr = kAttrBlank;
    std::ifstream stream(QUILLET_SOURCE_DIR "/tests/demo/data/tour.stream", std::ios::binary);
    std::ifstream reads(QUILLET_SOURCE_DIR "/tests/demo/data/tour.flags");
    for (std::string line; std::getline(reads, line);) {
      std::string read(std::stoul(line), '\0');
      stream.read(read.data(), static_cast<std::streamsize>(read.size()));
      screen.Feed({reinterpret_cast<const std::uint8_t*>(read.data()), read.size()});
    }
  }
  const std::vector<ScreenSnapshot>& Screens() const { return screens_; }

 private:
  bool Post(unsigned message, std::uintptr_t, std::uintptr_t second) override {
    if (message != kMessageScreen) return false;
    const std::unique_ptr<ScreenSnapshot> taken(reinterpret_cast<ScreenSnapshot*>(second));
    screens_.push_back(*taken);
    return true;
  }

  ScreenClassifier classifier_;
  std::vector<ScreenSnapshot> screens_;
};

using PageKindTest = WithTables;

// As the classifier leaves it.
PageKind Of(const ScreenSnapshot& screen) {
  return KindOf(Classified(screen));
}

TEST_F(PageKindTest, OfEveryPageOfAWalkThroughTheBbs) {
  // Where the cursor stands when the page is complete and nothing lies over it.
  enum class At { kAnywhere, kMark, kNoField };
  struct Page {
    int row;
    std::u16string_view text;
    At at;
    PageKind kind;
    std::set<bool> takesText = {false};
  };
  const Page pages[] = {
      {20, u"請輸入代號", At::kAnywhere, PageKind::kTyping, {true}},
      {0, u"【主功能表】", At::kMark, PageKind::kMenu},
      {22, u"★", At::kAnywhere, PageKind::kMenu},
      {0, u"【郵件選單】", At::kMark, PageKind::kMenu},
      {kBottom, u" 選擇看板 ", At::kMark, PageKind::kList},
      {kBottom, u"搜尋看板", At::kAnywhere, PageKind::kTyping, {true}},
      {kBottom, u" 文章選讀 ", At::kMark, PageKind::kArticleList},
      {20, u"│ 文章", At::kAnywhere, PageKind::kPause},
      {kBottom, u"  瀏覽 第 2/5 頁", At::kAnywhere, PageKind::kReader},
      {22, u"[搜尋]關鍵字:", At::kAnywhere, PageKind::kTyping, {true}},
      {kBottom, u"您覺得這篇文章", At::kAnywhere, PageKind::kTyping},
      {kBottom, u"推 greeted", At::kAnywhere, PageKind::kTyping, {true, false}},
      {11, u"        本篇文章內容經站方授權", At::kAnywhere, PageKind::kPause},
      {kBottom, u" ★ 這份文件是可播放的文字動畫", At::kAnywhere, PageKind::kTyping},
      {kBottom, u" >>> 動畫播放中", At::kAnywhere, PageKind::kPause},
      {kBottom, u" ◆ 此文章無內容", At::kAnywhere, PageKind::kPause},
      {kBottom, u" 編輯文章", At::kNoField, PageKind::kEditor, {true}},
      {0, u"檔案處理：", At::kAnywhere, PageKind::kTyping},
      {kBottom, u" ◆ 文章沒有送出", At::kAnywhere, PageKind::kPause},
  };
  const Walk walk;
  for (const Page& page : pages) {
    const std::string text = ToBig5(page.text);
    std::set<bool> takesText;  // the answer to a question is a letter
    for (const ScreenSnapshot& screen : walk.Screens()) {
      if (!RowStartsWith(screen, page.row, 0, text)) continue;
      const bool onMark = screen.TextAt(screen.cursorRow, screen.cursorCol) == kSecondOfBullet;
      const bool inField = screen.AttrAt(screen.cursorRow, screen.cursorCol) == kAttrInputField;
      if ((page.at == At::kMark && !onMark) || (page.at == At::kNoField && inField)) continue;
      EXPECT_EQ(KindOf(screen), page.kind) << Utf8FromUtf16(page.text);
      takesText.insert(TakesText(screen));
    }
    EXPECT_EQ(takesText, page.takesText) << Utf8FromUtf16(page.text);
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

TEST_F(PageKindTest, NoCursorOutsideTheScreenIsLookedUp) {
  for (const int row : {-128, -1, 24, 127}) {
    for (const int col : {-128, -1, 80, 127}) {
      ScreenBuilder page;
      page.Cursor(row, col);
      for (std::uint32_t flag = 1; flag <= PF_PUSH_OVER_READER; flag <<= 1) {
        page.screen.pageFlags = flag;
        EXPECT_LT(static_cast<int>(KindOf(page.screen)), kPageKinds);
      }
    }
  }
}

}  // namespace
}  // namespace quillet
