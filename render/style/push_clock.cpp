#include "render/style/push_clock.h"

#include <algorithm>
#include <string_view>

#include "bbs/header_time.h"

namespace quillet {
namespace {

constexpr std::string_view kMonthNames[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
// The clocks here and there, and the time zones, may differ by as much.
constexpr std::int64_t kClockError = 86400;
// The 29th of February can be eight years apart.
constexpr int kYearsApart = 8;

// Off by one at most.
int YearAbout(std::int64_t seconds) {
  constexpr std::int64_t kYear = 31556952;
  return static_cast<int>(1970 + seconds / kYear);
}

std::int64_t SecondsIn(int year, const PushStamp& stamp) {
  return SecondsOf({.monthName = kMonthNames[stamp.month - 1],
                    .year = year,
                    .day = stamp.day,
                    .hour = stamp.hour,
                    .minute = stamp.minute,
                    .second = 0},
                   0);
}

}  // namespace

std::int64_t PushClock::TimeOf(const PushStamp& stamp, std::int64_t now) {
  if (stamp.month < 1 || stamp.month > 12) return 0;
  const std::int64_t latest = now + kClockError;
  const int lastYear = YearAbout(latest) + 1;
  const int firstYear = YearAbout(earliest_) - 1;
  const int nextYear = std::min(lastYear, firstYear + kYearsApart + 2);
  for (int year = firstYear; earliest_ > 0 && year <= nextYear; ++year) {
    const std::int64_t seconds = SecondsIn(year, stamp);
    if (seconds < earliest_ || seconds > latest) continue;
    earliest_ = seconds;
    return seconds;
  }
  for (int year = lastYear; year >= lastYear - kYearsApart - 2; --year) {
    const std::int64_t seconds = SecondsIn(year, stamp);
    if (seconds != 0 && seconds <= latest) return seconds;
  }
  return 0;
}

}  // namespace quillet
