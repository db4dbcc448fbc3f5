#include "core/charset.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

const std::filesystem::path kDataFolder = QUILLET_SOURCE_DIR "/Data";
const std::filesystem::path kListFolder = QUILLET_SOURCE_DIR "/tools/charset";

std::string Pair(unsigned code) {
  return {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
}

bool IsPair(unsigned code) {
  const unsigned lead = code >> 8;
  const unsigned trail = code & 0xFF;
  return lead >= 0x81 && lead <= 0xFE &&
         ((trail >= 0x40 && trail <= 0x7E) || (trail >= 0xA1 && trail <= 0xFE));
}

// The lists that document twins and folds: hexadecimal columns, '#' begins a comment.
std::map<unsigned, std::vector<unsigned>> ReadList(const std::string& name, std::size_t columns) {
  std::map<unsigned, std::vector<unsigned>> list;
  std::ifstream in(kListFolder / name);
  EXPECT_TRUE(in) << name;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    unsigned key = 0;
    fields >> std::hex >> key;
    std::vector<unsigned> rest;
    for (unsigned value = 0; rest.size() < columns && fields >> value;)
      rest.push_back(value);
    EXPECT_TRUE(list.emplace(key, rest).second) << line;
  }
  return list;
}

class CharsetTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(LoadCharsetTables(kDataFolder).Complete()); }
};

TEST_F(CharsetTest, EveryCodeComesBackAsItselfOrAsItsListedTwin) {
  auto twins = ReadList("twins.txt", 1);
  int mapped = 0;
  for (unsigned code = 0x8000; code <= 0xFFFF; ++code) {
    const std::u16string text = FromBig5(Pair(code));
    ASSERT_EQ(text.size(), 1u);
    if (text[0] == 0) continue;
    ++mapped;
    EXPECT_TRUE(IsPair(code)) << std::hex << code;
    unsigned expected = code;
    if (const auto twin = twins.find(code); twin != twins.end()) {
      expected = twin->second.at(0);
      EXPECT_EQ(FromBig5(Pair(expected)), text) << std::hex << code;
      EXPECT_FALSE(twins.contains(expected)) << "a canonical code has a twin: " << std::hex << expected;
      twin->second.push_back(1);
    }
    EXPECT_EQ(ToBig5(text), Pair(expected)) << std::hex << code;
  }
  EXPECT_EQ(mapped, 19782);
  for (const auto& [code, row] : twins)
    EXPECT_EQ(row.size(), 2u) << "listed, but unmapped: " << std::hex << code;
}

TEST_F(CharsetTest, EveryUnitComesBackAsItselfOrAsItsListedFold) {
  const auto folds = ReadList("folds.txt", 2);
  int mapped = 0;
  for (unsigned unit = 0x80; unit <= 0xFFFF; ++unit) {
    const std::u16string text(1, static_cast<char16_t>(unit));
    const std::string bytes = ToBig5(text);
    const auto fold = folds.find(unit);
    if (bytes.empty()) {
      EXPECT_EQ(fold, folds.end()) << std::hex << unit;
      continue;
    }
    ++mapped;
    ASSERT_EQ(bytes.size(), 2u);
    std::u16string expected = text;
    if (fold != folds.end()) expected.assign(fold->second.begin(), fold->second.end());
    EXPECT_EQ(FromBig5(bytes), expected) << std::hex << unit;
  }
  EXPECT_EQ(mapped, 25914);
}

// Codes as the Big5 standard, its ETEN extension and the BBSes' extension have them.
TEST_F(CharsetTest, KnownCharactersHaveTheirPublishedCodes) {
  const std::map<char16_t, unsigned> known{
      {u'中', 0xA4A4}, {u'一', 0xA440}, {u'，', 0xA141}, {u'★', 0xA1B9}, {u'│', 0xA278}, {u'╭', 0xA27E},
      {u'€', 0xA3E1},  {u'裏', 0xF9D8}, {u'あ', 0xC6E8}, {u'①', 0xC6A1}, {u'Я', 0xC854}, {u'═', 0xF9F9},
  };
  for (const auto& [unit, code] : known) {
    EXPECT_EQ(ToBig5(std::u16string(1, unit)), Pair(code)) << std::hex << code;
    EXPECT_EQ(FromBig5(Pair(code)), std::u16string(1, unit)) << std::hex << code;
  }
}

