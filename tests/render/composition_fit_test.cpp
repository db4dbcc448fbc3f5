#include "render/composition_fit.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

constexpr ColumnRange kAll{0, 80};

TEST(CompositionFitTest, StandsAtTheCursorWhileItHasRoomThere) {
  EXPECT_EQ(FitComposition(6, 6, 10, kAll), (CompositionFit{10, 0, 6}));
  EXPECT_EQ(FitComposition(6, 6, 74, kAll), (CompositionFit{74, 0, 6}));
  EXPECT_EQ(FitComposition(6, 6, 75, kAll), (CompositionFit{74, 0, 6})) << "moves left by what is missing";
  EXPECT_EQ(FitComposition(80, 0, 79, kAll), (CompositionFit{0, 0, 80}));
  EXPECT_EQ(FitComposition(4, 0, 2, {7, 66}), (CompositionFit{7, 0, 4}))
      << "the cursor's cell is out of sight";
}

TEST(CompositionFitTest, OnlyWholeCellsOfTheWindowCount) {
  Layout layout{
      .rowHeight = 30, .fontSize = 30, .halfCell = 15, .pushFontSize = 24, .originX = 40, .originY = 0};
  EXPECT_EQ(VisibleColumns(layout, RowSize::kOrdinary, 1280), kAll);
  EXPECT_EQ(VisibleColumns(layout, RowSize::kOrdinary, 40 + 33 * 30 + 14), (ColumnRange{0, 66}));
  EXPECT_EQ(VisibleColumns(layout, RowSize::kPush, 40 + 12 * 10 + 11), (ColumnRange{0, 10}));
  layout.originX = -31;
  EXPECT_EQ(VisibleColumns(layout, RowSize::kOrdinary, 100), (ColumnRange{3, 8}));
  EXPECT_EQ(VisibleColumns(layout, RowSize::kOrdinary, 1), (ColumnRange{3, 3}));
}

}  // namespace
}  // namespace quillet
