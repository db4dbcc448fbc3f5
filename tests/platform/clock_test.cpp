#include "platform/clock.h"

#include <ctime>
#include <gtest/gtest.h>

#include "tests/support/variable.h"

namespace quillet {
namespace {

TEST(ClockTest, LocalTimeIsThatOfTheZoneThatIsSetNow) {
  const auto secondsIn = [](const char* zone) {
    const Variable set("TZ", zone);
    FollowTimeZone();
    std::tm noon{};
    noon.tm_year = 126;
    noon.tm_mday = 1;
    noon.tm_hour = 12;
    return std::mktime(&noon);
  };
  EXPECT_EQ(secondsIn("AAA-8"), 1767240000);
  EXPECT_EQ(secondsIn("BBB5"), 1767240000 + 13 * 3600);
  FollowTimeZone();
}

}  // namespace
}  // namespace quillet
