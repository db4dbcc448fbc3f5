#include "render/scroll_motion.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace quillet {
namespace {

using StepFunction = int (*)(int, int);
constexpr StepFunction kSteps[] = {ScrollAnimationStep, SideListScrollStep};

TEST(ScrollMotionTest, ShortWaysMoveAThirdAndLongOnesMore) {
  EXPECT_EQ(ScrollAnimationStep(10, 10), 10);
  EXPECT_EQ(ScrollAnimationStep(0, 22), 8);
  EXPECT_EQ(ScrollAnimationStep(0, 23), 8);  // 25 / (39.6 / 23 + 1.2)
  EXPECT_EQ(ScrollAnimationStep(0, 100), 63);
  EXPECT_EQ(ScrollAnimationStep(100, 0), 37);
  EXPECT_EQ(SideListScrollStep(0, 22), 8);
  EXPECT_EQ(SideListScrollStep(0, 100), 55);  // 102 / (33 / 100 + 1.5)
}

// Both directions, equally long, never past the target and there after a bounded number of ticks.
void ExpectArrival(StepFunction step, int start, int target) {
  SCOPED_TRACE(testing::Message() << start << " to " << target);
  int at = start;
  for (int tick = 0; tick < 60 && at != target; ++tick) {
    const int next = step(at, target);
    ASSERT_NE(next, at);
    const auto [low, high] = std::minmax(at, target);
    ASSERT_TRUE(low <= next && next <= high) << next;
    at = next;
  }
  EXPECT_EQ(at, target);
}

TEST(ScrollMotionTest, EveryWayEndsAtItsTarget) {
  for (const StepFunction step : kSteps) {
    for (int target = -3000; target <= 3000; ++target)
      ExpectArrival(step, 0, target);
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    for (const auto& [from, to] : {std::pair{kLeast, kMost}, {kMost, kLeast}, {0, kLeast}, {kMost, 0}})
      ExpectArrival(step, from, to);
  }
}

}  // namespace
}  // namespace quillet
