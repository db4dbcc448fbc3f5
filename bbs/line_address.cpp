#include "bbs/line_address.h"

#include <string_view>

#include "bbs/end_lines.h"
#include "core/ascii.h"
#include "core/endpoints.h"

namespace quillet {
namespace {

constexpr std::string_view kLastVisit = "\xA1\x6D\xA4\x57\xA6\xB8\xA4\x57\xAF\xB8\xA1\x6E";  // "《上次上站》"

bool NamesPerson(const ScreenRow& text) {
  if (BytesOf(text).starts_with(kLastVisit)) return true;
  const NoteLine note = ReadNoteLine(text);
  return note == NoteLine::kOrigin || note == NoteLine::kEdit || note == NoteLine::kForwarder;
}

// No second byte of a character is one of these.
constexpr bool IsOfAddress(char byte) {
  return IsAsciiDigit(byte) || byte == '.';
}

}  // namespace

CellRange LineAddress(const ScreenRow& text) {
  if (!NamesPerson(text)) return {};
  const std::string_view bytes = BytesOf(text);
  for (std::size_t last = bytes.size(); last > 0; --last) {
    if (!IsOfAddress(bytes[last - 1])) continue;
    std::size_t first = last;
    while (first > 0 && IsOfAddress(bytes[first - 1]))
      --first;
    if (ParseDottedAddress(bytes.substr(first, last - first)) != 0)
      return {static_cast<int>(first), static_cast<int>(last)};
    last = first + 1;
  }
  return {};
}

}  // namespace quillet
