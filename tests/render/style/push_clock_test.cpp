#include "render/style/push_clock.h"

#include <gtest/gtest.h>

#include "tests/render/style/styling.h"

namespace quillet {
namespace {

TEST(PushClockTest, YearsFollowTheArticleLineByLine) {
  const std::int64_t now = Local(2026, 11, 6, 12, 0);
  PushClock clock(Local(2023, 12, 30, 23, 59) + 40);
  EXPECT_EQ(clock.TimeOf({12, 30, 23, 59}, now), Local(2023, 12, 30, 23, 59));
  EXPECT_EQ(clock.TimeOf({1, 2, 0, 0}, now), Local(2024, 1, 2));
  EXPECT_EQ(clock.TimeOf({2, 29, 8, 0}, now), Local(2024, 2, 29, 8, 0));
  EXPECT_EQ(clock.TimeOf({2, 28, 8, 0}, now), Local(2025, 2, 28, 8, 0));
  EXPECT_EQ(clock.Earliest(), Local(2025, 2, 28, 8, 0));
  EXPECT_EQ(clock.TimeOf({11, 6, 12, 0}, now), Local(2025, 11, 6, 12, 0));
}

TEST(PushClockTest, NoTimeLiesInTheFutureAndALineThatRunsBackChangesNothing) {
  const std::int64_t now = Local(2026, 11, 6, 12, 0);
  PushClock clock(Local(2026, 11, 1));
  EXPECT_EQ(clock.TimeOf({12, 25, 8, 0}, now), Local(2025, 12, 25, 8, 0));
  EXPECT_EQ(clock.TimeOf({10, 31, 8, 0}, now), Local(2026, 10, 31, 8, 0));
  EXPECT_EQ(clock.TimeOf({11, 2, 8, 0}, now), Local(2026, 11, 2, 8, 0));
  // The BBS's clock may be a little ahead.
  EXPECT_EQ(clock.TimeOf({11, 6, 12, 9}, now), Local(2026, 11, 6, 12, 9));
  PushClock unknown(0);
  EXPECT_EQ(unknown.TimeOf({11, 5, 8, 0}, now), Local(2026, 11, 5, 8, 0));
  EXPECT_EQ(unknown.TimeOf({11, 8, 8, 0}, now), Local(2025, 11, 8, 8, 0));
  EXPECT_EQ(unknown.TimeOf({2, 29, 8, 0}, now), Local(2024, 2, 29, 8, 0));
}

TEST(PushClockTest, WhatIsNoTimeHasNone) {
  const std::int64_t now = Local(2026, 11, 6, 12, 0);
  for (const std::int64_t earliest : {std::int64_t{0}, Local(2026, 1, 1), now + 99999999}) {
    PushClock clock(earliest);
    for (const PushStamp& bad :
         {PushStamp{0, 6, 1, 1}, PushStamp{13, 6, 1, 1}, PushStamp{99, 99, 99, 99}, PushStamp{4, 31, 1, 1},
          PushStamp{4, 0, 1, 1}, PushStamp{4, 6, 24, 1}, PushStamp{4, 6, 1, 60}, PushStamp{2, 30, 1, 1}})
      EXPECT_EQ(clock.TimeOf(bad, now), 0);
    EXPECT_EQ(clock.Earliest() / 60, earliest / 60);
  }
  EXPECT_EQ(PushClock(0).TimeOf({11, 6, 1, 1}, 0), 0);
}

}  // namespace
}  // namespace quillet
