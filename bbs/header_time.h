// The time in an article's header, as its fields stand there, to seconds since 1970. Pure but for the
// system's time zone; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillet {

struct HeaderTime {
  std::string_view monthName;  // three letters, "Jan" to "Dec"; another name stands for the current month
  std::optional<int> year, day, hour, minute, second;  // none: unreadable
};

// Read as local time; 0 for a time that there is not (an unreadable field, the 31st of February, 25 o'clock)
// and for one before 1970. `now`, seconds since 1970, says the current month.
std::int64_t SecondsOf(const HeaderTime& time, std::int64_t now);

}  // namespace quillet
