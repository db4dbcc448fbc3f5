#include "render/layout.h"

#include <gtest/gtest.h>
#include <random>

namespace quillet {
namespace {

TEST(LayoutTest, HdWindowHasThirtyPixelRowsBetweenMargins) {
  const Layout layout = RecalcLayout({.width = 1280, .height = 720});
  EXPECT_EQ(
      layout,
      (Layout{
          .rowHeight = 30, .fontSize = 30, .halfCell = 15, .pushFontSize = 30, .originX = 40, .originY = 0}));
}

TEST(LayoutTest, SpacingTakesFourPercentOfTheRowPerStep) {
  const Layout layout = RecalcLayout({.width = 1280, .height = 720, .lineSpacing = 5, .pushLineSpacing = 10});
  EXPECT_EQ(layout.rowHeight, 30);
  EXPECT_EQ(layout.fontSize, 24);
  EXPECT_EQ(layout.pushFontSize, 18);
  EXPECT_EQ(layout.originX, 160);
}

TEST(LayoutTest, WideWindowIsLimitedByItsHeightAndTallOneByItsWidth) {
  EXPECT_EQ(RecalcLayout({.width = 4000, .height = 720}).rowHeight, 30);
  const Layout tall = RecalcLayout({.width = 840, .height = 2000});
  EXPECT_EQ(tall.fontSize, 20);
  EXPECT_GT(tall.originY, 0);
}

TEST(LayoutTest, WindowTooSmallKeepsTwelvePixelGlyphsAndOverflows) {
  for (const int side : {-5, 0, 1, 47, 83}) {
    const Layout layout = RecalcLayout({.width = side, .height = side});
    EXPECT_EQ(layout.fontSize, 12);
    EXPECT_EQ(layout.halfCell, 6);
    EXPECT_LT(layout.originX, 0);
    EXPECT_GE(layout.originY, 0);
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
