// The words of titles that the user's tracking rules ask for: "board=X && title=W" gives W. Lines with such a
// word are marked on the screen. Pure.
#pragma once

#include <string>
#include <vector>

namespace quillet {

// `rules` are the lines of the section "Track"; conditions with "!=", and those on board and author, give
// none.
std::vector<std::u16string> WordsOfTrackRules(const std::vector<std::u16string>& rules);

}  // namespace quillet
