#include "render/picture_plan.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

constexpr PictureRoom kRoom{.width = 800, .rowHeight = 20, .rows = 23, .windowHeight = 480, .scale = 1};

PictureSpot Spot(int line, const std::string& link, PictureOpens opens = PictureOpens::kByItself,
                 LinkKind kind = LinkKind::kPicture) {
  return {.line = line, .first = 0, .link = link, .kind = kind, .size = PictureSize::kNormal, .opens = opens};
}

// One line in sight, two below, one above.
PictureSight SightAt(int line) {
  return {.firstAbove = line - 1, .first = line, .last = line, .lastBelow = line + 2};
}

class PicturePlanTest : public testing::Test {
 protected:
  PicturePlanTest() {
    plan.SetSpots({Spot(0, "a"), Spot(1, "b"), Spot(1, "c"), Spot(2, "d", PictureOpens::kByHand),
                   Spot(3, "e"), Spot(8, "a"), Spot(9, "f", PictureOpens::kByItself, LinkKind::kShortened)});
    plan.SetScope(PictureScope::kCurrentPage);
  }
  std::string Open() {
    std::string open;
    for (std::size_t spot = 0; spot < plan.Count(); ++spot)
      if (plan.IsOpen(spot)) open += plan.At(spot).link;
    return open;
  }
  std::string Wanted(int line) {
    std::string wanted;
    for (const std::size_t spot : plan.Wanted(SightAt(line)))
      wanted += plan.At(spot).link;
    return wanted;
  }

  PicturePlan plan;
};

TEST_F(PicturePlanTest, WhatComesIntoSightOpensAndStaysOpen) {
  EXPECT_FALSE(plan.See(2, 2)) << "by hand only";
  EXPECT_TRUE(plan.See(1, 2));
  EXPECT_FALSE(plan.See(1, 2));
  EXPECT_EQ(Open(), "bc");
  plan.Learn(4, PictureKnown::kSize, {100, 100});
  EXPECT_EQ(Open(), "bce") << "out of sight as soon as its rows are known";
  plan.SetOpen(1, false);
  plan.SetOpen(3, true);
  plan.See(0, 9);
  EXPECT_EQ(Open(), "acdeaf");
  plan.SetScope(PictureScope::kNone);
  EXPECT_EQ(Open(), "d");
}

TEST_F(PicturePlanTest, WhatIsInSightIsWantedFirst) {
  EXPECT_EQ(Wanted(1), "bcea");
  plan.SetOpen(3, true);
  EXPECT_EQ(Wanted(1), "bcdea");
  plan.SetScope(PictureScope::kAllPages);
  EXPECT_EQ(Wanted(8), "afabcde");
  plan.Learn(4, PictureKnown::kFailure, {});
  EXPECT_EQ(Wanted(8), "afabcd");
  plan.SetScope(PictureScope::kNone);
  EXPECT_EQ(Wanted(1), "d");
}

TEST_F(PicturePlanTest, BandsHoldAllThePicturesOfALine) {
  plan.See(0, 3);
  plan.Learn(1, PictureKnown::kSize, {100, 50});
  EXPECT_EQ(plan.Bands(kRoom), (std::vector<PictureBand>{{0, 1}, {1, 4}, {3, 1}}));
  EXPECT_FALSE(plan.Learn(1, PictureKnown::kNothing, {})) << "room once given stays while it is fetched anew";
}

TEST_F(PicturePlanTest, AGuessThatWasWrongClosesAgain) {
  plan.See(9, 9);
  plan.Learn(6, PictureKnown::kNoPicture, {});
  EXPECT_EQ(Open(), "");
  plan.SetOpen(6, true);
  EXPECT_EQ(Open(), "f") << "who asks for it is told";
}

TEST_F(PicturePlanTest, WhatWasOpenIsFoundAgainInAnotherLine) {
  plan.SetOpen(5, true);
  plan.SetOpen(0, false);
  plan.SetSpots({Spot(4, "x"), Spot(5, "a"), Spot(6, "a")});
  EXPECT_EQ(Open(), "a");
  EXPECT_TRUE(plan.IsOpen(2));
  plan.Forget();
  plan.SetSpots({Spot(5, "a"), Spot(6, "a")});
  EXPECT_EQ(Open(), "");
}

TEST_F(PicturePlanTest, AllOfThePageOpenUnlessTheyAre) {
  EXPECT_FALSE(plan.AllOpen(0, 3));
  plan.SetAllOpen(0, 3, true);
  EXPECT_EQ(Open(), "abcde");
  EXPECT_TRUE(plan.AllOpen(0, 3));
  plan.SetAllOpen(0, 3, false);
  EXPECT_EQ(Open(), "");
}

}  // namespace
}  // namespace quillet
