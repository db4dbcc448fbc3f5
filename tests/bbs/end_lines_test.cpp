#include "bbs/end_lines.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

constexpr std::u16string_view kHost = u"bbs.example";

TEST(EndLinesTest, OriginAddressIsAWholeAddressOrNothing) {
  const struct {
    std::u16string_view behind, address;
  } cases[] = {
      {u", 來自: 192.0.2.7", u"192.0.2.7"},
      {u", 來自: 255.255.255.255 (臺灣)", u"255.255.255.255"},
      {u", 來自: 192.0.2.7   ", u"192.0.2.7"},
      {u", 來自: 192.0.2", u""},
      {u", 來自: 192.0.2.", u""},
      {u", 來自: 192.0.2.256", u""},
      {u", 來自: 192.0.2.7.1", u""},
      {u", 來自: 192..2.7", u""},
      {u", 來自: 192.0.2.7(臺灣)", u""},
      {u", 來自: 1920000000000000.0.2.7", u""},
      {u", 來自: 192.0.*.7", u""},
      {u", 來自: ", u""},
      {u", 來自", u""},
      {u"", u""},
  };
  for (const auto& entry : cases) {
    const std::u16string line = u"※ 發信站: 奧拉拉文藝坊(bbs.example)" + std::u16string(entry.behind);
    EXPECT_EQ(OriginAddress(line, kHost), entry.address);
    EXPECT_EQ(OriginAddress(line, u"other.example"), u"");
  }
}

}  // namespace
}  // namespace quillet
