// The times of an article's push lines, which have no year: each is no earlier than the one above. Pure but
// for the system's time zone.
#pragma once

#include <cstdint>

#include "bbs/push_line.h"

namespace quillet {

class PushClock {
 public:
  // `earliest`: seconds since 1970 of the article or of a push line above; 0 not known.
  explicit PushClock(std::int64_t earliest) : earliest_(earliest - earliest % 60) {}

  // Seconds since 1970 of the next line's stamp, read as local time; 0 when there is no such time. Without
  // an earliest time, or where the next one after it would lie in the future, it is the latest that does not.
  std::int64_t TimeOf(const PushStamp& stamp, std::int64_t now);
  // What no later line goes behind.
  std::int64_t Earliest() const { return earliest_; }

 private:
  std::int64_t earliest_;
};

}  // namespace quillet
