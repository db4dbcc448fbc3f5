// A dotted address as the BBS and the data files write it. Pure; any thread.
#pragma once

#include <cstdint>
#include <string_view>

namespace quillet {

// The address at the very beginning of `text`, first group most significant; 0 when there is none. Groups of
// digits are read up to the first character that is neither a digit nor a dot, and there must be four; what
// comes behind them is of no matter, but a dot there begins a fifth group unless it ends the text. An empty
// group is 0. One above 255 spills into the group before it, out of the number from the first.
std::uint32_t ParseIPv4(std::string_view text);
std::uint32_t ParseIPv4(std::u16string_view text);

}  // namespace quillet
