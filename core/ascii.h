// Letters, digits and letter case of ASCII, for bytes and UTF-16 units alike and whatever the system's
// language is. Pure.
#pragma once

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

}  // namespace quillet
