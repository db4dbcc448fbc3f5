// What one run of the program hands to another: its command line, as bytes. Pure; any thread; whatever comes
// in is expected, since any program of the user's can send it.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

// Room for the marker and the longest web address, in UTF-16 units with the zero at the end.
inline constexpr std::size_t kMostMessageUnits = 4096;

// UTF-16 in the machine's byte order, with a zero at its end. Empty for a text that is too long, holds a zero
// or is no UTF-16.
std::vector<std::byte> MessageOf(std::u16string_view text);
// Nothing for what MessageOf does not make.
std::optional<std::u16string> TextOfMessage(std::span<const std::byte> message);

}  // namespace quillet
