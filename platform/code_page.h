// Character sets of other times that this system reads by its code pages. Empty where the libraries that read
// pages have the system's own, as iconv.
#pragma once

#include <span>

namespace quillet {

struct CodePage {
  const char* name;  // as web pages call it
  // Makes UTF-8 of as much as there is room for; both sizes are what there is before, and what was used
  // after. Returns 0, or one of the negative below. Pure; any thread.
  int (*decode)(unsigned char* out, int* outSize, const unsigned char* in, int* inSize);
};

inline constexpr int kNoRoomForMore = -1, kNoSuchCharacter = -2, kHalfACharacter = -3;

// Any thread.
std::span<const CodePage> CodePages();

}  // namespace quillet
