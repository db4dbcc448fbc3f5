// Desktop entries, as far as opening links goes: the command in one, the programs that a cache of theirs
// names for links, and the entry of this program. By the desktop entry specification, version 1.5. Pure; any
// thread; the files are other programs'.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillet {

// The program and its arguments, for an entry's file and a link; no shell ever reads them. Empty for an entry
// that is hidden, runs in a terminal, has no command that takes links, or cannot be read.
std::vector<std::string> CommandForLink(std::string_view entry, const std::string& link);

// The names of the entries in a "mimeinfo.cache" that open this type of thing, the first one first.
std::vector<std::string> EntriesFor(std::string_view type, std::string_view cache);

// The entry that makes the program in this file selectable for http and https links.
std::string LinkHandlerEntry(const std::string& program);
// The entry's command is such a one, of whatever file of this program.
bool IsLinkHandlerOfOurs(std::string_view entry);

}  // namespace quillet
