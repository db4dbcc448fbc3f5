// The help page: which key gives which command, made from the command table. Pure; user-interface thread.
#pragma once

#include <string>
#include <vector>

#include "input/commands/commands.h"

namespace quillet {

struct HelpLine {
  std::u16string name;
  std::u16string keys;   // all that give it, as "Ctrl+Shift+C、Ctrl+Ins"
  std::u16string alone;  // a key that gives it where an article is read; empty: none
};
struct HelpGroup {
  std::u16string title;  // of the menu that the commands stand in
  std::vector<HelpLine> lines;
};

// The groups in the order of the menu bar, last the buttons beside the page; commands without a key are left
// out.
std::vector<HelpGroup> MakeHelp(const CommandState& state, const CommandWords& words);

}  // namespace quillet
