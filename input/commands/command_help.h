// The help page: every command with its keys, made from the command table, and what keys and mouse do on the
// BBS's pages. Pure; user-interface thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "input/commands/commands.h"

namespace quillet {

struct HelpLine {
  std::u16string name;
  std::u16string keys;   // all that give it, as "Ctrl+Shift+C、Ctrl+Ins"; empty: it stands in a menu only
  std::u16string alone;  // a key that gives it where an article is read; empty: none

  bool operator==(const HelpLine&) const = default;
};
struct HelpGroup {
  std::u16string title;  // of the menu that the commands stand in, or of the pages that the keys belong to
  std::vector<HelpLine> lines;

  bool operator==(const HelpGroup&) const = default;
};

// The groups in the order of the menu bar, then what stands elsewhere, then the pages.
std::vector<HelpGroup> MakeHelp(const CommandState& state, const CommandWords& words);

// The lines that have every word of `wanted` in themselves or in their group's title, whatever its case;
// groups without any are left out. All of them for an empty text.
std::vector<HelpGroup> FilterHelp(const std::vector<HelpGroup>& groups, std::u16string_view wanted);

}  // namespace quillet
