#include "render/places/place_lines.h"

#include <algorithm>

#include "core/ascii.h"
#include "platform/utf8.h"

namespace quillet {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// How much of the line's beginning is one piece, in bytes.
std::size_t PieceLength(std::string_view line) {
  if (line.size() <= kLongestPlaceLine) return line.size();  // no character has more units than bytes
  std::size_t units = 0;
  for (std::size_t at = 0; at < line.size();) {
    const auto lead = static_cast<unsigned char>(line[at]);
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    units += length == 4 ? 2 : 1;
    if (units > kLongestPlaceLine) return at;
    at += length;
  }
  return line.size();
}

bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

}  // namespace

PlaceLines::PlaceLines(std::string_view bytes) : rest_(bytes) {
  if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
}

std::optional<std::string_view> PlaceLines::Next() {
  while (!line_.empty() || !rest_.empty()) {
    if (line_.empty()) {
      line_ = rest_.substr(0, rest_.find('\n'));
      rest_.remove_prefix(std::min(line_.size() + 1, rest_.size()));
      ++number_;
    }
    const std::size_t length = PieceLength(line_);
    const std::string_view piece = Trimmed(line_.substr(0, length));
    line_.remove_prefix(length);
    if (!piece.empty()) return piece;
  }
  return std::nullopt;
}

std::string_view TakeToken(std::string_view& line, std::string_view separators) {
  line.remove_prefix(std::min(line.find_first_not_of(separators), line.size()));
  const std::string_view token = line.substr(0, line.find_first_of(separators));
  line.remove_prefix(token.size());
  return token;
}

std::optional<std::u16string> ShownName(std::string_view bytes) {
  std::optional<std::u16string> name = Utf16FromUtf8(bytes);
  if (name) std::erase_if(*name, IsControl);
  return name;
}

}  // namespace quillet
