// Which key together with Alt reaches each control of a dialog: a letter of the name that the program knows
// it by, as its words are Chinese and have none. Pure; the dialogs call it.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace quillet {

// For each name an upper-case letter or a digit that is neither taken nor another's, 0 when none is left.
// Names come by their first capital before any gets its second one, then by their other letters; who is left
// without gets what is free.
std::vector<char16_t> ChooseMnemonics(const std::vector<std::u16string>& names, std::set<char16_t> taken);

}  // namespace quillet
