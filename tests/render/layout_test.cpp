#include "render/layout.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>

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

TEST(LayoutTest, ALowWindowShowsTheLowestRowsWholeInBothPlacements) {
  for (const bool atTopLeft : {false, true})
    for (int height = 12; height < 700; ++height) {
      const Layout layout =
          RecalcLayout({.width = 660, .height = height, .mode = LayoutMode::kNarrow, .atTopLeft = atTopLeft});
      const int first = FirstInSight(layout);
      EXPECT_LT(first, 23);
      EXPECT_GE(RowTop(layout, first), 0);
      EXPECT_LE(RowTop(layout, 24), height) << "the bottom row is the last one";
      EXPECT_TRUE(first == 0 || RowTop(layout, first - 1) < 0) << height;
      for (int row = 0; row < 24; ++row) {
        EXPECT_EQ(RowAt(layout, RowTop(layout, row)), row);
        EXPECT_EQ(RowAt(layout, RowTop(layout, row + 1) - 1), row);
      }
    }
}

TEST(LayoutTest, ExtremeSizesAndSpacingsNeitherOverflowNorNeverEnd) {
  constexpr int kExtremes[] = {std::numeric_limits<int>::min(), -1, 0, 1, 25, 7680, 1000,
                               std::numeric_limits<int>::max()};
  for (const LayoutMode mode : {LayoutMode::kOrdinary, LayoutMode::kFitted, LayoutMode::kNarrow})
    for (const int width : kExtremes)
      for (const int height : kExtremes)
        for (const int lineSpacing : kExtremes)
          for (const int pushLineSpacing : kExtremes) {
            const Layout layout = RecalcLayout({width, height, lineSpacing, pushLineSpacing, mode});
            EXPECT_GE(layout.rowHeight, 0);
            EXPECT_GE(layout.fontSize, 12);
            EXPECT_GE(layout.pushFontSize, 12);
          }
}

TEST(LayoutTest, HoldsItsPromisesForAnyWindowAndSpacing) {
  std::minstd_rand random(7);
  for (int round = 0; round < 20000; ++round) {
    LayoutInput input{.width = static_cast<int>(1 + random() % 8000),
                      .height = static_cast<int>(1 + random() % 4500),
                      .lineSpacing = static_cast<int>(random() % 60) - 5,
                      .pushLineSpacing = static_cast<int>(random() % 60) - 5};
    const Layout layout = RecalcLayout(input);
    SCOPED_TRACE(testing::Message() << input.width << "x" << input.height << " spacing "
                                    << input.lineSpacing);
    EXPECT_LE(24 * layout.rowHeight, input.height);
    EXPECT_EQ(layout.fontSize % 2, 0);
    EXPECT_GE(layout.fontSize, 12);
    EXPECT_GE(layout.pushFontSize, 12);
    EXPECT_EQ(layout.halfCell * 2, layout.fontSize);
    if (input.lineSpacing >= 0 && layout.fontSize > 12) {
      EXPECT_LE(layout.fontSize, layout.rowHeight);
    }
    // Push lines never end further right than the grid or the window, as far as the window is wide enough.
    EXPECT_LE(layout.pushOriginX, layout.originX);
    if (40 * layout.pushFontSize <= input.width) {
      EXPECT_LE(layout.pushOriginX + 40 * layout.pushFontSize, input.width);
    }
    // Centred: both margins are equal up to the odd pixel.
    EXPECT_LE(std::abs(input.width - 40 * layout.fontSize - 2 * layout.originX), 1);
    EXPECT_LE(std::abs(input.height - 24 * layout.rowHeight - 2 * layout.originY), 1);
    // Nothing larger would have fitted: the height is used up, or the next row's glyphs are too wide.
    const double ratio = 0.5 - 0.02 * input.lineSpacing;
    const bool full = layout.rowHeight >= 2 * (input.height / 48);
    const int nextWidth =
        2 * (static_cast<int>((layout.rowHeight + 1) * ratio) * 40 + 2 * (input.height / 48));
    EXPECT_TRUE(full || nextWidth > input.width);
  }
}

}  // namespace
}  // namespace quillet
