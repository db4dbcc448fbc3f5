#include "core/wrap_text.h"

namespace quillet {
namespace {

constexpr char kCarriageReturn = 13;

bool IsLineBreak(char byte) {
  return byte == kCarriageReturn || byte == 10;
}

bool IsLead(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= 0x81 && value <= 0xFE;
}

}  // namespace

std::string WrapBig5(std::string_view bytes, std::size_t columns, LastPiece last) {
  std::string wrapped;
  wrapped.reserve(bytes.size() + bytes.size() / columns + 1);
  std::size_t used = 0;
  for (std::size_t i = 0; i < bytes.size();) {
    if (IsLineBreak(bytes[i])) {
      wrapped += bytes[i++];
      used = 0;
      continue;
    }
    const std::size_t width = IsLead(bytes[i]) && i + 1 < bytes.size() ? 2 : 1;
    if (used + width > columns) {
      wrapped += kCarriageReturn;
      used = 0;
    }
    wrapped.append(bytes, i, width);
    used += width;
    i += width;
  }
  if (used > 0 && last == LastPiece::kEnded) wrapped += kCarriageReturn;
  return wrapped;
}

}  // namespace quillet
