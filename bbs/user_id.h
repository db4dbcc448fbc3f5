// How long the ids of the BBS's users are, in characters. Constants; any thread.
#pragma once

#include <cstddef>

namespace quillet {

inline constexpr std::size_t kShortestUserId = 2;
inline constexpr std::size_t kLongestUserId = 12;

}  // namespace quillet
