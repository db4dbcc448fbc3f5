// Small operations on Big5 texts, where a character takes as many columns as bytes. Pure; any thread.
#pragma once

#include <string>
#include <string_view>

#include "core/ascii.h"

namespace quillet::demo {

// Whether a byte begins a two-byte character.
constexpr bool IsLead(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= 0x81 && value <= 0xFE;
}

// Length in bytes of the character at `at`: 1 or 2. A lead byte at the very end counts as 1.
std::size_t CharacterLength(std::string_view big5, std::size_t at);
// Start of the character before `at`; 0 when there is none.
std::size_t PreviousCharacter(std::string_view big5, std::size_t at);

// The longest beginning of at most `columns` columns that cuts no character.
std::string_view CutColumns(std::string_view big5, int columns);

// Cut or filled up with blanks to exactly `columns` columns.
std::string PadRight(std::string_view big5, int columns);
std::string PadLeft(std::string_view big5, int columns);

// ASCII letters of both texts are taken as equal in either case; Big5 pairs are compared as they are.
bool EqualsIgnoringCase(std::string_view a, std::string_view b);
bool ContainsIgnoringCase(std::string_view text, std::string_view part);
bool StartsWithIgnoringCase(std::string_view text, std::string_view start);

// A UTF-8 text as UTF-16. Malformed bytes become U+FFFD.
std::u16string Utf16FromUtf8(std::string_view utf8);
// A UTF-8 text as Big5. U+241B and U+240C stand for ESC and form feed; U+241F, numbers and "m" put a colour
// sequence between the two halves of the character behind them. Characters without a code vanish.
std::string Big5FromUtf8(std::string_view utf8);

}  // namespace quillet::demo
