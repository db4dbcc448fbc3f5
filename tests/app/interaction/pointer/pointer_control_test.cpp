// The pointer over a page of the test's own, with the real painter, selection and links under it, and records
// in place of what the view would do.
#include "app/interaction/pointer/pointer_control.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QWindow>

#include "tests/app/interaction/fake_picture.h"
#include "tests/app/window_fixture.h"
#include "tests/support/pages.h"

namespace quillet {
namespace {

const std::string kOpenTwoDown = "\x1B[B\x1B[B\x1B[C";

// What the pointer works on, in a widget of its own.
struct Terminal {
  Terminal(const ArticleView::Parts& parts, PointerControl::Handlers handlers)
      : article(parts, widget),
        composer({article, parts.bookmarks, parts.settings, parts.connection.Seen()}),
        selection(lines, {.changed = [] {}, .scrollBy = [](int) {}, .finished = [] {}}),
        links(lines, {}),
        places(lines, {}, parts.settings.Fields()),
        pictures({article, store, parts.settings.Fields(), {}}),
        pointer({.widget = widget,
                 .surface = surface,
                 .composer = composer,
                 .article = article,
                 .selection = selection,
                 .links = links,
                 .places = places,
                 .pictures = pictures,
                 .connection = parts.connection,
                 .settings = parts.settings.Fields(),
                 .screen = screen,
                 .page = page},
                std::move(handlers)) {
    widget.resize(1000, 620);
  }

  void Show(const ScreenSnapshot& next) {
    screen = next;
    page = Understand(screen);
    lines.text.lines.clear();
    for (std::size_t row = 0; row < kRows; ++row)
      lines.text.lines.push_back({screen.text[row], screen.attr[row]});
    composer.Compose(screen, page, false, frame);
    surface.Refresh(frame);
    pointer.OnPictureChanged();
    pointer.OnScreen();
  }

  QWidget widget;
  FrameSurface surface{widget};
  ScreenSnapshot screen;
  UnderstoodPage page;
  FrameState frame;
  FakePicture lines;
  ArticleView article;
  PageComposer composer;
  SelectionControl selection;
  LinkHover links;
  PlaceHover places;
  PictureStore store{{}};
  ArticlePictures pictures;
  PointerControl pointer;
};

class PointerControlTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    terminal = std::make_unique<Terminal>(
        ArticleParts(),
        PointerControl::Handlers{
            .perform = [](Command) {},
            .open = [this](const TextLink& link) { opened.push_back(link.address); },
            .showPicture = [](const TextLink&) {},
            .act = [this](const MouseAction& action) { sent.push_back(action.bytes); },
            .pastePrimary = [this] { ++pasted; },
            .contextMenu = [this](QPoint, auto cell, auto /*picture*/) { menus.push_back(cell); },
            .changed = [] {},
            .targetChanged = [] {}});
    OpenScript();
    ASSERT_TRUE(Until([&] { return doc->GetConnection().IsConnected(); }));
    terminal->Show(List(5));
  }
  void TearDown() override { terminal.reset(); }

  static ScreenSnapshot List(int cursor) { return ArticleList(cursor, 12); }
  static ScreenSnapshot Reader() {
    ScreenBuilder page;
    page.Put(4, 0, u"mirror mirror on the wall").Put(6, 0, u"          https://www.example.com/a now");
    return ReaderMiddle(std::move(page));
  }

  // The middle of a cell.
  QPointF At(int row, int col) const { return terminal->surface.CellRect(row, col).center(); }

