#include "input/wheel_steps.h"

#include <gtest/gtest.h>
#include <random>

namespace quillet {
namespace {

constexpr WheelScale kScale{.linesPerNotch = 3, .pixelsPerLine = 18};

TEST(WheelStepsTest, NothingOfFineTurnsIsLost) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    WheelSteps wheel;
    const int sign = round % 2 == 0 ? 1 : -1;
    std::int64_t now = 1000;
    int angle = 0;
    WheelTurn sum;
    for (int i = 0; i < 500; ++i) {
      const int part = sign * static_cast<int>(1 + random() % 40);
      angle += part;
      const WheelTurn turn = wheel.Add({.angle = part}, kScale, now += random() % 400);
      sum.notches += turn.notches;
      sum.lines += turn.lines;
      ASSERT_EQ(sum.notches, angle / 120);
      ASSERT_EQ(sum.lines, angle * 3 / 120);
    }
  }
}

TEST(WheelStepsTest, TouchpadsMoveAsFarAsTheFinger) {
  WheelSteps wheel;
  WheelTurn sum;
  for (int i = 0; i < 100; ++i) {
    const WheelTurn turn = wheel.Add({.angle = 30, .pixels = 7}, kScale, i * 8);
    sum.notches += turn.notches;
    sum.lines += turn.lines;
  }
  EXPECT_EQ(sum.lines, 700 / 18);
  EXPECT_EQ(sum.notches, 3000 / 120);
}

TEST(WheelStepsTest, TheRestGoesWithTheDirectionAndWithAPauseOnly) {
  WheelSteps wheel;
  EXPECT_TRUE(wheel.Add({.angle = 35}, kScale, 0).IsNothing());
  EXPECT_TRUE(wheel.Add({.angle = -39}, kScale, 1).IsNothing())
      << "the rest upwards would have been paid back";
  EXPECT_EQ(wheel.Add({.angle = -1}, kScale, 2).lines, -1);
  wheel = WheelSteps();
  wheel.Add({.angle = 119}, kScale, 0);
  EXPECT_EQ(wheel.Add({.angle = 1}, kScale, 400).notches, 1);
  wheel.Add({.angle = 119}, kScale, 500);
  EXPECT_EQ(wheel.Add({.angle = 1}, kScale, 5000).notches, 0);
}

}  // namespace
}  // namespace quillet
