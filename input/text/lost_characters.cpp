#include "input/text/lost_characters.h"

#include <algorithm>

#include "core/charset.h"

namespace quillet {
namespace {

constexpr bool IsBetween(char32_t code, char32_t first, char32_t last) {
  return code >= first && code <= last;
}

// Joiners, marks of direction, variation selectors, tones of skin.
constexpr bool IsUnseen(char32_t code) {
  return IsBetween(code, 0x200B, 0x200F) || IsBetween(code, 0x202A, 0x202E) ||
         IsBetween(code, 0x2060, 0x206F) || IsBetween(code, 0xFE00, 0xFE0F) || code == 0xFEFF ||
         code == 0x00AD || IsBetween(code, 0x1F3FB, 0x1F3FF) || IsBetween(code, 0xE0000, 0xE01EF);
}

bool IsKnown(char16_t unit) {
  const std::uint16_t pair = Charset().unicodeToBig5[unit];
  return unit < 0x80 || (pair != kNoBig5 && pair != 0);
}

bool IsPair(std::u16string_view text) {
  return text.size() > 1 && IsBetween(text[0], 0xD800, 0xDBFF) && IsBetween(text[1], 0xDC00, 0xDFFF);
}

char32_t CodeOf(std::u16string_view character) {
  if (character.size() < 2) return character.front();
  return 0x10000 + ((char32_t{character[0]} - 0xD800) << 10) + (char32_t{character[1]} - 0xDC00);
}

}  // namespace

LostCharacters FindLostCharacters(std::u16string_view text) {
  LostCharacters lost;
  while (!text.empty()) {
    const std::u16string_view character = text.substr(0, IsPair(text) ? 2 : 1);
    text.remove_prefix(character.size());
    if (IsKnown(character.front()) || IsUnseen(CodeOf(character))) continue;
    ++lost.count;
    if (std::find(lost.some.begin(), lost.some.end(), character) != lost.some.end()) continue;
    if (lost.some.size() < kMostLostNamed)
      lost.some.emplace_back(character);
    else
      lost.areAll = false;
  }
  return lost;
}

}  // namespace quillet
