#include "platform/machine_tag.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(MachineTagTest, IsTheEndOfTheSerialFilledUpWithZeros) {
  EXPECT_EQ(TagOfSerial("PF1ABCDEFGH"), "BCDEFGH");
  EXPECT_EQ(TagOfSerial("ABCDEFG"), "ABCDEFG");
  EXPECT_EQ(TagOfSerial("AB"), "00000AB");
  EXPECT_EQ(TagOfSerial(" \tPF 1AB \r\n"), "0PF 1AB");
  EXPECT_EQ(TagOfSerial(""), "");
  EXPECT_EQ(TagOfSerial(" \t\r\n"), "");
}

TEST(MachineTagTest, IsTheSameEachTime) {
  const std::string tag = MachineTag();
  EXPECT_TRUE(tag.empty() || tag.size() == 7) << tag;
  EXPECT_EQ(MachineTag(), tag);
}

}  // namespace
}  // namespace quillet
