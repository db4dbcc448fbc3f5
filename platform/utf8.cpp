#include "platform/utf8.h"

#include <cstddef>

namespace quillet {
namespace {

constexpr char32_t kNoCharacter = 0xFFFFFFFF;
constexpr char32_t kReplacement = 0xFFFD;

bool IsSurrogate(char32_t value) {
  return value >= 0xD800 && value <= 0xDFFF;
}

// Takes one character off the front of `bytes`, which is not empty.
char32_t TakeCharacter(std::string_view& bytes) {
  const auto lead = static_cast<unsigned char>(bytes.front());
  if (lead < 0x80) {
    bytes.remove_prefix(1);
    return lead;
  }
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return kNoCharacter;
  char32_t value = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(bytes[i]);
    if ((next & 0xC0) != 0x80) return kNoCharacter;
    value = value << 6 | (next & 0x3FU);
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  if (value < kLeast[length] || value > 0x10FFFF || IsSurrogate(value)) return kNoCharacter;
  bytes.remove_prefix(length);
  return value;
}

void AppendUtf8(std::string& bytes, char32_t value) {
  const auto tail = [&](int shift) { return static_cast<char>(0x80 | (value >> shift & 0x3F)); };
  if (value < 0x80) {
    bytes += static_cast<char>(value);
  } else if (value < 0x800) {
    bytes += static_cast<char>(0xC0 | value >> 6);
    bytes += tail(0);
  } else if (value < 0x10000) {
    bytes += static_cast<char>(0xE0 | value >> 12);
    bytes += tail(6);
    bytes += tail(0);
  } else {
    bytes += static_cast<char>(0xF0 | value >> 18);
    bytes += tail(12);
    bytes += tail(6);
    bytes += tail(0);
  }
}

}  // namespace

std::optional<std::u16string> Utf16FromUtf8(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const char32_t value = TakeCharacter(bytes);
    if (value == kNoCharacter) return std::nullopt;
    if (value < 0x10000) {
      text += static_cast<char16_t>(value);
    } else {
      text += static_cast<char16_t>(0xD7C0 + (value >> 10));
      text += static_cast<char16_t>(0xDC00 + (value & 0x3FF));
    }
  }
  return text;
}

std::string Utf8FromUtf16(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t value = text[i];
    if (IsSurrogate(value)) {
      const char32_t next = i + 1 < text.size() ? text[i + 1] : 0;
      const bool pair = value < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF;
      value = pair ? 0x10000 + ((value - 0xD800) << 10 | (next - 0xDC00)) : kReplacement;
      if (pair) ++i;
    }
    AppendUtf8(bytes, value);
  }
  return bytes;
}

}  // namespace quillet
