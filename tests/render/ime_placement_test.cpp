#include "render/ime_placement.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(ImePlacementTest, BoxLiesOnTheCursorsCellCentredInItsRow) {
  const Layout layout = RecalcLayout({.width = 1280, .height = 720, .lineSpacing = 5, .pushLineSpacing = 10});
  // 12 pixels a cell in rows of 30; 9 in push lines.
  EXPECT_EQ(PlaceComposition(layout, RowSize::kOrdinary, 23, 79),
            (ImePlacement{160 + 79 * 12, 23 * 30 + 3, 24}));
  EXPECT_EQ(PlaceComposition(layout, RowSize::kPush, 2, 10), (ImePlacement{160 + 90, 60 + 6, 18}));
}

TEST(ImePlacementTest, RowTooLowForItsGlyphsPutsThePointAtItsTop) {
  const Layout small = RecalcLayout({.width = 100, .height = 100});
  ASSERT_LT(small.rowHeight, small.fontSize);
  for (const RowSize size : {RowSize::kOrdinary, RowSize::kPush})
    EXPECT_EQ(PlaceComposition(small, size, 3, 0).y, 3 * small.rowHeight + small.originY);
}

TEST(ImePlacementTest, CursorOutsideTheScreenIsHeldInside) {
  const Layout layout = RecalcLayout({.width = 1280, .height = 720});
  const auto at = [&](int row, int col) { return PlaceComposition(layout, RowSize::kOrdinary, row, col); };
  EXPECT_EQ(at(-128, -128), at(0, 0));
  EXPECT_EQ(at(127, 127), at(23, 79));
}

}  // namespace
}  // namespace quillet
