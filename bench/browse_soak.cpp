// Whether memory stays flat while one browses: the real window off-screen over the demo BBS on loopback, led
// from board to board by key presses and wheel turns as a person would, as fast as it goes. Articles are
// opened and scrolled whole, lists paged, side lists opened, the window resized, palettes switched. Prints
// the resident memory every tenth of the way, and how much it grew once everything had been seen.
//
//   browse_soak [--pages N]    an hour's 3,600 pages, or N
//
// The demo runs in the same process, as it does for a user of the embedded demo: its memory counts too.
#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QWheelEvent>

#include "app/window/toolkit.h"
#include "bbs/page_flags.h"
#include "core/charset.h"
#include "demo/content_loader.h"
#include "input/text/screen_text.h"

#include "tools/screenshots/demo_run.h"

namespace quillet {
namespace {

constexpr int kPages = 3600;  // an hour, a page a second
constexpr int kReports = 10;
// Until here caches fill: every board, size and palette has been seen.
constexpr int kSettledAfter = 2;

// Bytes; 0 where the system does not tell in Linux's way.
std::int64_t ResidentMemory() {
  std::ifstream file("/proc/self/status");
  for (std::string word; file >> word;) {
    std::int64_t kilobytes = 0;
    if (word == "VmRSS:" && file >> kilobytes) return 1024 * kilobytes;
  }
  return 0;
}

double MiB(std::int64_t bytes) {
  return static_cast<double>(bytes) / (1 << 20);
}

class Progress {
 public:
  explicit Progress(int pages) : pages_(pages) { clock_.start(); }

  bool IsDone() const { return seen_ >= pages_; }
  void AddPages(int count) {
    seen_ += count;
    while (reports_ < kReports && seen_ >= std::int64_t{pages_} * (reports_ + 1) / kReports)
      Report();
  }
  void Conclude() const {
    const std::int64_t growth = memory_.back() - memory_[kSettledAfter - 1];
    std::printf("from %d%% to 100%% resident memory grew by %.2f MiB (%.2f%%)\n",
                kSettledAfter * 100 / kReports, MiB(growth),
                100.0 * static_cast<double>(growth) / static_cast<double>(memory_.back()));
  }

 private:
  void Report() {
    memory_[static_cast<std::size_t>(reports_)] = ResidentMemory();
    std::printf("%3d%%  %5d pages  %7.2f MiB resident  %5.0f s\n", 100 * (reports_ + 1) / kReports, seen_,
                MiB(memory_[static_cast<std::size_t>(reports_)]),
                static_cast<double>(clock_.elapsed()) / 1000);
    std::fflush(stdout);
    ++reports_;
  }

  const int pages_;
  int seen_ = 0;
  int reports_ = 0;
  std::array<std::int64_t, kReports> memory_{};
  QElapsedTimer clock_;
};

// A board, and the articles of it that can be read, by their numbers in the list.
struct Shelf {
  QString board;
  std::vector<int> numbers;
};

std::vector<Shelf> ReadableArticles() {
  std::vector<Shelf> shelves;
  for (const demo::Board& board : demo::LoadContent(DefaultDemoContent()).boards) {
    Shelf shelf{QString::fromStdString(board.info.name), {}};
    int number = 0;
    for (const demo::ArticlePtr& article : board.articles) {
      ++number;
      if (article->kind == demo::ArticleKind::kPlain) shelf.numbers.push_back(number);
    }
    if (!shelf.numbers.empty()) shelves.push_back(std::move(shelf));
  }
  return shelves;
}

// What stands in the side lists: all the articles, in a folder each board.
void FillList(ArticleFolder& root) {
  for (const demo::Board& board : demo::LoadContent(DefaultDemoContent()).boards) {
    ArticleFolder folder{FromBig5(board.info.name), {}};
    for (const demo::ArticlePtr& article : board.articles)
      folder.children.push_back(ArticleItem{.postTime = article->seconds,
                                            .score = article->Score(),
                                            .board = folder.name,
                                            .code = FromBig5(article->code),
                                            .extra = {},
                                            .title = FromBig5(article->title)});
    root.children.push_back(std::move(folder));
  }
}

class Visitor {
 public:
  Visitor(DemoRun& run, int pages) : run_(run), progress_(pages), shelves_(ReadableArticles()) {}

