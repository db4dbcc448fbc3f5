#include "platform/instance_message.h"

#include <cstring>

namespace quillet {
namespace {

constexpr bool IsBetween(char16_t unit, char16_t first, char16_t last) {
  return unit >= first && unit <= last;
}

// Without zeros and lone surrogates.
bool IsText(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == 0 || IsBetween(text[i], 0xDC00, 0xDFFF)) return false;
    if (!IsBetween(text[i], 0xD800, 0xDBFF)) continue;
    if (++i == text.size() || !IsBetween(text[i], 0xDC00, 0xDFFF)) return false;
  }
  return true;
}

}  // namespace

std::vector<std::byte> MessageOf(std::u16string_view text) {
  if (text.size() >= kMostMessageUnits || !IsText(text)) return {};
  std::vector<std::byte> message((text.size() + 1) * sizeof(char16_t));
  if (!text.empty()) std::memcpy(message.data(), text.data(), text.size() * sizeof(char16_t));
  return message;
}

std::optional<std::u16string> TextOfMessage(std::span<const std::byte> message) {
  const std::size_t units = message.size() / sizeof(char16_t);
  if (units == 0 || units > kMostMessageUnits || message.size() % sizeof(char16_t) != 0) return std::nullopt;
  std::u16string text(units, u'\0');
  std::memcpy(text.data(), message.data(), message.size());
  if (text.back() != 0) return std::nullopt;
  text.pop_back();
  return IsText(text) ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace quillet
