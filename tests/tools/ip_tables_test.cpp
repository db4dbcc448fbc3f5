#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace quillet {
namespace {

// The tables as they are shipped, read by hand: in order, apart, and each place with a name.
class IpTablesTest : public testing::TestWithParam<std::string> {
 protected:
  static std::string Read(const std::string& name) {
    std::ifstream stream(GetParam() + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  static std::vector<std::string> Lines(const std::string& name) {
    std::ifstream stream(GetParam() + "/" + name);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
      EXPECT_LE(line.size(), 79u) << line;
      lines.push_back(line);
    }
    EXPECT_FALSE(lines.empty()) << name;
    return lines;
  }

  // The values of a file's records.
  static std::set<std::uint32_t> Values(const std::string& name) {
    const std::string bytes = Read(name);
    EXPECT_FALSE(bytes.empty()) << name;
    EXPECT_EQ(bytes.size() % 12, 0u) << name;
    std::set<std::uint32_t> values;
    std::uint64_t free = 0;
    for (std::size_t at = 0; at + 12 <= bytes.size(); at += 12) {
      const std::uint32_t first = Number(bytes, at);
      const std::uint32_t last = Number(bytes, at + 4);
      if (first < free || last < first) {
        ADD_FAILURE() << name << ": record " << at / 12;
        break;
      }
      free = std::uint64_t{last} + 1;
      values.insert(Number(bytes, at + 8));
    }
    return values;
  }

 private:
  static std::uint32_t Number(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
      value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
  }
};

TEST_P(IpTablesTest, EachPlaceOfTheWorldHasAName) {
  std::set<std::uint32_t> named;
  for (const std::string& line : Lines("geoname_translation.txt"))
    EXPECT_TRUE(named.insert(static_cast<std::uint32_t>(std::stoul(line))).second) << line;
  for (const std::uint32_t value : Values("geo_ip.bin"))
    EXPECT_TRUE(named.contains(value & ~0x80000000u)) << value;
}

TEST_P(IpTablesTest, RelaysHaveTheirMark) {
  EXPECT_EQ(Values("vpn_ip.bin"), std::set<std::uint32_t>{1});
  EXPECT_EQ(Values("proxy_ip.bin"), std::set<std::uint32_t>{0x10000000});
}

INSTANTIATE_TEST_SUITE_P(, IpTablesTest, testing::Values("Data", "demo/content/places"),
                         [](const auto& folder) { return folder.param == "Data" ? "Shipped" : "Demo"; });

}  // namespace
}  // namespace quillet