  void Browse() {
    run_.LogIn();
    run_.Doc().GetBookmarks().Change(ArticleListKind::kHot, FillList);
    run_.Doc().GetBookmarks().Change(ArticleListKind::kBookmarks, FillList);
    while (run_.IsFine() && !progress_.IsDone())
      for (const Shelf& shelf : shelves_)
        if (run_.IsFine() && !progress_.IsDone()) VisitBoard(shelf);
    if (run_.IsFine()) progress_.Conclude();
  }

 private:
  CQuillView& View() { return run_.View(); }
  const ArticleView& Article() { return View().Article(); }

  void VisitBoard(const Shelf& shelf) {
    constexpr int kArticlesPerVisit = 4;
    if (++boards_ % 3 == 0) PageBoardList();
    run_.GoToBoard(shelf.board);
    PageArticleList();
    for (int i = 0; i < kArticlesPerVisit && run_.IsFine(); ++i) {
      ReadArticle(shelf.numbers[random_() % shelf.numbers.size()]);
      Divert();
    }
  }

  // From an article list or the main menu.
  void PageBoardList() {
    const TourKey left = NamedKey(Qt::Key_Left);
    run_.Walk({{{}, {left}, Shows(u"【主功能表】"_qs), left}});
    std::vector<TourKey> keys = Typed(u"b");
    keys.push_back(NamedKey(Qt::Key_Right));
    run_.Press(keys, [](const CQuillView& view) {
      return Is(PF_LIST_CURSOR)(view) && Shows(u"【看板列表】"_qs)(view);
    });
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home})
      MoveCursor(key);
    progress_.AddPages(2);
  }

