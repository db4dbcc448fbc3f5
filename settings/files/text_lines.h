// The lines of the program's own text files: UTF-8 with or without a byte-order mark, read in pieces of at
// most 511 UTF-16 units and trimmed. Pure; hostile input is expected.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/ascii.h"

namespace quillet {

// What a reader with a buffer of 512 takes at a time; a longer line goes on as a line of its own.
inline constexpr std::size_t kLongestLine = 511;

struct TextLines {
  std::vector<std::u16string> lines;  // trimmed; empty ones are left out
  // The first line that is no UTF-8 text or holds a control character (tabs and CRs are none here), counted
  // from 1; 0 when there is none. Such lines are left out where they are no text or hold a NUL; of others the
  // control characters are, which writing would turn into something else.
  std::size_t firstBadLine = 0;
};

// Lines end with LF; a CR before it is trimmed. A pair of surrogates is never cut in two.
TextLines ReadLines(std::string_view bytes);

// With a byte-order mark, and `lineEnd` in place of each LF that no CR precedes. Unpaired surrogates become
// U+FFFD.
std::string EncodeText(std::u16string_view text, std::string_view lineEnd);

// Whether the last two units are the halves of one character.
bool EndsWithPair(std::u16string_view text);

// Decimal with an optional sign after blanks, up to the first other character; 0 when there is no digit.
// Saturates.
int ToNumber(std::u16string_view text);
std::u16string ToText(int number);

// With every character that would end or begin a line of a file (CR, LF, NUL and other control characters)
// turned into a blank, and cut to `most` units without splitting a pair.
std::u16string OneLine(std::u16string_view text, std::size_t most = kLongestLine);

}  // namespace quillet
