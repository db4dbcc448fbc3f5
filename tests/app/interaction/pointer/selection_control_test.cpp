#include "app/interaction/pointer/selection_control.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "app/window/tour/tour.h"
#include "render/selection_look.h"
#include "tests/app/interaction/fake_picture.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

constexpr int kPatienceMs = 20000;

class SelectionControlTest : public WithTables {
 protected:
  void ShowScreen() {
    for (int row = 0; row < kRows; ++row)
      picture.text.lines.push_back(LineOf(NameOf(row)));
  }
  void ShowArticle(int count) {
    picture.isArticle = true;
    for (int line = 0; line < count; ++line)
      picture.text.lines.push_back(LineOf(NameOf(line)));
  }
  static std::u16string NameOf(int line) { return u"第%1行 word"_qs.arg(line).toStdU16String(); }
  void Drag(int row, int slot, int toRow, int toSlot, SelectUnit unit = SelectUnit::kCharacter) {
    control.Press(row, slot, unit, SelectShape::kStream);
    control.ExtendTo(toRow, toSlot);
  }
  void Step(SelectStep step) { control.Step(step, cursorRow, cursorCol); }
  void Steps(std::initializer_list<SelectStep> steps) {
    for (const SelectStep step : steps)
      Step(step);
  }
  // The columns of a row that look selected.
  static std::string Look(const Page& page, std::size_t row) {
    std::string look;
    for (std::size_t col = 0; col < kCols; ++col) {
      if ((page[row].cells[col].style & CS_SELECTED) == 0) continue;
      look.resize(col, '.');
      look += 'x';
    }
    return look;
  }

  FakePicture picture;
  int cursorRow = 5;
  int cursorCol = 2;
  int changes = 0;
  int finishes = 0;
  std::vector<int> scrolls;
  SelectionControl control{picture,
                           {.changed = [this] { ++changes; },
                            .scrollBy =
                                [this](int lines) {
                                  scrolls.push_back(lines);
                                  picture.ScrollBy(lines);
                                },
                            .finished = [this] { ++finishes; }}};
};

TEST_F(SelectionControlTest, DraggingSelectsAndLettingGoFinishes) {
  ShowScreen();
  Drag(1, 2, 2, 3);
  EXPECT_TRUE(control.IsDragging());
  EXPECT_EQ(control.Text(), u"1行 word\r\n第2");
  EXPECT_TRUE(control.Contains(1, 2));
  EXPECT_TRUE(control.Contains(1, 79));
  EXPECT_FALSE(control.Contains(1, 1));
  EXPECT_FALSE(control.Contains(2, 3));
  EXPECT_FALSE(control.Contains(3, 0));
  EXPECT_EQ(finishes, 0);
  control.Release();
  EXPECT_FALSE(control.IsDragging());
  EXPECT_EQ(finishes, 1);
  control.Release();
  EXPECT_EQ(finishes, 1);
}

// The clipboard keeps what it has.
TEST_F(SelectionControlTest, BlanksAloneAreNoSelectionToTellOf) {
  ShowScreen();
  Drag(1, 40, 2, 0);
  control.Release();
  EXPECT_TRUE(control.IsShown());
  EXPECT_EQ(finishes, 0);
}

TEST_F(SelectionControlTest, RowsWithoutALineCountAsTheOnesAboveThem) {
  ShowArticle(3);
  Drag(1, 0, 20, 30);
  EXPECT_EQ(control.Text(), u"第1行 word\r\n第2行 word");
  Drag(20, 30, 2, 6);
  EXPECT_EQ(control.Text(), u"word");
  EXPECT_FALSE(control.Contains(20, 0));
}

TEST_F(SelectionControlTest, ItStaysOnItsLinesWhenTheArticleMoves) {
  ShowArticle(60);
  Drag(4, 0, 4, 5);
  control.Release();
  picture.ScrollBy(3);
  control.OnTextChanged();
  EXPECT_EQ(control.Text(), u"第4行");
  Page page{};
  control.Decorate(page);
  EXPECT_EQ(Look(page, 1), "xxxxx");
  EXPECT_TRUE(control.Contains(1, 0));
  picture.ScrollBy(10);
  control.OnTextChanged();
  EXPECT_TRUE(control.IsShown()) << "out of sight";
  control.ExtendTo(0, 5);
  EXPECT_EQ(control.Text().substr(0, 3), u"第4行");
  EXPECT_TRUE(control.Text().ends_with(u"第13行")) << "from where it began";
}

TEST_F(SelectionControlTest, AnArticleIsDraggedOnWhileThePointerIsBeyondIt) {
  ShowArticle(100);
  Drag(10, 0, 22, 80);
  control.DragBeyond(1);
  ASSERT_TRUE(HandleEventsUntil([&] { return picture.top >= 3; }, kPatienceMs));
  control.DragBeyond(0);
  EXPECT_TRUE(control.IsDragging());
  const std::size_t told = scrolls.size();
  EXPECT_EQ(*std::max_element(scrolls.begin(), scrolls.end()), 1);
  EXPECT_EQ(control.Text().substr(0, 4), u"第10行");
  EXPECT_TRUE(control.Text().ends_with(NameOf(picture.top + 22))) << "as far as it is in the picture";
  control.DragBeyond(40);
  ASSERT_TRUE(HandleEventsUntil([&] { return picture.top == 77; }, kPatienceMs));
  EXPECT_GT(*std::max_element(scrolls.begin(), scrolls.end()), 5) << "farther out is faster";
  control.ExtendTo(0, 0);
  control.DragBeyond(-40);
  ASSERT_TRUE(HandleEventsUntil([&] { return picture.top == 0; }, kPatienceMs));
  EXPECT_TRUE(control.Text().starts_with(u"第0行"));
  EXPECT_TRUE(control.Text().ends_with(NameOf(9) + u"\r\n")) << "back to where it began";
  control.Release();
  EXPECT_GT(scrolls.size(), told);
}