  void PageArticleList() {
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_Home})
      MoveCursor(key);
    progress_.AddPages(2);
  }

  // To the other end of the list.
  void MoveCursor(Qt::Key key) {
    const unsigned count = View().ScreenCount();
    PressKey(run_.Frame(), NamedKey(key));
    run_.Await("an answer", [&] { return View().ScreenCount() != count || CursorIsAtEnd(key); });
  }
  bool CursorIsAtEnd(Qt::Key key) {
    constexpr int kFirstListRow = 3;
    return key == Qt::Key_Home && View().Screen().cursorRow == kFirstListRow;
  }

  // The number that the list shows in the cursor's row; 0: none.
  int NumberAtCursor() {
    constexpr std::size_t kEndOfNumber = 7;
    const ScreenSnapshot& screen = View().Screen();
    if (!screen.CursorInside()) return 0;
    int number = 0;
    for (std::size_t col = 0; col < kEndOfNumber; ++col)
      if (const int byte = screen.TextAt(screen.cursorRow, static_cast<int>(col)); byte >= '0' && byte <= '9')
        number = number * 10 + byte - '0';
    return number;
  }
  bool IsInList() { return Is(PF_ARTICLE_LIST_CURSOR)(View()) && !Article().IsShown(); }

  void ReadArticle(int number) {
    Type(TypedLine(QString::number(number)));
    run_.Await(QStringLiteral("article %1 in the list").arg(number),
               [&] { return IsInList() && NumberAtCursor() == number; });
    Type({NamedKey(Qt::Key_Right)});
    run_.Await(QStringLiteral("article %1").arg(number), [&] { return ArticleRests(0, 1)(View()); });
    if (!run_.IsFine()) return;
    ++articles_;
    ScrollWhole();
    progress_.AddPages(std::max(1, (Article().LineCount() + kLinesShown - 1) / kLinesShown));
    Type({NamedKey(Qt::Key_Left)});
    run_.Await("the list again", [&] { return IsInList(); });
  }

  void ScrollWhole() {
    const int last = Article().LastTopRow();
    if (articles_ % 2 == 0) {
      RollTo(last);
    } else {
      PageTo(last);
      if (articles_ % 3 == 0) Jump(Qt::Key_Home, 0);
      if (articles_ % 9 == 0) Jump(Qt::Key_End, last);
    }
  }

  bool RestsAt(int top) { return Article().TopRow() == top && Article().TargetRow() == top; }

  void RollTo(int last) {
    run_.Await("the end by the wheel", [&] {
      if (Article().TargetRow() != last) Wheel(-1);
      return RestsAt(last);
    });
  }

  void PageTo(int last) {
    while (run_.IsFine() && Article().TargetRow() != last) {
      const int top = Article().TargetRow();
      Type({NamedKey(Qt::Key_PageDown)});
      run_.Await("the next page", [&] { return RestsAt(Article().TargetRow()); });
      if (Article().TargetRow() == top) run_.Fail(QStringLiteral("Page Down did not move the article."));
    }
  }

  void Jump(Qt::Key key, int top) {
    Type({NamedKey(key)});
    run_.Await("the end of the jump", [&] { return RestsAt(top); });
  }

  // Between two articles.
  void Divert() {
    if (articles_ % 5 == 0) LookIntoSideList();
    if (articles_ % 12 == 0) Resize();
    if (articles_ % 10 == 0) SwitchPalette();
  }

  void LookIntoSideList() {
    constexpr std::array kKinds = {ArticleListKind::kHot, ArticleListKind::kTracked,
                                   ArticleListKind::kBookmarks};
    SideListView& list = View().SideList();
    list.Open(kKinds[sideLists_++ % kKinds.size()]);
    Type(std::vector<TourKey>(5, NamedKey(Qt::Key_Down)));
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_End}) {
      Type({NamedKey(key)});
      run_.Await("the side list at rest", [&] { return list.Top() == list.State().first; });
    }
    list.Close();
    progress_.AddPages(1);
  }

  void Resize() {
    constexpr std::array kSizes = {QSize(1000, 640), QSize(1600, 900), QSize(640, 400), QSize(1280, 720)};
    run_.Resize(kSizes[resizes_++ % kSizes.size()]);
  }

  void SwitchPalette() {
    struct Look {
      bool dim, work;
    };
    constexpr std::array kLooks = {Look{true, false}, Look{false, true}, Look{false, false}};
    const Look& look = kLooks[palettes_++ % kLooks.size()];
    run_.Set(&Settings::darkColor, look.dim);
    run_.Set(&Settings::work, look.work);
  }

  void Type(const std::vector<TourKey>& keys) {
    for (const TourKey& key : keys)
      if (run_.IsFine()) PressKey(run_.Frame(), key);
  }

  void Wheel(int notches) {
    constexpr int kNotch = 120;
    const QPointF at(View().rect().center());
    QWheelEvent event(at, View().mapToGlobal(at), {}, QPoint(0, notches * kNotch), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&View(), &event);
  }

  DemoRun& run_;
  Progress progress_;
  const std::vector<Shelf> shelves_;
  std::minstd_rand random_{1};
  int boards_ = 0;
  int articles_ = 0;
  std::size_t sideLists_ = 0;
  std::size_t resizes_ = 0;
  std::size_t palettes_ = 0;
};

// Nothing when the command line is wrong.
std::optional<int> WantedPages(const QStringList& arguments) {
  QCommandLineParser parser;
  const QCommandLineOption pages("pages", "How many pages to read.", "N", QString::number(kPages));
  parser.addOption(pages);
  bool isNumber = false;
  if (!parser.parse(arguments) || !parser.positionalArguments().isEmpty()) return std::nullopt;
  const int count = parser.value(pages).toInt(&isNumber);
  return isNumber && count >= kReports ? std::optional(count) : std::nullopt;
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const auto pages = quillet::WantedPages(QApplication::arguments());
  if (!pages) {
    std::fputs("usage: browse_soak [--pages N], N at least 10\n", stderr);
    return 2;
  }
  quillet::PrepareToolkit();
  const QTemporaryDir scratch;
  quillet::DemoRun run(scratch.path());
  quillet::Visitor(run, *pages).Browse();
  if (!run.IsFine()) std::fputs(qPrintable(run.Complaint() + '\n'), stderr);
  return run.IsFine() ? 0 : 1;
}
