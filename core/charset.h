// Big5 and UTF-16: the only two conversions between the BBS's bytes and the client's texts. The two tables
// are read once at start-up, before any other thread exists, and are shared without a lock afterwards.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

// What a character without a Big5 form has in the table; such characters vanish from Big5 output.
inline constexpr std::uint16_t kNoBig5 = 0xFDFF;

// Both tables are indexed by a 16-bit value. A Big5 pair is packed as lead + 256 * trail.
struct CharsetTables {
  char16_t big5ToUnicode[65536];
  std::uint16_t unicodeToBig5[65536];
};

// The tables in use; all zero until LoadCharsetTables.
const CharsetTables& Charset();

struct CharsetLoad {
  // Bytes read of each file; kCharsetFileSize when it is whole, 0 when it is missing.
  std::size_t big5Bytes = 0;
  std::size_t unicodeBytes = 0;
  bool Complete() const;
};

// 65536 entries, least significant byte first.
inline constexpr std::size_t kCharsetFileSize = 131072;

// Reads "b2u2.bin" and "u2b2.bin" from `folder`. A missing or short file leaves the missing entries 0; the
// result says how much was read. User-interface thread, before any session exists.
CharsetLoad LoadCharsetTables(const std::filesystem::path& folder);

// All pairs that read as this character, in no order: some have several, many none.
std::vector<std::uint16_t> PairsOf(char16_t unit);

// A space, of whatever width and power to break a line, that has no Big5 form of its own: what is sent in its
// place is an ordinary blank, so that words do not run together.
bool IsForeignBlank(char16_t unit);

// One or two bytes per unit; a unit without a Big5 form is dropped.
std::string ToBig5(std::u16string_view text);

// Appends nothing for `start >= end`. A lead byte in the last position takes the byte behind `end` when
// `bytes` has one, and 0 otherwise. An unmapped pair comes out as the unit 0.
std::u16string FromBig5(std::span<const std::uint8_t> bytes, std::size_t start, std::size_t end);
std::u16string FromBig5(std::string_view bytes);

}  // namespace quillet