TEST_F(CharsetTest, CharactersWithoutABig5FormVanish) {
  EXPECT_EQ(ToBig5(u"a\u00A0b中\u200B文\uFFFD"), "ab" + ToBig5(u"中文"));
  EXPECT_EQ(ToBig5(u"好🔥😀!"), ToBig5(u"好!")) << "both surrogates of a pair";
  EXPECT_EQ(ToBig5(std::u16string{0xD83D, u'x', 0xDE00}), "x") << "lone surrogates";
  EXPECT_EQ(ToBig5(u"\u00AD"), "") << "a soft hyphen is not seen and must not become one that is";
  EXPECT_EQ(ToBig5(u""), "");
}

TEST_F(CharsetTest, LeadByteInTheLastPositionTakesTheByteBehindTheEnd) {
  const std::array<std::uint8_t, 5> bytes{'x', 0xA4, 0xA4, 'y', 0xA4};
  EXPECT_EQ(FromBig5(bytes, 0, 2), u"x中");
  EXPECT_EQ(FromBig5(bytes, 0, 4), u"x中y");
  EXPECT_EQ(FromBig5(bytes, 0, 5), std::u16string({u'x', u'中', u'y', 0})) << "nothing is behind the end";
  EXPECT_EQ(FromBig5(bytes, 2, 4), u"巾") << "pairs are counted from the start";
  EXPECT_EQ(FromBig5(bytes, 4, 1000), std::u16string(1, 0));
  EXPECT_EQ(FromBig5(bytes, 3, 3), u"");
  EXPECT_EQ(FromBig5(bytes, 4, 2), u"");
  EXPECT_EQ(FromBig5(bytes, 9, 12), u"");
  EXPECT_EQ(FromBig5({}, 0, 1), u"");
}

class CharsetFilesTest : public testing::Test {
 protected:
  // What is missing must be emptied, not left from an earlier load.
  void SetUp() override { ASSERT_TRUE(LoadCharsetTables(kDataFolder).Complete()); }
  // Other tests of the program need whole ones.
  void TearDown() override { LoadCharsetTables(kDataFolder); }

  void Write(const std::string& name, const std::string& bytes) {
    std::ofstream(folder_.Path() / name, std::ios::binary) << bytes;
  }

  ScratchFolder folder_;
};

TEST_F(CharsetFilesTest, MissingFilesLeaveTheTablesEmpty) {
  const CharsetLoad load = LoadCharsetTables(folder_.Path());
  EXPECT_EQ(load.big5Bytes, 0u);
  EXPECT_EQ(load.unicodeBytes, 0u);
  EXPECT_FALSE(load.Complete());
  const auto isZero = [](auto entry) { return entry == 0; };
  EXPECT_TRUE(std::all_of(std::begin(Charset().big5ToUnicode), std::end(Charset().big5ToUnicode), isZero));
  EXPECT_TRUE(std::all_of(std::begin(Charset().unicodeToBig5), std::end(Charset().unicodeToBig5), isZero));
  EXPECT_EQ(FromBig5("ab\xA4\xA4"), std::u16string({u'a', u'b', 0}));
  EXPECT_EQ(ToBig5(u"ab"), "ab");
}

TEST_F(CharsetFilesTest, ShortFilesFillTheEntriesTheyHold) {
  Write("b2u2.bin", std::string(2 * 0xA4A4, '\x11') + "\x2D\x4E");
  Write("u2b2.bin", std::string(2 * 0x4E00, '\0') + "\xA4\x40\xA4");
  const CharsetLoad load = LoadCharsetTables(folder_.Path());
  EXPECT_EQ(load.big5Bytes, 2u * 0xA4A4 + 2);
  EXPECT_EQ(load.unicodeBytes, 2u * 0x4E00 + 3);
  EXPECT_FALSE(load.Complete());
  EXPECT_EQ(FromBig5("\xA4\xA4"), u"中");
  EXPECT_EQ(ToBig5(u"一"), "\xA4\x40");
  EXPECT_EQ(Charset().big5ToUnicode[0xA4A5], 0);
  EXPECT_EQ(Charset().unicodeToBig5[0x4E02], 0) << "nothing of one file gets into the other table";
}

TEST_F(CharsetFilesTest, LongFilesAreReadToTheirTablesSizeOnly) {
  Write("b2u2.bin", std::string(kCharsetFileSize, '\x11') + std::string(100, '\x22'));
  Write("u2b2.bin", std::string(kCharsetFileSize, '\x33'));
  EXPECT_TRUE(LoadCharsetTables(folder_.Path()).Complete());
  EXPECT_EQ(Charset().big5ToUnicode[0xFFFF], 0x1111);
  EXPECT_EQ(Charset().unicodeToBig5[0], 0x3333);
}

}  // namespace
}  // namespace quillet
