#include "demo/big5_text.h"

#include <algorithm>
#include <cstdint>

#include "core/charset.h"

namespace quillet::demo {
namespace {

constexpr char16_t kEscapeSign = u'\u241B';
constexpr char16_t kHalfSign = u'\u241F';
constexpr char16_t kFormFeedSign = u'\u240C';
constexpr char16_t kReplacement = u'\uFFFD';

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The second byte of a pair may look like a letter, so folding walks by characters.
std::string Folded(std::string_view text) {
  std::string folded;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = CharacterLength(text, at);
    if (length == 1)
      folded += Lower(text[at]);
    else
      folded += text.substr(at, length);
    at += length;
  }
  return folded;
}

// Decodes one character; advances `at` by at least one byte.
char32_t DecodeUtf8(std::string_view text, std::size_t& at) {
  const auto first = static_cast<std::uint8_t>(text[at++]);
  if (first < 0x80) return first;
  const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC2 ? 1 : -1;
  if (more < 0 || first > 0xF4) return kReplacement;
  char32_t value = static_cast<char32_t>(first & (0x3F >> more));
  for (int i = 0; i < more; ++i) {
    if (at >= text.size() || (static_cast<std::uint8_t>(text[at]) & 0xC0) != 0x80) return kReplacement;
    value = value << 6 | (static_cast<std::uint8_t>(text[at++]) & 0x3F);
  }
  return value;
}

}  // namespace

std::size_t CharacterLength(std::string_view big5, std::size_t at) {
  return at + 1 < big5.size() && IsLead(big5[at]) ? 2 : 1;
}

std::size_t PreviousCharacter(std::string_view big5, std::size_t at) {
  std::size_t start = 0;
  for (std::size_t next = 0; next < at && next < big5.size(); next += CharacterLength(big5, next))
    start = next;
  return start;
}

std::string_view CutColumns(std::string_view big5, int columns) {
  const auto limit = static_cast<std::size_t>(std::max(columns, 0));
  std::size_t end = 0;
  while (end < big5.size() && end + CharacterLength(big5, end) <= limit)
    end += CharacterLength(big5, end);
  return big5.substr(0, end);
}

std::string PadRight(std::string_view big5, int columns) {
  std::string text(CutColumns(big5, columns));
  text.resize(static_cast<std::size_t>(std::max(columns, 0)), ' ');
  return text;
}

std::string PadLeft(std::string_view big5, int columns) {
  const std::string_view text = CutColumns(big5, columns);
  return std::string(static_cast<std::size_t>(std::max(columns, 0)) - text.size(), ' ') + std::string(text);
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && Folded(a) == Folded(b);
}

bool ContainsIgnoringCase(std::string_view text, std::string_view part) {
  const std::string haystack = Folded(text);
  const std::string needle = Folded(part);
  for (std::size_t at = 0; at < haystack.size(); at += CharacterLength(haystack, at))
    if (haystack.compare(at, needle.size(), needle) == 0) return true;
  return needle.empty();
}

bool StartsWithIgnoringCase(std::string_view text, std::string_view start) {
  return text.size() >= start.size() && EqualsIgnoringCase(text.substr(0, start.size()), start);
}

std::u16string Utf16FromUtf8(std::string_view utf8) {
  std::u16string text;
  for (std::size_t at = 0; at < utf8.size();) {
    const char32_t c = DecodeUtf8(utf8, at);
    if (c < 0x10000) {
      text += static_cast<char16_t>(c);
    } else {
      text += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
      text += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
  }
  return text;
}

std::string Big5FromUtf8(std::string_view utf8) {
  std::u16string text = Utf16FromUtf8(utf8);
  std::replace(text.begin(), text.end(), kEscapeSign, u'\x1b');
  std::replace(text.begin(), text.end(), kFormFeedSign, u'\f');
  std::string big5;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t end = text[at] == kHalfSign ? text.find(u'm', at) : std::u16string::npos;
    if (end == std::u16string::npos || end + 1 >= text.size()) {
      big5 += ToBig5(text.substr(at, 1));
      continue;
    }
    const std::string pair = ToBig5(text.substr(end + 1, 1));
    const std::string sequence = "\x1b[" + ToBig5(text.substr(at + 1, end - at));
    big5 += pair.size() == 2 ? pair.substr(0, 1) + sequence + pair.substr(1) : pair;
    at = end + 1;
  }
  return big5;
}

}  // namespace quillet::demo
