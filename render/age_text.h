// How long ago something was, in words. Pure.
#pragma once

#include <cstdint>
#include <string>

namespace quillet {

// "3天前" and the like for `postTime` as seen from `now`, both in seconds since 1970; the empty text for 0,
// unknown. A time in the future gives negative minutes.
std::u16string AgeText(std::int64_t postTime, std::int64_t now);

}  // namespace quillet
