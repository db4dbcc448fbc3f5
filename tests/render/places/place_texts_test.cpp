// What the two texts of places say, and the addresses in them.
#include <gtest/gtest.h>
#include <map>

#include "render/places/detail_ranges.h"
#include "render/places/parse_ipv4.h"
#include "render/places/place_names.h"

namespace quillet {
namespace {

using namespace std::string_literals;
using Details = std::vector<DetailRange>;

TEST(ParseIPv4Test, FourGroupsCountWhateverStandsBehindThem) {
  const std::map<std::uint32_t, std::vector<std::string>> cases = {
      {0x01020304, {"1.2.3.4", "1.2.3.4.", "1.2.3.4 :5.6", "1.2.3.4\0x"s, "001.2.3.04x"}},
      {0, {"", "...", "1.2.3.", "1.2.3", " 1.2.3.4", "1.2.3.4.5", "1.2.3.4..", "1.2.3.4.x", "x"}},
      {0x01000304, {"1..3.4"}},
      {0x01020300, {"1.2.3.x"}},
      {0x2C010101, {"300.1.1.1", "4294967340.1.1.1"}},
      {0x01010200, {"1.1.1.256"}}};
  for (const auto& [address, texts] : cases)
    for (const std::string& text : texts) {
      EXPECT_EQ(ParseIPv4(text), address) << text;
      EXPECT_EQ(ParseIPv4(std::u16string(text.begin(), text.end())), address) << text;
    }
}

TEST(DetailRangesTest, LinesBecomeRangesAsTheyAreWritten) {
  const std::string filler(60, 'a');
  struct {
    std::string text;
    Details ranges;
    std::size_t firstBadLine = 0;
  } const cases[] = {
      {"", {}},
      {"\xEF\xBB\xBF"s
       "1.0.0.0-1.0.0.9,臺北市,x\r\n \r\n",
       {{0x01000000, 0x01000009, u"臺北市"}}},
      {"2.0.0.0\t,-2.0.0.1-- 高雄 \t-x\n1.0.0.0,1.0.0.1,甲\n",
       {{0x01000000, 0x01000001, u"甲"}, {0x02000000, 0x02000001, u"高雄"}}},
      // Joined, a gap, a repetition, not neighbours in the file.
      {"0.0.0.1,0.0.0.2,甲\n0.0.0.3,0.0.0.4,甲\n", {{1, 4, u"甲"}}},
      {"0.0.0.1,0.0.0.2,甲\n0.0.0.4,0.0.0.5,甲\n", {{1, 2, u"甲"}, {4, 5, u"甲"}}},
      {"0.0.0.1,0.0.0.2,甲\n0.0.0.1,0.0.0.2,甲\n", {{1, 2, u"甲"}}},
      {"0.0.0.1,0.0.0.2,甲\n0.0.0.9,0.0.0.9,乙\n0.0.0.3,0.0.0.4,甲\n",
       {{1, 2, u"甲"}, {3, 4, u"甲"}, {9, 9, u"乙"}}},
      {"9.0.0.0,255.255.255.255,甲\n0.0.0.0,0.0.0.1,甲", {{0, 1, u"甲"}, {0x09000000, 0xFFFFFFFF, u"甲"}}},
      // What does not parse is kept.
      {"nonsense\nmore\n1.0.0.1\n,,\n", {{0, 0, u""}, {0, 0, u""}, {0x01000001, 0, u""}}},
      // Pieces of 79 units; a character of two stays whole.
      {"0.0.0.1,0.0.0.2," + filler +
           "bc\xF0\x9F\x99\x82"
           "9.0.0.0,9.0.0.1,乙\n",
       {{0, 0x09000001, u"乙"}, {1, 2, std::u16string(60, u'a') + u"bc"}}},
      // What is no text, and what must not reach the screen.
      {"0.0.0.1,0.0.0.2,\xFF\xFE\n0.0.0.3,0.0.0.4,a\x01\x1B[m\0\x7F\xC2\x9F z\n"s, {{3, 4, u"a[m z"}}, 1},
  };
  for (const auto& [text, ranges, firstBadLine] : cases) {
    const DetailRangesRead read = ReadDetailRanges(text);
    EXPECT_EQ(read.ranges, ranges) << text;
    EXPECT_EQ(read.firstBadLine, firstBadLine) << text;
  }
}

TEST(DetailRangesTest, WhereRangesOverlapThePlainSearchDecides) {
  const Details ranges{
      {0, 0, u""}, {10, 99, u"outer"}, {20, 29, u"inner"}, {20, 24, u"inner"}, {40, 30, u"none"}};
  const RangeTable table = TableOfDetailRanges(ranges);
  const std::map<std::uint32_t, std::uint32_t> numbers = {
      {0, 1}, {1, 0}, {10, 2}, {19, 2}, {20, 3}, {29, 3}, {30, 0}, {35, 0}, {40, 0}, {0xFFFFFFFF, 0}};
  for (const auto& [address, number] : numbers)
    EXPECT_EQ(table.Find(address), number) << address;
}

TEST(PlaceNamesTest, TheLastLineOfANumberCounts) {
  const PlaceNamesRead read = ReadPlaceNames(
      "\xEF\xBB\xBF"
      "12,臺北,Taipei,x\r\n\n 7, 高雄\n12,新臺北\nnone,零\n5\n6,\xC0\x80\n9,a\x1B\0b\n-3,no\n99999999999,far"s);
  const PlaceNames names{{12, u"新臺北"}, {7, u" 高雄"}, {0, u"零"},
                         {9, u"ab"},      {-3, u"no"},   {2147483647, u"far"}};
  EXPECT_EQ(read.names, names);
  EXPECT_EQ(read.firstBadLine, 7u);
}

}  // namespace
}  // namespace quillet
