// The bytes that the BBS expects for the keys that have no character. Pure; any thread.
#pragma once

#include <string_view>

namespace quillet {

// Windows virtual-key codes, used on every platform as the client's own key numbers.
inline constexpr int kKeyPageUp = 33;
inline constexpr int kKeyPageDown = 34;
inline constexpr int kKeyEnd = 35;
inline constexpr int kKeyHome = 36;
inline constexpr int kKeyLeft = 37;
inline constexpr int kKeyUp = 38;
inline constexpr int kKeyRight = 39;
inline constexpr int kKeyDown = 40;
inline constexpr int kKeyInsert = 45;
inline constexpr int kKeyDelete = 46;

// The sequence of a virtual-key code; empty for every other code.
std::string_view KeySequence(int virtualKey);

}  // namespace quillet
