// Letters and digits of ASCII among UTF-16 units. Pure.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

constexpr bool IsDigitUnit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

constexpr bool IsUpperUnit(char16_t c) {
  return c >= u'A' && c <= u'Z';
}

constexpr char16_t LowerUnit(char16_t c) {
  return IsUpperUnit(c) ? static_cast<char16_t>(c + 0x20) : c;
}

inline std::u16string LoweredUnits(std::u16string_view text) {
  std::u16string lower(text);
  for (char16_t& c : lower)
    c = LowerUnit(c);
  return lower;
}

}  // namespace quillet
