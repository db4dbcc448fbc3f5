#include "render/age_text.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "settings/files/text_lines.h"

namespace quillet {
namespace {

constexpr std::int64_t kHour = 60;  // in minutes, as are all below
constexpr std::int64_t kDay = 1440;
constexpr std::int64_t kMonth = 43830;  // 30.4375 days
constexpr std::int64_t kYear = 525960;  // 365.25 days

// How one unit is put into words. The almost text is "快", the next number and `plain`.
struct Unit {
  std::u16string_view plain;
  std::u16string_view moreThan;
  std::u16string_view andAHalf;
  double exactFrom;  // from this quantity on fractions are not told
};

constexpr Unit kHours = {u"小時前", u"個多小時前", u"個半小時前", 2.0};
constexpr Unit kDays = {u"天前", u"天多前", u"天半前", 2.0};
constexpr Unit kMonths = {u"個月前", u"個多月前", u"個半月前", 2.0};
// Under ten years half a year still matters.
constexpr Unit kYears = {u"年前", u"年多前", u"年半前", 10.0};

std::u16string Numbered(std::int64_t number, std::u16string_view words) {
  constexpr std::int64_t kLeast = std::numeric_limits<int>::min();
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  return ToText(static_cast<int>(std::clamp(number, kLeast, kMost))).append(words);
}

// The thresholds are met or missed by the rounding of single precision: 84 minutes are a little under 1.4
// hours, 72 a little over 1.2.
std::u16string InWords(float quantity, const Unit& unit) {
  const auto whole = static_cast<std::int64_t>(quantity);
  const double fraction = quantity - static_cast<float>(whole);
  if (quantity >= unit.exactFrom || fraction < 0.2) return Numbered(whole, unit.plain);
  if (fraction < 0.4) return Numbered(whole, unit.moreThan);
  if (fraction < 0.7) return Numbered(whole, unit.andAHalf);
  return u"快" + Numbered(whole + 1, unit.plain);
}

float Quotient(std::int64_t minutes, std::int64_t unit) {
  return static_cast<float>(minutes) / static_cast<float>(unit);
}

// Large ages are divided exactly and rounded once.
float ExactQuotient(std::int64_t minutes, std::int64_t unit) {
  return static_cast<float>(static_cast<double>(minutes) / static_cast<double>(unit));
}

// `a - b` held inside the range of 64 bits.
std::int64_t Difference(std::int64_t a, std::int64_t b) {
  using Limits = std::numeric_limits<std::int64_t>;
  if (b < 0 && a > Limits::max() + b) return Limits::max();
  if (b > 0 && a < Limits::min() + b) return Limits::min();
  return a - b;
}

}  // namespace

std::u16string AgeText(std::int64_t postTime, std::int64_t now) {
  if (postTime == 0) return {};
  const std::int64_t minutes = Difference(now, postTime) / 60;
  if (minutes < kHour) return Numbered(minutes, u"分鐘前");
  if (minutes < kDay) return InWords(Quotient(minutes, kHour), kHours);
  if (minutes < kMonth) return InWords(Quotient(minutes, kDay), kDays);
  if (minutes < kYear) return InWords(ExactQuotient(minutes, kMonth), kMonths);
  return InWords(ExactQuotient(minutes, kYear), kYears);
}

}  // namespace quillet
