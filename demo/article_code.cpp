#include "demo/article_code.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace quillet::demo {
namespace {

constexpr std::string_view kAlphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz-_";
constexpr unsigned kSuffixes = 4096;
constexpr int kCodeLength = 8;
constexpr std::int64_t kZoneSeconds = 8 * 3600;
constexpr std::int64_t kDaySeconds = 86400;

template <typename... Values>
std::string Format(const char* pattern, Values... values) {
  std::array<char, 64> buffer{};
  std::snprintf(buffer.data(), buffer.size(), pattern, values...);
  return buffer.data();
}

}  // namespace

std::string ArticleFileName(std::int64_t seconds, unsigned suffix) {
  return Format("M.%010lld.A.%03X", static_cast<long long>(seconds), suffix % kSuffixes);
}

std::string ArticleCode(std::int64_t seconds, unsigned suffix) {
  std::uint64_t value = static_cast<std::uint64_t>(seconds) * kSuffixes + suffix % kSuffixes;
  std::string code(kCodeLength, '0');
  for (auto digit = code.rbegin(); digit != code.rend(); ++digit) {
    *digit = kAlphabet[value % kAlphabet.size()];
    value /= kAlphabet.size();
  }
  return code;
}

std::uint32_t StableHash(std::string_view text) {
  std::uint32_t hash = 2166136261u;
  for (const char byte : text)
    hash = (hash ^ static_cast<std::uint8_t>(byte)) * 16777619u;
  return hash;
}

std::int64_t SecondsOf(const BbsTime& time) {
  using namespace std::chrono;
  const sys_days days = std::chrono::year{time.year} / time.month / time.day;
  return days.time_since_epoch().count() * kDaySeconds + time.hour * 3600 + time.minute * 60 + time.second -
         kZoneSeconds;
}

BbsTime TimeOf(std::int64_t seconds) {
  using namespace std::chrono;
  const sys_seconds moment{std::chrono::seconds{seconds + kZoneSeconds}};
  const auto midnight = floor<days>(moment);
  const year_month_day date{midnight};
  const hh_mm_ss clock{moment - midnight};
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(clock.hours().count()),
          static_cast<int>(clock.minutes().count()),
          static_cast<int>(clock.seconds().count())};
}

bool ParseBbsTime(std::string_view text, BbsTime& time) {
  BbsTime read;
  const int fields = std::sscanf(std::string(text).c_str(), "%4d-%2d-%2d %2d:%2d:%2d", &read.year,
                                 &read.month, &read.day, &read.hour, &read.minute, &read.second);
  const bool inRange = read.year >= 1970 && read.year <= 2037 && read.hour >= 0 && read.hour < 24 &&
                       read.minute >= 0 && read.minute < 60 && read.second >= 0 && read.second < 60;
  const std::chrono::year_month_day date{std::chrono::year{read.year},
                                         std::chrono::month{static_cast<unsigned>(read.month)},
                                         std::chrono::day{static_cast<unsigned>(read.day)}};
  if (fields != 6 || !inRange || !date.ok()) return false;
  time = read;
  return true;
}

std::string HeaderTime(std::int64_t seconds) {
  static constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  static constexpr std::array kWeekdays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  const BbsTime time = TimeOf(seconds);
  const std::chrono::weekday weekday{
      std::chrono::sys_days{std::chrono::year{time.year} / time.month / time.day}};
  return Format("%s %s %2d %02d:%02d:%02d %04d", kWeekdays[weekday.c_encoding()],
                kMonths[static_cast<std::size_t>(time.month - 1)], time.day, time.hour, time.minute,
                time.second, time.year);
}

std::string PushTime(std::int64_t seconds) {
  const BbsTime time = TimeOf(seconds);
  return Format("%02d/%02d %02d:%02d", time.month, time.day, time.hour, time.minute);
}

}  // namespace quillet::demo
