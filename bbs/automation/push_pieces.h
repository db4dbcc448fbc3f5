// A longer text in pieces that fit the BBS's push line. Pure; any thread once the character tables are
// loaded.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

struct PushPiece {
  std::u16string text;    // only characters that the BBS can show; never empty, no blank at its end
  int columns = 0;        // that it takes
  std::size_t taken = 0;  // units of the given text that are done with it, its line break and blanks included
};

// The first piece of a text, at most `columns` wide. It ends at a line break of the text or where the line is
// full: at a punctuation mark in its last third, else between words, not within a word or address that fits
// one line. No piece begins with a mark that closes something, but where the text leaves no choice.
// Tabs become blanks, lines of nothing but blanks are passed over, characters without a Big5 form left out.
// Nothing when there is nothing to push, or `columns` are fewer than the two that any character fits.
std::optional<PushPiece> CutPushPiece(std::u16string_view text, int columns);

// All pieces of the text, at most `most`.
std::vector<PushPiece> CutIntoPushes(std::u16string_view text, int columns,
                                     std::size_t most = static_cast<std::size_t>(-1));
// How many there are.
int CountPushes(std::u16string_view text, int columns);

// The characters that pieces leave out because the BBS cannot show them: each once, in the order of the text.
std::u16string UnpushableIn(std::u16string_view text);

// Columns that a push of a user with an id so long usually has; only the BBS's own prompt says it surely.
int LikelyPushColumns(std::size_t idLength);

}  // namespace quillet
