// The time zone, in this system's call: its C library asks for it once otherwise.
#include "platform/clock.h"

#include <ctime>

namespace quillet {

void FollowTimeZone() {
  _tzset();
}

}  // namespace quillet
