// The keys that bring the BBS's cursor to a line of a list or an item of a menu and open it, as a click on it
// asks for. Pure; user-interface thread.
#pragma once

#include <string>

#include "core/screen_snapshot.h"

namespace quillet {

// Empty when the row holds no entry of the list: heads, blank rows, the bottom row.
std::string KeysToOpenLine(const ScreenSnapshot& screen, int row);
// Empty when the row holds no "(X)" that could be an item.
std::string KeysToOpenItem(const ScreenSnapshot& screen, int row);

}  // namespace quillet
