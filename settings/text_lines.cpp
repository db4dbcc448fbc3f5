#include "settings/text_lines.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quillet {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::u16string_view kBlanks = u" \t\r\n";
constexpr char16_t kReplacement = 0xFFFD;

bool IsLeadSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}

bool IsTrailSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}

std::uint32_t ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

// The character that begins at `at` with a byte over 0x7F; its length in bytes, 0 when it is malformed,
// overlong, a surrogate or out of range.
std::size_t DecodeLong(std::string_view bytes, std::size_t at, std::uint32_t& character) {
  struct Form {
    std::uint32_t lead, mask, least;
  };
  constexpr Form kForms[] = {{0xC0, 0xE0, 0x80}, {0xE0, 0xF0, 0x800}, {0xF0, 0xF8, 0x10000}};
  const std::uint32_t lead = ByteAt(bytes, at);
  std::size_t length = 2;
  for (const Form& form : kForms) {
    if ((lead & form.mask) == form.lead) {
      if (bytes.size() - at < length) return 0;
      character = lead & ~form.mask;
      for (std::size_t i = 1; i < length; ++i) {
        const std::uint32_t next = ByteAt(bytes, at + i);
        if ((next & 0xC0) != 0x80) return 0;
        character = character << 6 | (next & 0x3F);
      }
      const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
      return character < form.least || character > 0x10FFFF || isSurrogate ? 0 : length;
    }
    ++length;
  }
  return 0;
}

// False when the bytes are no text.
bool Decode(std::string_view bytes, std::u16string& text) {
  text.clear();
  for (std::size_t at = 0; at < bytes.size();) {
    const std::uint32_t first = ByteAt(bytes, at);
    if (first == 0) return false;
    if (first < 0x80) {
      text.push_back(static_cast<char16_t>(first));
      ++at;
      continue;
    }
    std::uint32_t character = 0;
    const std::size_t length = DecodeLong(bytes, at, character);
    if (length == 0) return false;
    if (character >= 0x10000) {
      text.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
      text.push_back(static_cast<char16_t>(0xDC00 + (character & 0x3FF)));
    } else {
      text.push_back(static_cast<char16_t>(character));
    }
    at += length;
  }
  return true;
}

// As much of the beginning as `most` units hold, without half a pair at the end.
std::u16string_view Beginning(std::u16string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  const bool cutsPair = EndsWithPair(text.substr(0, most + 1));
  return text.substr(0, cutsPair ? most - 1 : most);
}

void AddPieces(std::u16string_view line, std::vector<std::u16string>& lines) {
  while (!line.empty()) {
    const std::u16string_view piece = Beginning(line, kLongestLine);
    const std::u16string_view trimmed = Trimmed(piece);
    if (!trimmed.empty()) lines.emplace_back(trimmed);
    line.remove_prefix(piece.size());
  }
}

void AppendEncoded(std::uint32_t character, std::string& bytes) {
  const auto add = [&bytes](std::uint32_t byte) { bytes.push_back(static_cast<char>(byte)); };
  if (character < 0x80) {
    add(character);
  } else if (character < 0x800) {
    add(0xC0 | character >> 6);
    add(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    add(0xE0 | character >> 12);
    add(0x80 | (character >> 6 & 0x3F));
    add(0x80 | (character & 0x3F));
  } else {
    add(0xF0 | character >> 18);
    add(0x80 | (character >> 12 & 0x3F));
    add(0x80 | (character >> 6 & 0x3F));
    add(0x80 | (character & 0x3F));
  }
}

bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

}  // namespace

TextLines ReadLines(std::string_view bytes) {
  TextLines result;
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  std::u16string text;
  for (std::size_t number = 1; !bytes.empty(); ++number) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    if (Decode(bytes.substr(0, end), text))
      AddPieces(text, result.lines);
    else if (result.firstBadLine == 0)
      result.firstBadLine = number;
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return result;
}

std::string EncodeText(std::u16string_view text, std::string_view lineEnd) {
  std::string bytes;
  bytes.reserve(kByteOrderMark.size() + text.size() + text.size() / 2);
  bytes = kByteOrderMark;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (unit == u'\n' && (i == 0 || text[i - 1] != u'\r')) {
      bytes += lineEnd;
    } else if (IsLeadSurrogate(unit) && i + 1 < text.size() && IsTrailSurrogate(text[i + 1])) {
      ++i;
      AppendEncoded(0x10000U + ((unit & 0x3FFU) << 10) + (text[i] & 0x3FFU), bytes);
    } else {
      const bool isUnpaired = IsLeadSurrogate(unit) || IsTrailSurrogate(unit);
      AppendEncoded(isUnpaired ? kReplacement : unit, bytes);
    }
  }
  return bytes;
}

std::u16string_view Trimmed(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool EndsWithPair(std::u16string_view text) {
  return text.size() >= 2 && IsLeadSurrogate(text[text.size() - 2]) && IsTrailSurrogate(text.back());
}

int ToNumber(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  bool isNegative = false;
  if (!text.empty() && (text[0] == u'-' || text[0] == u'+')) {
    isNegative = text[0] == u'-';
    text.remove_prefix(1);
  }
  // One beyond the largest int is enough for the smallest.
  constexpr std::int64_t kMost = std::int64_t{std::numeric_limits<int>::max()} + 1;
  std::int64_t number = 0;
  for (const char16_t unit : text) {
    if (unit < u'0' || unit > u'9') break;
    number = std::min(number * 10 + (unit - u'0'), kMost);
  }
  if (isNegative) return static_cast<int>(-number);
  return static_cast<int>(std::min(number, kMost - 1));
}

std::u16string ToText(int number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

std::u16string OneLine(std::u16string_view text, std::size_t most) {
  std::u16string line(Beginning(text, most));
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (IsLeadSurrogate(line[i]) && i + 1 < line.size() && IsTrailSurrogate(line[i + 1]))
      ++i;
    else if (IsLeadSurrogate(line[i]) || IsTrailSurrogate(line[i]))
      line[i] = kReplacement;
    else if (IsControl(line[i]))
      line[i] = u' ';
  }
  return line;
}

}  // namespace quillet
