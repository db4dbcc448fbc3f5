#include "render/places/range_table.h"

#include <gtest/gtest.h>
#include <string>

namespace quillet {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t kLast = 0xFFFFFFFF;
using Ranges = std::vector<IpRange>;

// Of all lengths, some with gaps between.
Ranges ManyRanges() {
  Ranges ranges;
  std::uint32_t first = 0;
  for (std::uint32_t number = 1; number <= 30000; ++number) {
    const std::uint32_t last = first + number * number % 100000;
    ranges.push_back({first, last, number});
    first = last + 1 + number % 3;
  }
  return ranges;
}

TEST(RangeTableTest, EveryBoundIsFoundAndNothingInGaps) {
  const Ranges cases[] = {{{0, 0, 7}},
                          {{1, 1, 7}},
                          {{0, kLast, 7}},
                          {{kLast, kLast, 7}},
                          {{0, 0, 7}, {1, 0x7FFFFFFF, 8}, {0x80000000, kLast, 9}},
                          {{0x00FFFFFF, 0x01000000, 7}, {0x01010000, 0x0101FFFF, 0}, {kLast - 1, kLast, 9}},
                          ManyRanges()};
  for (const Ranges& ranges : cases) {
    const RangeTableMade made = MakeRangeTable(ranges);
    ASSERT_EQ(made.firstBad, 0u);
    ASSERT_EQ(made.table.Size(), ranges.size());
    IpRange before{};
    for (const IpRange& range : ranges) {
      ASSERT_EQ(made.table.Find(range.first), range.value) << range.first;
      ASSERT_EQ(made.table.Find(range.last), range.value) << range.last;
      const std::uint32_t gap = range.first == before.last + 1 ? before.value : 0;
      ASSERT_TRUE(range.first == 0 || made.table.Find(range.first - 1) == gap) << range.first;
      before = range;
    }
    EXPECT_TRUE(before.last == kLast || made.table.Find(before.last + 1) == 0);
  }
  EXPECT_EQ(RangeTable().Find(0), 0u);
  EXPECT_EQ(MakeRangeTable(Ranges()).table.Find(kLast), 0u);
}

TEST(RangeTableTest, RangesOutOfOrderAreRefusedWhole) {
  const std::pair<Ranges, std::size_t> cases[] = {{{{5, 4, 1}}, 1},
                                                  {{{0, 9, 1}, {9, 12, 2}}, 2},
                                                  {{{10, 19, 1}, {30, 39, 2}, {20, 29, 3}, {0, 1, 4}}, 3},
                                                  {{{10, 19, 1}, {20, 18, 2}}, 2},
                                                  {{{0, kLast, 1}, {0, 5, 2}}, 2}};
  for (const auto& [ranges, firstBad] : cases) {
    const RangeTableMade made = MakeRangeTable(ranges);
    EXPECT_EQ(made.firstBad, firstBad);
    EXPECT_EQ(made.table.Size(), 0u);
    EXPECT_EQ(made.table.Find(10), 0u);
  }
}

TEST(RangeTableTest, RecordsOfAFileAreTwelveBytesLeastSignificantFirst) {
  const std::string record = "\x04\x03\x02\x01\x05\x03\x02\x01\x80\x00\x00\xC0"s;
  for (std::size_t size = 0; size <= 2 * kIpRangeBytes; ++size) {
    const std::string bytes = (record + "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x01\x00\x00\x00"s).substr(0, size);
    const RangeTable table = MakeRangeTable(bytes).table;
    ASSERT_EQ(table.Size(), size / kIpRangeBytes);
    EXPECT_EQ(table.Find(0x01020305), size < 12 ? 0 : 0xC0000080);
    EXPECT_EQ(table.Find(kLast), size < 24 ? 0u : 1u);
  }
}

}  // namespace
}  // namespace quillet
