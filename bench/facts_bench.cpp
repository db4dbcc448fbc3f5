// What it costs to understand a screen: an article page with 20 push lines from nothing, the same page when
// one row is different, the user's keywords in it, and one classification of every kind of page.
//
//   facts_bench                      times
//   facts_bench --callgrind NAME     one run of what NAME says ("page", "row", "keywords", "keywords-row", or
//                                    a page of --pages), for "valgrind --tool=callgrind
//                                    --toggle-collect='*Measured*'"
//   facts_bench --pages              the names of the pages
#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "bbs/article/article_info.h"
#include "bbs/keywords.h"
#include "bbs/page_understanding.h"
#include "bbs/screen_classifier.h"
#include "core/charset.h"
#include "tests/support/article_pages.h"

namespace quillet {
namespace {

constexpr std::int64_t kNow = 1794000000;

struct Page {
  std::string name;
  ScreenSnapshot screen;
};

ScreenSnapshot ArticlePage() {
  ScreenBuilder builder;
  builder.screen = ArticleHeader();
  const std::u16string_view marks[] = {u"推", u"噓", u"→"};
  for (int row = 3; row < 23; ++row) {
    builder.Put(row, 0, marks[static_cast<std::size_t>(row) % 3]);
    builder.Put(row, 3, u"kagami" + std::u16string(static_cast<std::size_t>(row) % 7, u'x') + u": ");
    builder.Put(row, 18, u"今天的月亮好圓，鏡子裡也有一個，不知道是誰放進去的  11/06 06:04");
  }
  return WithReaderFooter(builder.screen);
}

// One of each kind that the classifier knows, as it stands when it has settled.
std::vector<Page> AllPages() {
  constexpr std::u16string_view kHelp =
      u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ";
  constexpr std::u16string_view kBanner = u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ";
  const ScreenSnapshot article = ArticlePage();
  std::vector<Page> pages;
  const auto add = [&pages](const char* name, const ScreenBuilder& builder) {
    pages.push_back({name, builder.screen});
    pages.back().screen.sessionState = SessionState::kConnected;
    pages.back().screen.isBbsSite = 1;
  };
  const auto over = [&article](int row, std::u16string_view text) {
    ScreenBuilder builder;
    builder.screen = article;
    return builder.Put(row, 0, std::u16string(kCols, u' ')).Put(row, 0, text);
  };
  add("reader", over(22, u""));
  add("reader-search", over(22, u"[搜尋]關鍵字:").Fill(22, 13, 60, kAttrInputField).Cursor(22, 40));
  add("reader-select", over(22, u" 確定要選這篇嗎?[y/N]").Fill(22, 21, 79, kAttrInputField).Cursor(22, 78));
  add("reader-question", over(22, u"別的問題").Fill(22, 13, 79, kAttrInputField).Cursor(22, 78));
  add("push", over(23, u"您覺得這篇文章 1.值得推薦 2.給它噓聲 3.只加→註解 [1]? ").Cursor(23, 60));
  add("push-refused", over(23, u" ◆ 無法推文: 使用者不可發言").Cursor(23, 79));
  add("push-confirm", over(23, u"→ kagami: x 確定[y/N]:y").Cursor(23, 24));
  add("article-list",
      ScreenBuilder().Put(1, 0, kHelp).Put(22, 0, u"●").Put(23, 0, u" 文章選讀 ").Cursor(22, 1));
  add("mail-menu", ScreenBuilder().Put(0, 0, u"【郵件選單】").Put(12, 20, u">").Cursor(12, 20));
  add("menu", ScreenBuilder().Put(0, 0, u"【主功能表】").Put(12, 20, u">").Cursor(12, 20));
  add("editor", ScreenBuilder().Put(5, 0, u">").Put(23, 0, u" 編輯文章").Cursor(5, 0));
  add("any-key", ScreenBuilder().Put(0, 0, u"【說明】").Put(23, 0, kBanner).Cursor(23, 79));
  add("information", ScreenBuilder().Put(20, 0, u"│ 文章").Put(23, 0, kBanner).Cursor(23, 79));
  add("animation-prompt",
      ScreenBuilder().Put(23, 0, u" ★ 這份文件是可播放的文字動畫，要開始播放嗎？ [Y/n]").Cursor(23, 60));
  add("animation",
      ScreenBuilder().Put(23, 0, u" ◆  >>> 暫停播放動畫，請按任意鍵繼續或 q 中斷。 <<< ").Cursor(23, 79));
  add("input-field", ScreenBuilder().Put(0, 0, u"代號:").Fill(0, 5, 80, kAttrInputField).Cursor(0, 79));
  add("star-line",
      over(22, u"").Fill(22, 0, 10, 0xCB).Fill(22, 10, 78, 0xAF).Put(22, 0, u"★", 0xCB).Cursor(22, 78));
  add("star-cursor", over(22, u"").Put(22, 0, u"★", 0xCB).Fill(22, 0, 60, 0xCB).Cursor(22, 78));
  add("disputed",
      ScreenBuilder()
          .Put(11, 0, u"        本篇文章內容經站方授權之板務管理人員判斷有尚待證實之處，")
          .Put(12, 0, u"        請使用者於閱讀時自行參閱其他資訊來源，對文章內容真實性進一步查證。")
          .Put(23, 0, u"  瀏覽 第 1/1 頁 (100%)", 0x87)
          .Cursor(23, 79));
  add("blank", ScreenBuilder());
  return pages;
}

[[gnu::noinline]] const UnderstoodPage& MeasuredUnderstanding(PageUnderstanding& understanding,
                                                              const ScreenSnapshot& screen) {
  return understanding.Look(screen);
}

[[gnu::noinline]] void MeasuredKeywords(KeywordMarks& marks, const ScreenSnapshot& screen,
                                        const Keywords& keywords, UnderstoodPage& page) {
  marks.Mark(screen, keywords, page);
}

[[gnu::noinline]] void MeasuredClassification(const PageTests& pages, ScreenSnapshot& screen) {
  ClassifyScreen(pages, screen, ScreenReason::kUpdated);
}

std::vector<std::u16string> SomeKeywords() {
  return {u"moon", u"月光", u"Kagamine", u"文藝坊", u"日出"};
}

ScreenSnapshot Classified(ScreenSnapshot screen) {
  ClassifyScreen(PageTests(), screen, ScreenReason::kUpdated);
  return screen;
}

ScreenSnapshot WithOtherRow(ScreenSnapshot screen) {
  screen.text[12] = ScreenBuilder().Put(12, 0, u"→ kagami: 鏡子裡是誰  11/06 06:04").screen.text[12];
  return screen;
}

// False when `name` is none of these.
bool CountPage(std::string_view name) {
  const ScreenSnapshot screen = Classified(ArticlePage());
  PageUnderstanding understanding;
  UnderstoodPage page = PageUnderstanding().Look(screen);  // the linker's work at first calls
  KeywordMarks marks;
  if (name == "page") {
    MeasuredUnderstanding(understanding, screen);
  } else if (name == "row") {
    understanding.Look(screen);
    MeasuredUnderstanding(understanding, WithOtherRow(screen));
  } else if (name == "keywords") {
    MeasuredKeywords(marks, screen, Keywords(SomeKeywords()), page);
  } else if (name == "keywords-row") {
    const Keywords keywords(SomeKeywords());
    marks.Mark(screen, keywords, page);
    MeasuredKeywords(marks, WithOtherRow(screen), keywords, page);
  } else {
    return false;
  }
  return true;
}

int RunCallgrind(std::string_view name) {
  if (CountPage(name)) return 0;
  for (Page& page : AllPages()) {
    if (page.name != name) continue;
    const PageTests pages;
    ClassifyScreen(pages, page.screen, ScreenReason::kUpdated);  // the linker's work at first calls
    page.screen.pageFlags = 0;
    MeasuredClassification(pages, page.screen);
    return 0;
  }
  std::fputs("No such page; see --pages.\n", stderr);
  return 1;
}

int RunTimes(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  const ScreenSnapshot article = Classified(ArticlePage());
  const ScreenSnapshot other = WithOtherRow(article);
  benchmark::RegisterBenchmark("Understand/page", [&](benchmark::State& state) {
    PageUnderstanding understanding;
    for (auto _ : state) {
      understanding = PageUnderstanding();
      benchmark::DoNotOptimize(MeasuredUnderstanding(understanding, article));
    }
  });
  benchmark::RegisterBenchmark("Understand/one-row", [&](benchmark::State& state) {
    PageUnderstanding understanding;
    bool turn = false;
    for (auto _ : state)
      benchmark::DoNotOptimize(MeasuredUnderstanding(understanding, (turn = !turn) ? article : other));
  });
  benchmark::RegisterBenchmark("Understand/five-keywords", [&](benchmark::State& state) {
    UnderstoodPage page = PageUnderstanding().Look(article);
    const Keywords keywords(SomeKeywords());
    for (auto _ : state) {
      KeywordMarks marks;
      MeasuredKeywords(marks, article, keywords, page);
    }
  });
  benchmark::RegisterBenchmark("Tracker/same-page", [&](benchmark::State& state) {
    ArticleTracker tracker;
    const UnderstoodPage page = PageUnderstanding().Look(article);
    for (auto _ : state)
      benchmark::DoNotOptimize(tracker.Look(article, page, kNow));
  });
  const PageTests pages;
  for (const Page& page : AllPages())
    benchmark::RegisterBenchmark(("Classify/" + page.name).c_str(), [&pages, page](benchmark::State& state) {
      ScreenSnapshot screen = page.screen;
      for (auto _ : state) {
        MeasuredClassification(pages, screen);
        benchmark::DoNotOptimize(screen.pageFlags);
      }
    });
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

int ListPages() {
  for (const Page& page : AllPages())
    std::puts(page.name.c_str());
  return 0;
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  if (!quillet::LoadCharsetTables(QUILLET_SOURCE_DIR "/Data").Complete()) {
    std::fputs("the character tables cannot be read\n", stderr);
    return 1;
  }
  const std::string_view option = argc > 1 ? argv[1] : "";
  if (argc == 3 && option == "--callgrind") return quillet::RunCallgrind(argv[2]);
  if (argc == 2 && option == "--pages") return quillet::ListPages();
  return quillet::RunTimes(argc, argv);
}