  QMouseEvent Event(QEvent::Type type, const QPointF& at, Qt::MouseButton button,
                    Qt::KeyboardModifiers modifiers) const {
    const bool move = type == QEvent::MouseMove;
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::MouseButtons(Qt::NoButton) : Qt::MouseButtons(button);
    return {type, at, at, move ? Qt::NoButton : button, held, modifiers};
  }
  void Down(const QPointF& at, Qt::MouseButton button = Qt::LeftButton,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    terminal->pointer.OnPress(Event(QEvent::MouseButtonPress, at, button, modifiers));
  }
  void MoveTo(const QPointF& at, Qt::MouseButton held = Qt::NoButton) {
    terminal->pointer.OnMove(Event(QEvent::MouseMove, at, held, Qt::NoModifier));
  }
  bool Up(const QPointF& at, Qt::MouseButton button = Qt::LeftButton) {
    return terminal->pointer.OnRelease(Event(QEvent::MouseButtonRelease, at, button, Qt::NoModifier));
  }
  bool Click(const QPointF& at, Qt::MouseButton button = Qt::LeftButton,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    Down(at, button, modifiers);
    return Up(at, button);
  }
  void SecondClick(const QPointF& at) {
    terminal->pointer.OnDoubleClick(Event(QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::NoModifier));
    Up(at);
  }
  void Drag(const QPointF& from, const QPointF& to) {
    Down(from);
    MoveTo((from + to) / 2, Qt::LeftButton);
    MoveTo(to, Qt::LeftButton);
    Up(to);
  }
  void Turn(int notches, Qt::MouseButtons held = Qt::NoButton, Qt::ScrollPhase phase = Qt::NoScrollPhase) {
    const QPointF at = At(12, 40);
    terminal->pointer.OnWheel(
        QWheelEvent(at, at, {}, QPoint(0, notches * 120), held, Qt::NoModifier, phase, false));
  }

  std::unique_ptr<Terminal> terminal;
  std::vector<std::string> sent;
  std::vector<std::u16string> opened;
  std::vector<std::optional<CellPosition>> menus;
  int pasted = 0;
};

// ---- Cells

TEST_F(PointerControlTest, CellsAndSlotsAreFoundInRowsOfEitherSize) {
  FrameSurface& surface = terminal->surface;
  surface.ApplySettings({.lineSpacing = 6});
  for (std::size_t row = 0; row < kRows; row += 2)
    terminal->frame.page[row].size = RowSize::kPush;
  surface.Refresh(terminal->frame);
  ASSERT_NE(surface.CurrentLayout().pushFontSize, surface.CurrentLayout().fontSize);
  for (int row = 0; row < kRows; ++row) {
    for (int col = 0; col < kCols; ++col) {
      const QRectF cell = surface.CellRect(row, col);
      const QPointF left(cell.left() + cell.width() * 0.2, cell.center().y());
      const QPointF right(cell.left() + cell.width() * 0.8, cell.center().y());
      ASSERT_EQ(surface.CellAt(left), (CellPosition{row, col}));
      ASSERT_EQ(surface.CellAt(right), (CellPosition{row, col}));
      ASSERT_EQ(surface.PlaceAt(left).halves, 2 * col);
      ASSERT_EQ(surface.PlaceAt(right).halves, 2 * col + 1);
      ASSERT_EQ(surface.PlaceAt(right).row, row);
    }
    EXPECT_FALSE(surface.CellAt(At(row, -1)));
    EXPECT_TRUE(surface.IsLeftOfPage(At(row, -1)));
    EXPECT_FALSE(surface.CellAt(At(row, kCols)));
  }
}

TEST_F(PointerControlTest, SlotsOutsideThePageAreTheNearestInside) {
  const FrameSurface& surface = terminal->surface;
  const qreal height = surface.CellRect(0, 0).height();
  const FrameSurface::Place above = surface.PlaceAt(At(0, 30) - QPointF(0, 2 * height));
  EXPECT_EQ(above.row, 0);
  EXPECT_EQ(above.rowsOutside, -2);
  const FrameSurface::Place below = surface.PlaceAt(At(23, 30) + QPointF(5000, 3 * height));
  EXPECT_EQ(below.row, 23);
  EXPECT_EQ(below.halves, 2 * kCols);
  EXPECT_EQ(below.rowsOutside, 3);
  EXPECT_EQ(surface.PlaceAt({-1e6, -1e6}).halves, 0);
}

// ---- Clicks and drags

TEST_F(PointerControlTest, AClickActsWhenTheButtonIsLetGo) {
  Down(At(7, 30));
  EXPECT_TRUE(sent.empty());
  Up(At(7, 30) + QPointF(QApplication::startDragDistance() - 1, 0));
  EXPECT_EQ(sent, std::vector{kOpenTwoDown}) << "a hand trembles over cells";
}

