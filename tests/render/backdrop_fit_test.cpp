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

}  // namespace
}  // namespace quillet
