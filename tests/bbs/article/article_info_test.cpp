#include "bbs/article/article_info.h"

#include <optional>

#include "bbs/article/push_over_reader.h"
#include "bbs/page_understanding.h"
#include "bbs/screen_classifier.h"
#include "tests/support/article_pages.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

constexpr std::int64_t kNow = 1794000000;
constexpr std::u16string_view kSecondPage = u"  瀏覽 第 2/3 頁 ( 66%)  目前顯示: 第 23~44 行";

// Shows a tracker one screen after the other, as the view does: classified, and marked with what came before.
class ArticleInfoTest : public WithTables {
 protected:
  void SetUp() override {
    WithTables::SetUp();
    pages_.emplace();
  }
  bool Show(ScreenSnapshot screen) {
    ClassifyScreen(*pages_, screen, ScreenReason::kUpdated);
    return ShowAs(screen, screen.pageFlags);
  }
  // With the flags that an earlier screen left.
  bool ShowAs(ScreenSnapshot screen, std::uint32_t flags) {
    screen.pageFlags = flags;
    MarkPushOverReader(flags_, screen);
    flags_ = screen.pageFlags;
    return tracker_.Look(screen, understanding_.Look(screen), kNow);
  }
  const ArticleInfo& Info() const { return tracker_.Current(); }

  static ScreenSnapshot Body(int firstLine) {
    ScreenBuilder builder;
    for (int row = 4; row < 22; ++row)
      builder.Put(row, 0, u"第 " + std::u16string(static_cast<std::size_t>(firstLine + row), u'x') + u" 行");
    return builder.screen;
  }
  static ScreenSnapshot TopPage() {
    ScreenBuilder builder;
    builder.screen = ArticleHeader();
    for (int row = 4; row < 22; ++row)
      builder.Put(row, 0, u"第 " + std::u16string(static_cast<std::size_t>(row), u'o') + u" 行");
    return WithReaderFooter(builder.screen);
  }
  static ScreenSnapshot SecondPage() { return WithReaderFooter(Body(20), kSecondPage, 0xC7); }
  static ScreenSnapshot Over(const ScreenSnapshot& page, int row, std::u16string_view text) {
    ScreenBuilder builder;
    builder.screen = page;
    return builder.Put(row, 0, std::u16string(80, u' ')).Put(row, 0, text).screen;
  }
  static ScreenSnapshot List() {
    return ScreenBuilder().Put(23, 0, u" 文章選讀 ").Put(5, 0, u">").Cursor(5, 0).screen;
  }

  std::optional<PageTests> pages_;
  PageUnderstanding understanding_;
  ArticleTracker tracker_;
  std::uint32_t flags_ = 0;
};

TEST_F(ArticleInfoTest, AnArticleIsReadAtItsTopAndKeptOnItsPages) {
  EXPECT_FALSE(Show(List()));
  EXPECT_FALSE(tracker_.IsOpen());
  EXPECT_TRUE(Show(TopPage()));
  EXPECT_TRUE(tracker_.IsOpen() && Info().IsArticle());
  EXPECT_EQ(Info().author, u"kagami");
  EXPECT_EQ(Info().board, u"Astronomy");
  EXPECT_EQ(Info().title, u"[問題] 鏡子裡是誰");
  EXPECT_GT(Info().postTime, 1793800000);
  EXPECT_EQ(Info().page, 1);
  EXPECT_EQ(Info().lastLine, 22);
  EXPECT_FALSE(Show(TopPage()));

  const ArticleInfo top = Info();
  EXPECT_TRUE(Show(SecondPage()));
  EXPECT_EQ(Info().author, top.author);
  EXPECT_EQ(Info().postTime, top.postTime);
  EXPECT_EQ(Info().page, 2);
  EXPECT_EQ(Info().lastLine, 44);
  EXPECT_TRUE(Show(TopPage()));
  EXPECT_EQ(Info(), top);
  EXPECT_TRUE(Show(List()));
  EXPECT_FALSE(tracker_.IsOpen());
  EXPECT_EQ(Info(), ArticleInfo{});
}

TEST_F(ArticleInfoTest, AnotherArticleReplacesTheRecord) {
  struct Header {
    std::u16string_view author = u"kagami (鏡)", board = u"Astronomy", title = u"[問題] 鏡子裡是誰",
                        time = u"Fri Nov  6 06:04:05 2026";
  };
  for (const Header& header :
       {Header{.author = u"tsukasa"}, Header{.board = u"Joke"}, Header{.title = u"Re: [問題]"},
        Header{.time = u"Fri Nov  6 06:04:06 2026"}, Header{.time = u"garbage"}}) {
    tracker_.Drop();
    Show(TopPage());
    const ArticleInfo first = Info();
    EXPECT_TRUE(
        Show(WithReaderFooter(ArticleHeader(header.author, header.board, header.title, header.time))));
    EXPECT_NE(Info(), first);
    EXPECT_TRUE(Info().IsArticle());
    EXPECT_EQ(Info().postTime == 0, header.time == u"garbage");
  }
  // One without a header is not the one before.
  EXPECT_TRUE(Show(WithReaderFooter(Body(0))));
  EXPECT_TRUE(tracker_.IsOpen());
  EXPECT_FALSE(Info().IsArticle());
  EXPECT_EQ(Info().title, u"");
  EXPECT_EQ(Info().postTime, 0);
}

