#include "render/backdrop_fit.h"

#include <gtest/gtest.h>
#include <limits>

namespace quillet {
namespace {

void ExpectRect(const BackdropRect& rect, double x, double y, double width, double height) {
  EXPECT_DOUBLE_EQ(rect.x, x);
  EXPECT_DOUBLE_EQ(rect.y, y);
  EXPECT_DOUBLE_EQ(rect.width, width);
  EXPECT_DOUBLE_EQ(rect.height, height);
}

TEST(BackdropFitTest, ACropKeepsTheMiddleAndAMovingOneSlidesFromOneEndToTheOther) {
  ExpectRect(VisibleBackdrop(BackdropStyle::kStretch, 300, 400, 1280, 720, 0.5), 0, 0, 300, 400);
  // Wider than the window: the sides go. Taller: top and bottom.
  ExpectRect(VisibleBackdrop(BackdropStyle::kCrop, 400, 100, 200, 100, 0), 100, 0, 200, 100);
  ExpectRect(VisibleBackdrop(BackdropStyle::kCrop, 100, 400, 200, 100, 1), 0, 175, 100, 50);
  const auto at = [](double progress) {
    return VisibleBackdrop(BackdropStyle::kMovingCrop, 100, 400, 200, 100, progress);
  };
  ExpectRect(at(0.5), 0, 175, 100, 50);
  ExpectRect(at(7), 0, 350, 100, 50);
  ExpectRect(at(-7), 0, 0, 100, 50);
  ExpectRect(at(std::numeric_limits<double>::quiet_NaN()), 0, 0, 100, 50);
}

TEST(BackdropFitTest, NothingWithoutStyleOrSize) {
  ExpectRect(VisibleBackdrop(BackdropStyle::kNone, 300, 400, 1280, 720, 0), 0, 0, 0, 0);
  const double bad[] = {0, -5, 0.5, std::numeric_limits<double>::quiet_NaN(),
                        std::numeric_limits<double>::infinity()};
  for (const BackdropStyle style :
       {BackdropStyle::kStretch, BackdropStyle::kCrop, BackdropStyle::kMovingCrop})
    for (const double side : bad) {
      ExpectRect(VisibleBackdrop(style, side, 400, 1280, 720, 0), 0, 0, 0, 0);
      ExpectRect(VisibleBackdrop(style, 300, side, 1280, 720, 0), 0, 0, 0, 0);
      ExpectRect(VisibleBackdrop(style, 300, 400, side, 720, 0), 0, 0, 0, 0);
      ExpectRect(VisibleBackdrop(style, 300, 400, 1280, side, 0), 0, 0, 0, 0);
    }
}

TEST(BackdropFitTest, VisiblePartStaysInsideThePicture) {
  constexpr double kSides[] = {1, 3, 7.5, 799, 1081, 20000, 1e9};
  for (const double pictureWidth : kSides)
    for (const double pictureHeight : kSides)
      for (const double windowWidth : kSides)
        for (const double windowHeight : kSides)
          for (const double progress : {0.0, 0.3, 1.0}) {
            const BackdropRect rect = VisibleBackdrop(BackdropStyle::kMovingCrop, pictureWidth, pictureHeight,
                                                      windowWidth, windowHeight, progress);
            EXPECT_GT(rect.width, 0);
            EXPECT_GT(rect.height, 0);
            EXPECT_GE(rect.x, 0);
            EXPECT_GE(rect.y, 0);
            EXPECT_LE(rect.x + rect.width, pictureWidth * (1 + 1e-12));
            EXPECT_LE(rect.y + rect.height, pictureHeight * (1 + 1e-12));
            EXPECT_NEAR(rect.width * windowHeight / (rect.height * windowWidth), 1, 1e-9);
          }
}

}  // namespace
}  // namespace quillet
