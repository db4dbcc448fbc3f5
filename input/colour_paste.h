// Colour sequences in a text that is pasted: left out where they would be letters, or entered as one enters
// them by hand. Pure; any thread once the character tables are loaded.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

// Whether a sequence in it sets colours.
bool HoldsColours(std::u16string_view text);

// Without its control sequences, cut ones too. What else is no text stays for CleanPaste.
std::u16string WithoutSequences(std::u16string_view text);

// As the BBS's editor takes it: clean, with Ctrl+U in place of the ESC of each colour sequence, and without
// all other sequences. Lines are broken behind `columns` columns, in which sequences do not count; 0: not at
// all. Blanks that would come to stand behind there are left out, because a coloured ground may run to the
// edge.
std::u16string ColoursForEditor(std::u16string_view text, std::size_t columns);

}  // namespace quillet
