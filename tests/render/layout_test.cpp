#include "render/layout.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(LayoutTest, WiderPushLinesBeginFurtherLeftAndNarrowerOnesWithTheOthers) {
  EXPECT_EQ(GridOf(RecalcLayout({.width = 1280, .height = 720}), RowSize::kOrdinary), (RowGrid{40, 15}));
  const Layout wider = RecalcLayout({.width = 1280, .height = 720, .lineSpacing = 5});
  EXPECT_EQ(GridOf(wider, RowSize::kOrdinary), (RowGrid{160, 12}));
  EXPECT_EQ(GridOf(wider, RowSize::kPush), (RowGrid{40, 15}));
  const Layout narrower = RecalcLayout({.width = 1280, .height = 720, .pushLineSpacing = 3});
  EXPECT_EQ(GridOf(narrower, RowSize::kPush), (RowGrid{40, 13}));
}

TEST(LayoutTest, FittedGridIsAsLargeAsTheWindowAllowsWhateverTheSpacing) {
  const LayoutInput input{
      .width = 1280, .height = 720, .lineSpacing = 5, .pushLineSpacing = 10, .mode = LayoutMode::kFitted};
  EXPECT_EQ(RecalcLayout(input), (Layout{.rowHeight = 30,
                                         .fontSize = 30,
                                         .halfCell = 15,
                                         .pushFontSize = 30,
                                         .originX = 40,
                                         .originY = 0,
                                         .pushOriginX = 40}));
  // Where the ordinary layout keeps a margin, the fitted one fills the width.
  EXPECT_EQ(RecalcLayout({.width = 800, .height = 2000, .mode = LayoutMode::kFitted}).fontSize, 20);
  EXPECT_EQ(RecalcLayout({.width = 800, .height = 2000, .mode = LayoutMode::kFitted}).originX, 0);
  const Layout tiny = RecalcLayout({.width = 79, .height = 47, .mode = LayoutMode::kFitted});
  EXPECT_EQ(tiny.rowHeight, 0);
  EXPECT_EQ(tiny.fontSize, 12);
}

TEST(LayoutTest, NarrowGridFillsTheWidthWithThirtyThreeCharactersAtTheBottom) {
  const Layout layout = RecalcLayout({.width = 660, .height = 300, .mode = LayoutMode::kNarrow});
  EXPECT_EQ(layout.fontSize, 20);
  EXPECT_EQ(layout.originX + layout.pushOriginX, 0);
  EXPECT_EQ(layout.originY, 300 - 24 * layout.rowHeight);
  // Half a row more would be drawn with the same glyphs: the row takes it.
  EXPECT_EQ(layout.rowHeight, 21);
  // A low window: a row is never higher than half of it.
  EXPECT_EQ(RecalcLayout({.width = 660, .height = 24, .mode = LayoutMode::kNarrow}).rowHeight, 12);
}

TEST(LayoutTest, AZoomedGridStaysInTheMiddleAndCanBeRead) {
  const Layout half = RecalcLayout({.width = 1280, .height = 720, .zoomPercent = 50});
  EXPECT_EQ(half.rowHeight, RecalcLayout({.width = 1280, .height = 720}).rowHeight / 2);
  EXPECT_EQ(half.originY, (720 - 24 * half.rowHeight) / 2);
  EXPECT_EQ(RecalcLayout({.width = 504, .height = 288, .zoomPercent = 40}).rowHeight, 12);
}

TEST(LayoutTest, GridOfATextEditorBeginsInTheCorner) {
  for (const LayoutMode mode : {LayoutMode::kOrdinary, LayoutMode::kFitted, LayoutMode::kNarrow}) {
    LayoutInput input{.width = 1400, .height = 700, .mode = mode};
    Layout layout = RecalcLayout(input);
    ASSERT_TRUE(layout.originX != 0 || layout.originY != 0);
    layout.originX = layout.originY = layout.pushOriginX = 0;
    input.atTopLeft = true;
    EXPECT_EQ(RecalcLayout(input), layout);
  }
}

}  // namespace
}  // namespace quillet
