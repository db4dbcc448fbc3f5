// Letters, digits, letter case and blanks of ASCII, for bytes and UTF-16 units alike and whatever the
// system's language is. Pure.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

template <typename Unit>
constexpr bool IsAsciiDigit(Unit unit) {
  return unit >= Unit('0') && unit <= Unit('9');
}

template <typename Unit>
constexpr Unit AsciiLower(Unit unit) {
  return unit >= Unit('A') && unit <= Unit('Z') ? static_cast<Unit>(unit + ('a' - 'A')) : unit;
}

template <typename Unit>
constexpr bool IsAsciiLetter(Unit unit) {
  return AsciiLower(unit) >= Unit('a') && AsciiLower(unit) <= Unit('z');
}

template <typename Unit>
constexpr bool IsAsciiLetterOrDigit(Unit unit) {
  return IsAsciiLetter(unit) || IsAsciiDigit(unit);
}

inline std::string AsciiLowered(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    c = AsciiLower(c);
  return lower;
}

inline constexpr std::string_view kAsciiBlanks = " \t\r\n";
inline constexpr std::u16string_view kWideAsciiBlanks = u" \t\r\n";

// Without the blanks, tabs, CRs and LFs at both ends.
constexpr std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kAsciiBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kAsciiBlanks) - first + 1);
}

constexpr std::u16string_view Trimmed(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(kWideAsciiBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kWideAsciiBlanks) - first + 1);
}

}  // namespace quillet
