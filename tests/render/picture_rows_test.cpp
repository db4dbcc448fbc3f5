#include "render/picture_rows.h"

#include <gtest/gtest.h>
#include <random>

#include "render/picture_fit.h"

namespace quillet {
namespace {

// Every row of articles with bands at random, against the rows written out one by one.
TEST(PictureRowsTest, EveryRowIsOneLinesOrOneBands) {
  std::minstd_rand random(7);
  for (int round = 0; round < 50; ++round) {
    const int lines = static_cast<int>(random() % 40);
    std::vector<PictureBand> bands;
    std::vector<LinePlace> plain;
    for (int line = 0; line < lines; ++line) {
      const int rows = random() % 3 == 0 ? static_cast<int>(random() % 5) : 0;
      if (rows > 0 || random() % 4 == 0) bands.push_back({line, rows});
      for (int below = 0; below <= rows; ++below)
        plain.push_back({line, below});
    }
    bands.push_back({lines + 3, 4});
    PictureRows rows;
    rows.Set(lines, bands);
    ASSERT_EQ(rows.Count(), static_cast<int>(plain.size()));
    for (int row = 0; row < rows.Count(); ++row) {
      const LinePlace& place = plain[static_cast<std::size_t>(row)];
      ASSERT_EQ(rows.At(row), place);
      ASSERT_EQ(rows.RowOf(place), row);
      ASSERT_EQ(rows.RowOf(rows.AnchorAt(row)), row);
    }
    EXPECT_EQ(rows.At(rows.Count() + 2), (LinePlace{lines + 2, 0}));
    EXPECT_EQ(rows.At(-2), (LinePlace{-2, 0}));
  }
}

TEST(PictureRowsTest, WhatStandsBelowTheBandAtTheTopStays) {
  PictureRows rows;
  rows.Set(9, {{2, 5}});
  const RowAnchor inBand = rows.AnchorAt(rows.RowOf(LinePlace{2, 4}));
  rows.Set(9, {{1, 3}, {2, 12}});
  EXPECT_EQ(rows.At(rows.RowOf(inBand)), (LinePlace{2, 11})) << "one row of the band is in sight, as before";
  rows.Set(9, {});
  EXPECT_EQ(rows.At(rows.RowOf(inBand)), (LinePlace{2, 0}));
}

TEST(PictureFitTest, EachSizeKeepsTheShapeAndItsBounds) {
  const PictureRoom room{.width = 1120, .rowHeight = 30, .rows = 23, .windowHeight = 720, .scale = 1};
  struct Case {
    PictureSize size;
    PixelSize natural, shown;
  };
  for (const Case& of : {Case{PictureSize::kNormal, {640, 400}, {640, 400}},
                         Case{PictureSize::kNormal, {640, 960}, {316, 474}},
                         Case{PictureSize::kNormal, {4480, 400}, {1120, 100}},
                         Case{PictureSize::kThumbnail, {640, 480}, {152, 114}},
                         Case{PictureSize::kThumbnail, {20, 10}, {20, 10}},
                         Case{PictureSize::kFullWidth, {560, 200}, {1120, 400}},
                         Case{PictureSize::kFullWidth, {1500, 1000}, {1120, 747}},
                         Case{PictureSize::kFullWidth, {100, 10'000}, {14, 1374}},
                         Case{PictureSize::kFullWidth, {100'000, 1}, {1120, 1}}}) {
    const PixelSize shown = FitPicture(of.size, of.natural, room);
    EXPECT_EQ(shown, of.shown) << of.natural.width << " x " << of.natural.height << ": " << shown.width
                               << " x " << shown.height;
    EXPECT_LE(RowsFor(shown.height, room.rowHeight), 2 * room.rows);
  }
  EXPECT_EQ(RowsFor(114, 30), 4);
  PictureRoom twice = room;
  twice.scale = 2;
  EXPECT_EQ(FitPicture(PictureSize::kNormal, {100, 50}, twice), (PixelSize{200, 100}));
}

}  // namespace
}  // namespace quillet
