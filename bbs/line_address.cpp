#include "bbs/line_address.h"

#include <string_view>

#include "bbs/screen_fields.h"
#include "core/ascii.h"
#include "core/endpoints.h"

namespace quillet {
namespace {

constexpr std::string_view kTitleMark = "\xA1\x6D";  // "《"

bool NamesPerson(const ScreenRow& text, NoteLine note) {
  if (note == NoteLine::kOrigin || note == NoteLine::kEdit || note == NoteLine::kForwarder) return true;
  return BytesOf(text).starts_with(kTitleMark) && IsLastLoginLine(FieldText(text, {0, kCols}, Trim::kNo));
}

// No second byte of a character is one of these.
constexpr bool IsOfAddress(char byte) {
  return IsAsciiDigit(byte) || byte == '.';
}

}  // namespace

CellRange LineAddress(const ScreenRow& text, NoteLine note) {
  if (!NamesPerson(text, note)) return {};
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
