// Cuts Big5 text into lines before it is sent to the BBS's editor, which does not wrap. Pure; any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

// The BBS's own line length for texts that people write.
inline constexpr std::size_t kWrapColumns = 78;

// What follows the last piece of a text.
enum class LastPiece { kEnded, kLeftOpen };

// A CR follows each piece of at most `columns` columns, the last one too unless it is left open; a two-byte
// character counts two and is never cut. A line break in the text ends a piece itself. Empty text stays
// empty.
std::string WrapBig5(std::string_view bytes, std::size_t columns = kWrapColumns,
                     LastPiece last = LastPiece::kEnded);

}  // namespace quillet