TEST_F(PointerControlTest, TheFirstClickPutsASelectionAway) {
  Drag(At(7, 26), At(7, 60));
  Click(At(7, 30));
  EXPECT_FALSE(terminal->selection.IsShown());
  EXPECT_TRUE(sent.empty());
  Click(At(7, 30));
  EXPECT_EQ(sent.size(), 1u);
}

TEST_F(PointerControlTest, WithShiftOrAltAClickOnlySelects) {
  Click(At(7, 30), Qt::LeftButton, Qt::AltModifier);
  EXPECT_TRUE(sent.empty());
  Click(At(9, 40), Qt::LeftButton, Qt::ShiftModifier);
  EXPECT_TRUE(sent.empty());
  EXPECT_TRUE(terminal->selection.IsShown());
}

TEST_F(PointerControlTest, OneGestureOpensOneLineHoweverOftenItClicks) {
  Click(At(7, 30));
  terminal->Show(List(8));  // the BBS has been quick
  SecondClick(At(7, 30));
  Click(At(7, 30));
  EXPECT_EQ(sent.size(), 1u);
  EXPECT_FALSE(terminal->selection.IsShown());
}

TEST_F(PointerControlTest, APageThatHasBeenClickedAwayIsNotClickedAgain) {
  Click(At(7, 30));
  Click(At(9, 30));
  EXPECT_EQ(sent.size(), 1u);
  terminal->Show(List(8));
  Click(At(9, 30));
  EXPECT_EQ(sent.size(), 2u);
  terminal->Show(List(9));
  terminal->Show(List(8));
  Click(At(9, 30));
  EXPECT_EQ(sent.size(), 3u) << "the BBS has been there and back";
}

TEST_F(PointerControlTest, APageWithItsCursorInTheSamePlaceIsAnotherOneToo) {
  const QPointF margin(1, 300);
  for (const QPointF& place : {At(7, 30), margin}) {
    Down(place);
    terminal->Show(place == margin ? Reader() : ArticleList(5, 12, u"[心得] 下一頁"));
    Up(place);
    EXPECT_TRUE(sent.empty());
    terminal->Show(List(5));
  }
  Down(margin);
  terminal->Show(List(6));
  Up(margin);
  EXPECT_EQ(sent, std::vector<std::string>{"\x1B[D"}) << "only the cursor has moved";
  Down(At(7, 30));
  terminal->Show(List(9));
  Up(At(7, 30));
  EXPECT_EQ(sent.size(), 1u) << "a line is opened from where the cursor was";
}

TEST_F(PointerControlTest, QuickClicksUpAndDownAllCount) {
  doc->GetSettings().Set(&Settings::leftButton, MouseScheme::kUpDown);
  Click(At(20, 30));
  SecondClick(At(20, 30));
  Click(At(20, 30));
  EXPECT_EQ(sent, std::vector<std::string>(3, "\x1B[B"));
}

TEST_F(PointerControlTest, WithoutAConnectionTextIsSelectedAndNothingSent) {
  doc->GetConnection().Disconnect();
  ASSERT_TRUE(Until([&] { return !doc->GetConnection().IsConnected(); }));
  EXPECT_FALSE(Click(At(7, 30)));
  Turn(1);
  Click(At(7, 30), Qt::BackButton);
  EXPECT_TRUE(sent.empty());
  Drag(At(7, 26), At(7, 60));
  EXPECT_TRUE(terminal->selection.IsShown());
  MoveTo(At(8, 30));
  EXPECT_EQ(terminal->widget.cursor().shape(), Qt::ArrowCursor);
}

// ---- Links and shapes

TEST_F(PointerControlTest, ALinkOpensByEitherButtonAsTheUserWishes) {
  terminal->Show(Reader());
  const std::u16string link = u"https://www.example.com/a";
  Click(At(6, 12));
  EXPECT_EQ(opened, std::vector{link});
  SecondClick(At(6, 12));
  EXPECT_EQ(opened.size(), 1u);
  Click(At(6, 12), Qt::MiddleButton);
  EXPECT_EQ(opened.size(), 1u);
  EXPECT_EQ(pasted, 1);
  doc->GetSettings().Set(&Settings::middleButtonOpensUrl, true);
  Click(At(6, 12), Qt::MiddleButton);
  EXPECT_EQ(opened.size(), 2u);
  Click(At(6, 60), Qt::MiddleButton);
  EXPECT_EQ(pasted, 2);
}

