#include "render/places/parse_ipv4.h"

#include <cstddef>

#include "core/ascii.h"

namespace quillet {
namespace {

constexpr std::size_t kGroups = 4;

template <typename Unit>
std::uint32_t Parse(std::basic_string_view<Unit> text) {
  std::uint32_t address = 0;
  std::size_t groups = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    std::uint32_t group = 0;
    for (; at < text.size() && IsAsciiDigit(text[at]); ++at)
      group = group * 10 + static_cast<std::uint32_t>(text[at] - Unit('0'));
    address = (address << 8) + group;
    ++groups;
    if (at == text.size() || text[at] != Unit('.')) break;
  }
  return groups == kGroups ? address : 0;
}

}  // namespace

std::uint32_t ParseIPv4(std::string_view text) {
  return Parse(text);
}

std::uint32_t ParseIPv4(std::u16string_view text) {
  return Parse(text);
}

}  // namespace quillet
