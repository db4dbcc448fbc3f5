#include "core/charset.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

namespace quillet {
namespace {

CharsetTables tables{};

// Pairs that ToBig5 never makes, each with what it reads as; sorted.
std::vector<std::pair<char16_t, std::uint16_t>> otherPairs;

void FindOtherPairs() {
  otherPairs.clear();
  for (std::size_t pair = 0; pair < std::size(tables.big5ToUnicode); ++pair) {
    const char16_t unit = tables.big5ToUnicode[pair];
    const bool isLead = (pair & 0xFF) >= 0x80;
    if (isLead && unit != 0 && tables.unicodeToBig5[unit] != pair)
      otherPairs.emplace_back(unit, static_cast<std::uint16_t>(pair));
  }
  std::sort(otherPairs.begin(), otherPairs.end());
}

// Returns the number of bytes read; the rest of `bytes` is zero.
std::size_t ReadTableFile(const std::filesystem::path& file, std::vector<char>& bytes) {
  bytes.assign(kCharsetFileSize, 0);
  std::ifstream in(file, std::ios::binary);
  if (!in) return 0;
  in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return static_cast<std::size_t>(in.gcount());
}

template <typename Entry>
void DecodeTable(const std::vector<char>& bytes, Entry (&table)[65536]) {
  for (std::size_t i = 0; i < std::size(table); ++i) {
    const auto low = static_cast<unsigned char>(bytes[2 * i]);
    const auto high = static_cast<unsigned char>(bytes[2 * i + 1]);
    table[i] = static_cast<Entry>(low | high << 8);
  }
}

}  // namespace

const CharsetTables& Charset() {
  return tables;
}

bool CharsetLoad::Complete() const {
  return big5Bytes == kCharsetFileSize && unicodeBytes == kCharsetFileSize;
}

CharsetLoad LoadCharsetTables(const std::filesystem::path& folder) {
  std::vector<char> bytes;
  CharsetLoad load;
  load.big5Bytes = ReadTableFile(folder / "b2u2.bin", bytes);
  DecodeTable(bytes, tables.big5ToUnicode);
  load.unicodeBytes = ReadTableFile(folder / "u2b2.bin", bytes);
  DecodeTable(bytes, tables.unicodeToBig5);
  FindOtherPairs();
  return load;
}

std::vector<std::uint16_t> PairsOf(char16_t unit) {
  std::vector<std::uint16_t> pairs;
  const std::uint16_t own = tables.unicodeToBig5[unit];
  if (unit != 0 && tables.big5ToUnicode[own] == unit) pairs.push_back(own);
  auto other = std::lower_bound(otherPairs.begin(), otherPairs.end(), std::pair(unit, std::uint16_t{0}));
  for (; other != otherPairs.end() && other->first == unit; ++other)
    pairs.push_back(other->second);
  return pairs;
}

bool IsForeignBlank(char16_t unit) {
  constexpr char16_t kNoBreak = 0xA0;
  constexpr char16_t kNarrowNoBreak = 0x202F;
  constexpr char16_t kMathematical = 0x205F;
  return unit == kNoBreak || (unit >= 0x2000 && unit <= 0x200A) || unit == kNarrowNoBreak ||
         unit == kMathematical;
}

std::string ToBig5(std::u16string_view text) {
  std::string bytes(2 * text.size(), '\0');
  char* out = bytes.data();
  for (const char16_t unit : text) {
    if (unit < 0x80) {
      *out++ = static_cast<char>(unit);
      continue;
    }
    const std::uint16_t pair = tables.unicodeToBig5[unit];
    if (pair == kNoBig5) continue;
    *out++ = static_cast<char>(pair & 0xFF);
    *out++ = static_cast<char>(pair >> 8);
  }
  bytes.resize(static_cast<std::size_t>(out - bytes.data()));
  return bytes;
}

std::u16string FromBig5(std::span<const std::uint8_t> bytes, std::size_t start, std::size_t end) {
  end = std::min(end, bytes.size());
  if (start >= end) return {};
  const auto& table = tables.big5ToUnicode;
  std::u16string text(end - start, u'\0');
  char16_t* out = text.data();
  const std::uint8_t* in = bytes.data() + start;
  const std::uint8_t* const last = &bytes.back();
  const std::uint8_t* const stop = std::min(bytes.data() + end, last);
  while (in < stop) {
    if (*in < 0x80) {
      *out++ = *in++;
    } else {
      *out++ = table[in[0] | in[1] << 8];
      in += 2;
    }
  }
  // Nothing is behind the very last byte: a lead there counts as one with the trail 0.
  if (in == last && end == bytes.size()) *out++ = *in < 0x80 ? *in : table[*in];
  text.resize(static_cast<std::size_t>(out - text.data()));
  return text;
}

std::u16string FromBig5(std::string_view bytes) {
  const auto* first = reinterpret_cast<const std::uint8_t*>(bytes.data());
  return FromBig5({first, bytes.size()}, 0, bytes.size());
}

}  // namespace quillet
