#include "bbs/header_time.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>

namespace quillet {
namespace {

constexpr std::array<std::string_view, 12> kMonthNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::chrono::year_month_day DateOf(std::int64_t seconds) {
  return std::chrono::floor<std::chrono::days>(std::chrono::sys_seconds(std::chrono::seconds(seconds)));
}

// Unlike std::localtime, std::mktime returns no static storage: so the local date of `now` comes of how far
// apart the two clocks stand.
std::chrono::month LocalMonth(std::int64_t now) {
  constexpr std::int64_t kNoon = 43200;
  constexpr std::int64_t kDay = 86400;
  constexpr std::int64_t kLatest = 253402300799;  // the year 9999 ends
  now = std::clamp<std::int64_t>(now, 0, kLatest);
  const std::chrono::year_month_day date = DateOf(now);
  std::tm noon{};
  noon.tm_year = static_cast<int>(date.year()) - 1900;
  noon.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  noon.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
  noon.tm_hour = 12;
  noon.tm_isdst = -1;
  const std::int64_t noonHere = std::mktime(&noon);
  const std::int64_t noonThere = now - now % kDay + kNoon;
  return DateOf(now + (noonThere - noonHere)).month();
}

bool Within(std::optional<int> value, int least, int most) {
  return value && *value >= least && *value <= most;
}

}  // namespace

std::int64_t SecondsOf(const HeaderTime& time, std::int64_t now) {
  constexpr int kFirstYear = 1969;  // some of it is 1970 elsewhere
  constexpr int kLastYear = 9999;   // four digits
  constexpr int kLeapSecond = 60;
  if (!Within(time.year, kFirstYear, kLastYear) || !Within(time.hour, 0, 23) || !Within(time.minute, 0, 59) ||
      !Within(time.second, 0, kLeapSecond))
    return 0;

  const auto name = std::find(kMonthNames.begin(), kMonthNames.end(), time.monthName);
  const std::chrono::month month =
      name == kMonthNames.end() ? LocalMonth(now)
                                : std::chrono::month(static_cast<unsigned>(name - kMonthNames.begin()) + 1);
  const std::chrono::year_month_day_last monthEnd = std::chrono::year(*time.year) / month / std::chrono::last;
  if (!Within(time.day, 1, static_cast<int>(static_cast<unsigned>(monthEnd.day())))) return 0;

  std::tm fields{};
  fields.tm_year = *time.year - 1900;
  fields.tm_mon = static_cast<int>(static_cast<unsigned>(month)) - 1;
  fields.tm_mday = *time.day;
  fields.tm_hour = *time.hour;
  fields.tm_min = *time.minute;
  fields.tm_sec = *time.second;
  fields.tm_isdst = -1;
  return std::max<std::int64_t>(0, std::mktime(&fields));
}

}  // namespace quillet