TEST_F(ArticleInfoTest, ScrollingOffTheHeaderForgetsNothing) {
  Show(TopPage());
  const std::u16string author = Info().author;
  // The red footer calls all of page 1 the top.
  ScreenBuilder scrolled;
  scrolled.screen = WithReaderFooter(Body(1), u"  瀏覽 第 1/3 頁 ( 33%)  目前顯示: 第 02~23 行", 0xC7);
  scrolled.Fill(23, 60, 70, 0x27);
  Show(scrolled.screen);
  ASSERT_NE(flags_ & PF_READ_TOP, 0u);
  EXPECT_NE(flags_ & PF_READ_FOOTER_RED, 0u);
  EXPECT_EQ(Info().author, author);
  EXPECT_EQ(Info().lastLine, 23);
}

TEST_F(ArticleInfoTest, WhatIsDrawnOverTheReaderDoesNotEndIt) {
  ScreenBuilder question;
  question.screen = Over(SecondPage(), 22, u"[搜尋]關鍵字:");
  question.Fill(22, 13, 40, kAttrInputField).Cursor(22, 13);
  ScreenBuilder help;
  help.Put(0, 0, u"【說明】").Put(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ");
  help.Cursor(23, 79);
  ScreenBuilder half;
  half.Put(0, 0, u"這一頁才畫到一半").Put(1, 0, u"就被切斷了").Cursor(1, 10);
  ScreenBuilder footerBegun = half;
  footerBegun.Put(23, 0, u"  ").screen.text[23][2] = 0xC2;
  const ScreenSnapshot covers[] = {
      question.screen,
      help.screen,
      half.screen,
      footerBegun.screen,
      Over(SecondPage(), 23, u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]? "),
      Over(SecondPage(), 23, u" ◆ 後面沒有這個關鍵字 "),
      Over(SecondPage(), 23, u" ★ 這份文件是可播放的文字動畫，要開始播放嗎？ [Y/n]"),
  };
  for (const ScreenSnapshot& cover : covers) {
    tracker_.Drop();
    Show(TopPage());
    Show(SecondPage());
    const ArticleInfo before = Info();
    EXPECT_FALSE(Show(cover));
    EXPECT_EQ(flags_ & PF_READING, 0u);
    EXPECT_TRUE(tracker_.IsOpen());
    EXPECT_FALSE(Show(SecondPage()));
    EXPECT_EQ(Info(), before);
  }
}

TEST_F(ArticleInfoTest, AStarLineChangesNothing) {
  Show(TopPage());
  const ArticleInfo before = Info();
  EXPECT_FALSE(ShowAs(Over(ScreenBuilder().screen, 23, u"★tsukasa 在嗎"), flags_ | PF_STAR_LINE));
  EXPECT_EQ(Info(), before);
  // Over a list it says that the article has been left.
  EXPECT_TRUE(ShowAs(Over(List(), 23, u"★tsukasa 在嗎"), PF_ARTICLE_LIST | PF_STAR_LINE));
  EXPECT_FALSE(tracker_.IsOpen());
}

TEST_F(ArticleInfoTest, AnyOtherPageEndsIt) {
  ScreenBuilder menu, mail, editor, notice;
  menu.Put(0, 0, u"【主功能表】").Put(12, 20, u">").Cursor(12, 20).Put(23, 0, u"[11/6 星期五] 線上 5 人");
  mail.Put(0, 0, u"【郵件選單】").Put(23, 0, u" 鴻雁往返 ");
  editor.Put(23, 0, u" 編輯文章  (^Z/F1)說明");
  notice.Put(11, 0, u"        本篇文章內容經站方授權之板務管理人員判斷有尚待證實之處，");
  notice.Put(12, 0, u"        請使用者於閱讀時自行參閱其他資訊來源，對文章內容真實性進一步查證。");
  notice.Put(23, 0, u"  瀏覽 第 1/1 頁 (100%)", 0x87).Cursor(23, 79);
  for (const ScreenBuilder& page : {menu, mail, editor, notice}) {
    Show(TopPage());
    EXPECT_TRUE(Show(page.screen));
    EXPECT_FALSE(tracker_.IsOpen());
    EXPECT_EQ(Info(), ArticleInfo{});
  }
}

TEST_F(ArticleInfoTest, TheBoxOverTheReaderTellsTheCode) {
  const auto box = [](const ScreenSnapshot& page, std::u16string_view line) {
    ScreenBuilder builder;
    builder.screen = page;
    return builder.Put(19, 0, line)
        .Put(20, 0, u"│ 文章網址: ")
        .Put(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ")
        .Cursor(23, 79)
        .screen;
  };
  constexpr std::u16string_view kLine = u"│ 文章代碼(AID): #1abC-_9Z (Astronomy) [bbs.example] x";
  EXPECT_FALSE(Show(box(List(), kLine)));  // of no open article
  Show(TopPage());
  EXPECT_TRUE(Show(box(TopPage(), kLine)));
  EXPECT_EQ(Info().code, u"1abC-_9Z");
  EXPECT_FALSE(Show(TopPage()));
  EXPECT_EQ(Info().code, u"1abC-_9Z");
  EXPECT_TRUE(Show(WithReaderFooter(ArticleHeader(u"tsukasa"))));
  EXPECT_EQ(Info().code, u"");

  // Another code, or another board's, says that this is another article.
  Show(TopPage());
  Show(box(TopPage(), u"│ 文章代碼(AID): #1abC-_9Z (Joke) [bbs.example] x"));
  EXPECT_EQ(Info().author, u"");
  EXPECT_EQ(Info().board, u"Joke");
  // A code that came first stays when the header is seen.
  tracker_.Drop();
  Show(SecondPage());
  Show(box(SecondPage(), kLine));
  Show(TopPage());
  EXPECT_TRUE(Info().IsArticle());
  EXPECT_EQ(Info().code, u"1abC-_9Z");
}

}  // namespace
}  // namespace quillet
