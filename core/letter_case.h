// Lower case of the alphabets that Big5 holds: Latin in both widths, Greek and Cyrillic. Pure.
#pragma once

namespace quillet {

constexpr char16_t LowerOfBig5(char16_t c) {
  constexpr char16_t kStep = 0x20;
  const bool upper = (c >= u'A' && c <= u'Z') || (c >= u'Ａ' && c <= u'Ｚ') || (c >= u'Α' && c <= u'Ω') ||
                     (c >= u'А' && c <= u'Я');
  if (c == u'Ё') return u'ё';
  return upper ? static_cast<char16_t>(c + kStep) : c;
}

}  // namespace quillet
