#include "settings/files/text_lines.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "platform/utf8.h"

namespace quillet {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char16_t kReplacement = 0xFFFD;

bool IsLeadSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}

bool IsTrailSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
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

bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

// Takes out what is no text. Returns whether there was any.
bool DropControls(std::u16string& line) {
  return std::erase_if(line, [](char16_t unit) {
           return IsControl(unit) && kWideAsciiBlanks.find(unit) == std::u16string_view::npos;
         }) > 0;
}

}  // namespace

TextLines ReadLines(std::string_view bytes) {
  TextLines result;
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  for (std::size_t number = 1; !bytes.empty(); ++number) {
    const std::string_view line = bytes.substr(0, bytes.find('\n'));
    const bool holdsNul = line.find('\0') != std::string_view::npos;
    auto text = holdsNul ? std::nullopt : Utf16FromUtf8(line);
    const bool isBad = !text || DropControls(*text);
    if (isBad && result.firstBadLine == 0) result.firstBadLine = number;
    if (text) AddPieces(*text, result.lines);
    bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
  }
  return result;
}

std::string EncodeText(std::u16string_view text, std::string_view lineEnd) {
  const std::string encoded = Utf8FromUtf16(text);
  std::string bytes;
  bytes.reserve(kByteOrderMark.size() + encoded.size());
  bytes = kByteOrderMark;
  for (std::size_t i = 0; i < encoded.size(); ++i) {
    const bool endsLine = encoded[i] == '\n' && (i == 0 || encoded[i - 1] != '\r');
    bytes += endsLine ? lineEnd : std::string_view(encoded).substr(i, 1);
  }
  return bytes;
}

bool EndsWithPair(std::u16string_view text) {
  return text.size() >= 2 && IsLeadSurrogate(text[text.size() - 2]) && IsTrailSurrogate(text.back());
}

int ToNumber(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kWideAsciiBlanks), text.size()));
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
