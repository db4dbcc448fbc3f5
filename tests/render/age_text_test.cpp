#include "render/age_text.h"

#include <gtest/gtest.h>
#include <limits>
#include <string_view>

namespace quillet {
namespace {

constexpr std::int64_t kNow = 1'700'000'000;

std::u16string AfterMinutes(std::int64_t minutes) {
  return AgeText(kNow - 60 * minutes, kNow);
}

TEST(AgeTextTest, EachUnitHasItsWordsAndThresholds) {
  const struct {
    std::int64_t minutes;
    std::u16string_view text;
  } cases[] = {
      {0, u"0分鐘前"},
      {60, u"1小時前"},
      {72, u"1個多小時前"},
      {83, u"1個多小時前"},
      {85, u"1個半小時前"},
      {102, u"快2小時前"},
      {120, u"2小時前"},
      {1439, u"23小時前"},
      {1440, u"1天前"},
      {1728, u"1天多前"},
      {2017, u"1天半前"},
      {2448, u"快2天前"},
      {43830, u"1個月前"},
      {52596, u"1個多月前"},
      {61363, u"1個半月前"},
      {74511, u"快2個月前"},
      {525960, u"1年前"},
      {736345, u"1年半前"},
      {1051919, u"快2年前"},
      {1051920, u"2年前"},
      {4996620, u"9年半前"},
      // 9.7 rounded to single precision lies below 0.7 over 9.
      {5101812, u"9年半前"},
      {5101813, u"快10年前"},
      {5259600 + 262980, u"10年前"},
  };
  for (const auto& [minutes, text] : cases)
    EXPECT_EQ(AfterMinutes(minutes), text) << minutes;
}

TEST(AgeTextTest, SecondsAreCutTowardsZeroAndNoTimeHasNoAge) {
  EXPECT_EQ(AgeText(0, kNow), u"");
  EXPECT_EQ(AgeText(kNow - 119, kNow), u"1分鐘前");
  EXPECT_EQ(AgeText(kNow + 59, kNow), u"0分鐘前");
  EXPECT_EQ(AgeText(kNow + 5 * 60, kNow), u"-5分鐘前");
}

TEST(AgeTextTest, TimesBeyondAllReasonAreHeldInsideTheRange) {
  using Limits = std::numeric_limits<std::int64_t>;
  EXPECT_EQ(AgeText(Limits::min(), Limits::max()), u"2147483647年前");
  EXPECT_EQ(AgeText(Limits::max(), Limits::min()), u"-2147483648分鐘前");
  EXPECT_EQ(AgeText(Limits::max(), kNow), u"-2147483648分鐘前");
}

}  // namespace
}  // namespace quillet
