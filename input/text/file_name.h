// Names for files that are made of a text of the BBS's, such as an article's title: fit for the file systems
// of every system that the program runs on. Pure; any thread.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

// Without the characters that some system refuses, without blanks and dots at its ends, none of the names
// that stand for devices, and at most 60 units long, which leaves room for an ending within every system's
// limit. `otherwise` where nothing is left.
std::u16string FileNameOf(std::u16string_view text, std::u16string_view otherwise);

}  // namespace quillet
