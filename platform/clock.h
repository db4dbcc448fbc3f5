// The time of day, as articles and ages count it. Any thread.
#pragma once

#include <chrono>
#include <cstdint>

namespace quillet {

// Seconds since 1970.
inline std::int64_t SecondsNow() {
  using std::chrono::duration_cast, std::chrono::seconds, std::chrono::system_clock;
  return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

// Milliseconds of a clock that never runs backwards.
inline std::int64_t SteadyMilliseconds() {
  using std::chrono::duration_cast, std::chrono::milliseconds, std::chrono::steady_clock;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

// What std::mktime takes for local time follows the system's time zone, where a user has changed that
// meanwhile.
void FollowTimeZone();

}  // namespace quillet
