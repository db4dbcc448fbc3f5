// The time zone, in this system's call.
#include "platform/clock.h"

#include <ctime>

namespace quillet {

void FollowTimeZone() {
  tzset();
}

}  // namespace quillet
