#include "app/side_list/side_list_view.h"

#include <fstream>

#include <QWheelEvent>

#include "core/key_sequence.h"
#include "input/key_control.h"
#include "settings/files/article_list_file.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

using Kind = ArticleListKind;
constexpr QSize kWindow(1280, 720);
constexpr double kUnit = 30;

class SideListViewTest : public WindowTest {
 protected:
  void PutFile(std::string_view name, const std::string& text) {
    std::ofstream(ProgramHome() / name, std::ios::binary) << text;
  }
  std::string FileText(std::string_view name) const {
    std::ifstream stream(ProgramHome() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  static std::string Line(const std::string& board, const std::string& code, const std::string& title) {
    return "1700000000 12 -1 " + board + ' ' + code + "  " + title + '\n';
  }

  // Over the lists that were put into files before.
  void StartList() {
    Start();
    window.resize(kWindow);
    list = new SideListView(doc->GetBookmarks(), doc->GetSettings(), images, &window);
    window.show();
    list->Place({.area = window.rect(), .unit = kUnit});
  }
  void StartMany(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
      text += Line("Board", "1Xabcde" + std::string(1, static_cast<char>('A' + i % 26)), std::to_string(i));
    PutFile("bookmark.txt", text);
    StartList();
    list->Open(Kind::kBookmarks);
  }

  // The middle of the row of a shown entry.
  QPointF RowOf(int entry) const {
    const SideListFrame& shape = list->Frame();
    return {shape.List().center().x(), shape.List().top() + (entry - list->Top() + 0.5) * shape.RowHeight()};
  }
  void Click(const QPointF& at, QEvent::Type type = QEvent::MouseButtonPress) {
    QMouseEvent press(type, at, list->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(list, &press);
  }
  void Drag(const QPointF& from, const QPointF& to) {
    Click(from);
    Click(to, QEvent::MouseMove);
  }
  void LetGo(const QPointF& at) { Click(at, QEvent::MouseButtonRelease); }
  void Wheel(int eighths) {
    const QPointF at = list->Frame().List().center();
    QWheelEvent wheel(at, list->mapToGlobal(at), {}, QPoint(0, eighths), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(list, &wheel);
  }
  QImage Picture() { return list->grab().toImage(); }

  EmbeddedImages images;
  QWidget window;
  SideListView* list = nullptr;
};

TEST_F(SideListViewTest, AnArticleIsOpenedByItsCodeAndTheListCloses) {
  PutFile("bookmark.txt",
          "<Folder Name=f>\n" + Line("Art", "1Xabcdef", "a") + "</Folder>\n" + Line("Zoo", "", "no code"));
  StartList();
  ArticleReference chosen;
  int times = 0;
  QObject::connect(list, &SideListView::ArticleChosen, list, [&](const ArticleReference& article) {
    chosen = article;
    ++times;
  });
  EXPECT_FALSE(list->OnKey(kKeyDown)) << "not while it is closed";
  list->Toggle(Kind::kBookmarks);
  EXPECT_TRUE(list->isVisible());
  EXPECT_TRUE(list->OnKey(kKeyEnter)) << "on the folder";
  EXPECT_TRUE(list->OnKey(kKeyEnd));
  EXPECT_TRUE(list->OnKey(kKeyRight)) << "on the one without a code";
  EXPECT_EQ(times, 0);
  EXPECT_EQ(list->Shown(), Kind::kBookmarks);
  EXPECT_FALSE(list->OnKey(kKeyTab));
  EXPECT_TRUE(list->OnKey(kKeyUp));
  EXPECT_TRUE(list->OnKey(kKeyEnter));
  EXPECT_EQ(chosen, (ArticleReference{.board = u"Art", .code = u"1Xabcdef"}));
  EXPECT_FALSE(list->Shown());
  EXPECT_FALSE(list->isVisible());

  list->Open(Kind::kBookmarks);
  Click(RowOf(1));
  EXPECT_EQ(list->State().selected, 1);
  Click(RowOf(1), QEvent::MouseButtonDblClick);
  EXPECT_EQ(times, 2);
  int closed = 0;
  QObject::connect(list, &SideListView::Closed, list, [&] { ++closed; });
  list->Open(Kind::kHot);
  list->Toggle(Kind::kTracked);
  EXPECT_EQ(list->Shown(), Kind::kTracked);
  list->Toggle(Kind::kTracked);
  list->Open(Kind::kHot);
  EXPECT_TRUE(list->OnKey(kKeyEscape));
  EXPECT_EQ(closed, 2);
}

TEST_F(SideListViewTest, ABookmarkIsRemovedFromTheListAsAnotherProgramHasMadeIt) {
  PutFile("bookmark.txt", Line("Art", "1Xabcdef", "a") + Line("Art", "1Xabcdeg", "b"));
  PutFile("track.txt", "header\n" + Line("Art", "1Xabcdef", "a"));
  StartList();
  list->Open(Kind::kTracked);
  EXPECT_TRUE(list->OnKey(kKeyDelete));
  EXPECT_EQ(list->State().count, 1) << "only bookmarks are removed by hand";
  list->Open(Kind::kBookmarks);
  list->OnKey(kKeyDown);
  PutFile("bookmark.txt",
          Line("New", "1Xabcdeh", "theirs") + Line("Art", "1Xabcdef", "a") + Line("Art", "1Xabcdeg", "b"));
  EXPECT_TRUE(list->OnKey('D'));
  const std::string text = FileText("bookmark.txt");
  EXPECT_NE(text.find("theirs"), std::string::npos);
  EXPECT_NE(text.find("1Xabcdef"), std::string::npos);
  EXPECT_EQ(text.find("1Xabcdeg"), std::string::npos);
  EXPECT_EQ(list->State().count, 2);
}

TEST_F(SideListViewTest, AFolderThatHoldsSomethingIsRemovedAtTheSecondPressOnly) {
  const std::string full = "<Folder Name=full>\n" + Line("Art", "1Xabcdef", "a") + "</Folder>\n";
  PutFile("bookmark.txt", full + "<Folder Name=empty>\n</Folder>\n" + Line("Zoo", "1Xabcdeg", "b"));
  StartList();
  list->Open(Kind::kBookmarks);
  ASSERT_EQ(list->State().count, 4);
  const QImage unasked = Picture();
  const auto ask = [&](const char* what) {
    list->OnKey(kKeyHome);
    list->OnKey('D');
    EXPECT_EQ(list->State().count, 4) << what;
    EXPECT_NE(Picture(), unasked) << "it says what another press would do";
  };
  ask("at first");
  EXPECT_TRUE(list->OnKey(kKeyEscape));
  EXPECT_EQ(list->Shown(), Kind::kBookmarks) << "only the question is withdrawn";
  EXPECT_EQ(Picture(), unasked);
  ask("after a withdrawal");
  list->OnKey(kKeyDown);
  list->OnKey(kKeyUp);
  ask("after the selection went and came back");
  Click(RowOf(0));
  ask("after a click");
  list->Close();
  list->Open(Kind::kBookmarks);
  ask("after the list was closed");
  EXPECT_TRUE(HandleEventsUntil([&] { return Picture() == unasked; }, kPatienceMs)) << "it lapses";
  ask("after a while");
  list->OnKey(kKeyDelete);
  EXPECT_EQ(list->State().count, 2);
  EXPECT_EQ(FileText("bookmark.txt").find("1Xabcdef"), std::string::npos);
  list->OnKey('D');
  EXPECT_EQ(list->State().count, 1) << "an empty folder has nothing to lose";
}

TEST_F(SideListViewTest, TheScrollMarkCanBeDragged) {
  StartMany(60);
  const int last = 60 - list->State().shown;
  const QRectF mark = list->Frame().ScrollMark(list->Top(), list->State());
  const QPointF grip(list->width() - 2, mark.center().y());
  const QPointF below(0, list->height() * 2);
  Drag(grip, grip + below / 8);
  EXPECT_GT(list->Top(), 5);
  EXPECT_LT(list->Top(), last);
  EXPECT_EQ(list->Top(), list->State().first) << "without a motion of its own";
  EXPECT_EQ(list->State().selected, 0);
  LetGo(grip + below / 8);
  Drag({grip.x(), list->Frame().ScrollMark(list->Top(), list->State()).center().y()}, grip + below);
  EXPECT_EQ(list->Top(), last);
  LetGo(grip + below);
  list->OnKey(kKeyHome);
  EXPECT_TRUE(HandleEventsUntil([&] { return list->Top() == 0; }, kPatienceMs));
  Drag(RowOf(1), RowOf(4));
  EXPECT_EQ(list->Top(), 0) << "it was let go, and a card is no handle";
}

TEST_F(SideListViewTest, TheSameArticleStaysSelectedWhereItIsSeen) {
  StartMany(60);
  doc->GetSettings().Set(&Settings::noScrollAnimation, true);
  for (int i = 0; i < 3; ++i)
    list->OnKey(kKeyPageDown);
  const SideListState before = list->State();
  doc->GetBookmarks().Change(Kind::kBookmarks, [](ArticleFolder& root) {
    const ArticleFolder::Child another = ArticleItem();
    root.children.insert(root.children.begin(), 2, another);
  });
  EXPECT_EQ(list->State().selected, before.selected + 2);
  EXPECT_EQ(list->Top(), before.first + 2);
  list->OnKey(kKeyDelete);
  EXPECT_EQ(list->State().selected, before.selected + 2) << "the next one moves up";
}

TEST_F(SideListViewTest, TheListMovesThereSmoothlyOrAtOnce) {
  StartMany(60);
  const int shown = list->State().shown;
  ASSERT_GT(shown, 5);
  ASSERT_LT(shown, 20);
  list->OnKey(kKeyEnd);
  EXPECT_EQ(list->Top(), 0);
  EXPECT_TRUE(Until([&] { return list->Top() > 0; }));
  EXPECT_LT(list->Top(), 60 - shown);
  EXPECT_TRUE(Until([&] { return list->Top() == 60 - shown; }));
  doc->GetSettings().Set(&Settings::noScrollAnimation, true);
  list->OnKey(kKeyHome);
  EXPECT_EQ(list->Top(), 0);
}

TEST_F(SideListViewTest, TheWheelScrollsAndLeavesTheSelection) {
  StartMany(60);
  doc->GetSettings().Set(&Settings::noScrollAnimation, true);
  for (int i = 0; i < 4; ++i)
    Wheel(-30);  // a touchpad's quarters of a notch
  const int notch = list->Top();
  EXPECT_GT(notch, 0);
  EXPECT_EQ(list->State().selected, 0);
  Wheel(-120);
  EXPECT_EQ(list->Top(), 2 * notch);
  Click(RowOf(2 * notch + 1));
  EXPECT_EQ(list->State().selected, 2 * notch + 1);
  Wheel(-120 * 1000);
  EXPECT_EQ(list->Top(), 60 - list->State().shown);
  list->OnKey(kKeyUp);
  EXPECT_LE(list->Top(), list->State().selected) << "the selection is shown again";
  EXPECT_GT(list->Top() + list->State().shown, list->State().selected);
  Wheel(120 * 1000);
  EXPECT_EQ(list->Top(), 0);
}

TEST_F(SideListViewTest, ItLooksAsTheSettingsSay) {
  PutFile("hot.txt", "9\n1000 5 -1 Zoo 1Xabcdef  old\n2000 6 -1 Art 1Xabcdeg  new\n");
  StartList();
  list->Open(Kind::kHot);
  const auto opened = [&] {
    QString board;
    const auto link = QObject::connect(list, &SideListView::ArticleChosen, list, [&](const auto& article) {
      board = QString::fromStdU16String(article.board);
    });
    list->OnKey(kKeyHome);
    list->OnKey(kKeyEnter);
    list->Open(Kind::kHot);
    QObject::disconnect(link);
    return board;
  };
  doc->GetBookmarks().Boards()[u"Zoo"] = 3;
  list->Refresh();
  EXPECT_EQ(opened(), "Zoo") << "the heavier board";
  doc->GetSettings().Set(&Settings::hotArticleSortMode, HotSortMode::kNewestFirst);
  EXPECT_EQ(opened(), "Art") << "the newest";

  const auto ground = [&] { return Picture().pixel(QPoint(20, list->height() * 3 / 4)) & 0xFFFFFF; };
  EXPECT_EQ(ground(), PaletteOf(PaletteKind::kNormal)[25]);
  const int high = list->State().shown;
  list->SetCompact(true);
  EXPECT_GT(list->State().shown, high);
  EXPECT_GT(QColor(ground()).lightness(), 160);
  list->SetCompact(false);
  doc->GetSettings().Set(&Settings::work, true);
  EXPECT_EQ(ground(), PaletteOf(PaletteKind::kDisguise)[25]);
}

TEST_F(SideListViewTest, TheButtonsOfTheFrameActOnAClick) {
  StartMany(3);
  const double middle = list->Frame().List().top() / 2;
  const double right = list->width() - middle;
  Click({right - 2 * middle, middle});
  EXPECT_TRUE(list->IsCompact());
  // Along the hint line: opening comes first, then removing.
  const double foot = (list->Frame().List().bottom() + list->height()) / 2;
  double x = 0;
  while (list->Frame().ButtonAt({x, foot}) != SideListButton::kRemove && x < list->width())
    ++x;
  Click({x, foot});
  EXPECT_EQ(list->State().count, 2);
  Click({right, middle});
  EXPECT_FALSE(list->Shown());
}

TEST_F(SideListViewTest, EmptyListsAndAnyWindowAreDrawnAndTakeEveryKey) {
  StartMany(40);
  for (const bool empty : {false, true})
    for (const QSize size : {QSize(1, 1), QSize(3, 900), QSize(900, 3), QSize(7680, 4320)}) {
      list->Open(empty ? Kind::kHot : Kind::kBookmarks);
      list->Place({.area = QRect({0, 0}, size), .unit = size.height() / 24.0});
      EXPECT_LE(list->width(), size.width());
      EXPECT_EQ(list->geometry().right(), size.width() - 1);
      for (const int key : {kKeyEnd, kKeyUp, kKeyPageUp, kKeyPageDown, kKeyDown, kKeyHome, int{'D'}}) {
        list->OnKey(key);
        EXPECT_EQ(Picture().size(), list->size() * list->devicePixelRatioF());
      }
      EXPECT_EQ(list->State().count == 0, empty);
    }
}

}  // namespace
}  // namespace quillet
