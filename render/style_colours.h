// The palette's indices that lines are styled in. Pure.
#pragma once

#include <cstdint>

namespace quillet {

inline constexpr std::uint8_t kPlainFore = 7;
inline constexpr std::uint8_t kPlainGround = 16;
inline constexpr std::uint8_t kPushTextFore = 3;      // the BBS's own for the words of a push line
inline constexpr std::uint8_t kPushGround = 24;       // under push lines
inline constexpr std::uint8_t kMyId = 26;             // the user's own id
inline constexpr std::uint8_t kKeywordColour = 28;    // a word that the user wants to be told of
inline constexpr std::uint8_t kPlaceMark = 31;        // what a place is marked with
inline constexpr std::uint8_t kLighterPushText = 44;  // instead of kPushTextFore
// Of an article that has been read. No colour of the tables: that of kReadTitleTint, or as much lighter as it
// takes to be read on its ground.
inline constexpr std::uint8_t kReadTitle = 47;
inline constexpr std::uint8_t kReadTitleTint = 8;
// What the client writes of its own accord: quieter than the BBS's text.
inline constexpr std::uint8_t kQuietText = kReadTitle;

// Grounds on which the client's own colours can be read: black, the push lines' and the header's blue.
constexpr bool IsDarkGround(std::uint8_t back) {
  constexpr std::uint8_t kBlue = 20;
  return back == kPlainGround || back == kPushGround || back == kBlue;
}

}  // namespace quillet