TEST_F(PointerControlTest, ThePointerShowsWhatAClickWouldDo) {
  const auto shapeAt = [&](const QPointF& at) {
    MoveTo(at);
    return terminal->widget.cursor().shape();
  };
  EXPECT_EQ(shapeAt(At(7, 30)), Qt::PointingHandCursor);
  EXPECT_EQ(shapeAt(At(20, 30)), Qt::ArrowCursor);
  EXPECT_EQ(shapeAt({1, 300}), Qt::BitmapCursor);
  MoveTo(At(4, 30));
  terminal->Show(Reader());
  EXPECT_EQ(terminal->widget.cursor().shape(), Qt::IBeamCursor) << "the page has changed under it";
  EXPECT_EQ(shapeAt(At(6, 12)), Qt::PointingHandCursor);
  EXPECT_TRUE(terminal->links.Current());
  terminal->pointer.Cancel();
  EXPECT_FALSE(terminal->links.Current());
  EXPECT_EQ(terminal->widget.cursor().shape(), Qt::ArrowCursor);
  terminal->pointer.OnLeave();
  EXPECT_FALSE(terminal->pointer.CellUnderPointer());
}

// ---- The other buttons and the wheel

TEST_F(PointerControlTest, TheRightButtonAsksForAMenuUnlessTheWheelWasTurned) {
  Click(At(7, 30), Qt::RightButton);
  ASSERT_EQ(menus.size(), 1u);
  EXPECT_EQ(menus[0], (CellPosition{7, 30}));
  Down(At(7, 30), Qt::RightButton);
  Turn(-1, Qt::RightButton);
  Up(At(7, 30), Qt::RightButton);
  EXPECT_EQ(menus.size(), 1u);
  EXPECT_EQ(sent, std::vector<std::string>{"\x1B[6~"});
  Click({1, 1}, Qt::RightButton);
  EXPECT_EQ(menus.back(), std::nullopt);
}

TEST_F(PointerControlTest, TheLeftButtonHeldForTheWheelDoesNothingElse) {
  const QPointF line = At(7, 30);
  Down(line);
  Turn(1, Qt::LeftButton);
  MoveTo(At(9, 60), Qt::LeftButton);
  Up(line);
  EXPECT_EQ(sent, std::vector<std::string>{"["});
  EXPECT_FALSE(terminal->selection.IsShown());
  Click(line);
  EXPECT_EQ(sent.back(), kOpenTwoDown);
}

TEST_F(PointerControlTest, TheWheelDoesNotTurnAwayWhatIsBeingSelected) {
  Down(At(7, 26));
  MoveTo(At(7, 60), Qt::LeftButton);
  Turn(-1, Qt::LeftButton);
  EXPECT_TRUE(sent.empty());
  Up(At(7, 60));
  EXPECT_TRUE(terminal->selection.IsShown());
}

TEST_F(PointerControlTest, SideButtonsWorkAsOftenAsTheyArePressed) {
  Click(At(7, 30), Qt::BackButton);
  terminal->pointer.OnDoubleClick(
      Event(QEvent::MouseButtonDblClick, At(7, 30), Qt::ForwardButton, Qt::NoModifier));
  EXPECT_EQ(sent, (std::vector<std::string>{"[", "]"}));
}

TEST_F(PointerControlTest, AFlingDoesNotReachTheNextPage) {
  Turn(-1, Qt::NoButton, Qt::ScrollUpdate);
  Turn(-5, Qt::NoButton, Qt::ScrollMomentum);
  EXPECT_EQ(sent.size(), 1u);
}

TEST_F(PointerControlTest, ALostReleaseDoesNotGoOnSelecting) {
  Down(At(7, 26));
  MoveTo(At(7, 40), Qt::LeftButton);
  MoveTo(At(9, 60));
  const std::u16string before = terminal->selection.Text();
  MoveTo(At(11, 60));
  EXPECT_EQ(terminal->selection.Text(), before);
  EXPECT_FALSE(terminal->selection.IsDragging());
}

}  // namespace
}  // namespace quillet