TEST_F(SelectionControlTest, TheScreenIsNotScrolled) {
  ShowScreen();
  Drag(10, 0, 23, 10);
  control.DragBeyond(10);
  HandleEventsUntil([&] { return !scrolls.empty(); }, 200);
  EXPECT_TRUE(scrolls.empty());
}

TEST_F(SelectionControlTest, ItGoesWhenItsTextReadsDifferently) {
  ShowScreen();
  Drag(4, 0, 5, 5);
  control.Release();
  PutInLine(picture.text.lines[9], 0, u"something else");
  PutInLine(picture.text.lines[5], 6, u"behind it");
  picture.text.lines[4].attr[0] = 1;
  changes = 0;
  control.OnTextChanged();
  EXPECT_TRUE(control.IsShown()) << "what is selected is the same";
  PutInLine(picture.text.lines[5], 4, u"x");
  control.OnTextChanged();
  EXPECT_FALSE(control.IsShown());
  EXPECT_EQ(changes, 1);
}

TEST_F(SelectionControlTest, ItGoesWithItsText) {
  ShowArticle(60);
  Drag(1, 0, 4, 5);
  EXPECT_TRUE(control.IsShown());
  picture.isArticle = false;
  control.OnTextChanged();
  EXPECT_FALSE(control.IsShown());
  EXPECT_FALSE(control.IsDragging());
  picture.isArticle = true;
  Drag(10, 0, 22, 5);
  picture.text.lines.resize(12);
  EXPECT_EQ(control.Text(), NameOf(10) + u"\r\n" + NameOf(11)) << "it is asked in between";
  control.OnTextChanged();
  EXPECT_FALSE(control.IsShown());
}

TEST_F(SelectionControlTest, APressedPlaceIsForgottenWithItsLine) {
  ShowScreen();
  control.Press(4, 0, SelectUnit::kCharacter, SelectShape::kStream);
  control.Release();
  picture.text.lines[4] = LineOf(u"another page");
  control.OnTextChanged();
  control.ExtendTo(6, 5);
  EXPECT_FALSE(control.IsShown()) << "it begins here";
}

TEST_F(SelectionControlTest, KeysSelectFromTheCursorByWholeCharacters) {
  ShowScreen();
  Step(SelectStep::kRight);
  EXPECT_EQ(control.Text(), u"5");
  Steps({SelectStep::kRight, SelectStep::kRight, SelectStep::kRight});
  EXPECT_EQ(control.Text(), u"5行 w");
  Steps({SelectStep::kLeft, SelectStep::kLeft, SelectStep::kLeft});
  EXPECT_EQ(control.Text(), u"5");
  Steps({SelectStep::kLeft, SelectStep::kLeft});
  EXPECT_EQ(control.Text(), u"第");
  Step(SelectStep::kLeft);
  EXPECT_EQ(control.Text(), u"\r\n第") << "on to the line above, behind its text";
  Step(SelectStep::kLeft);
  EXPECT_EQ(control.Text(), u"d\r\n第");
  Step(SelectStep::kClear);
  EXPECT_FALSE(control.IsShown());
  EXPECT_EQ(finishes, 0);
}

TEST_F(SelectionControlTest, KeysSelectToTheLinesEndsAndAcrossThem) {
  ShowScreen();
  Step(SelectStep::kLineEnd);
  EXPECT_EQ(control.Text(), u"5行 word");
  EXPECT_EQ(control.Contains(5, 9), true);
  EXPECT_FALSE(control.Contains(5, 10)) << "not the blanks behind";
  Step(SelectStep::kRight);
  EXPECT_EQ(control.Text(), u"5行 word\r\n");
  Steps({SelectStep::kUp, SelectStep::kLineEnd, SelectStep::kLineStart});
  EXPECT_EQ(control.Text(), u"第");
}

TEST_F(SelectionControlTest, StepsUpAndDownKeepTheirColumn) {
  ShowScreen();
  picture.text.lines[6] = LineOf(u"a中中");
  picture.text.lines[7] = LineOf(u"");
  Steps({SelectStep::kDown, SelectStep::kDown, SelectStep::kDown});
  EXPECT_EQ(control.Text(), u"5行 word\r\na中中\r\n\r\n第");
  for (int i = 0; i < 30; ++i)
    Step(SelectStep::kDown);
  EXPECT_TRUE(control.Text().ends_with(NameOf(23))) << "to the text's end";
  for (int i = 0; i < 30; ++i)
    Step(SelectStep::kUp);
  EXPECT_TRUE(control.Text().starts_with(NameOf(0)));
}

TEST_F(SelectionControlTest, AStepToTheSideMakesAnotherColumn) {
  ShowScreen();
  Steps({SelectStep::kDown, SelectStep::kLineEnd, SelectStep::kUp});
  EXPECT_EQ(control.Text(), u"5行 word");
}

TEST_F(SelectionControlTest, KeysTakeTheArticleAlong) {
  ShowArticle(60);
  cursorRow = -1;
  for (int i = 0; i < 40; ++i)
    Step(SelectStep::kDown);
  EXPECT_EQ(picture.top, 40 - 22);
  EXPECT_TRUE(control.Text().starts_with(NameOf(0))) << "from the page's first character";
  EXPECT_TRUE(control.Text().ends_with(NameOf(39) + u"\r\n"));
  for (int i = 0; i < 35; ++i)
    Step(SelectStep::kUp);
  EXPECT_EQ(picture.top, 5);
}

}  // namespace
}  // namespace quillet
