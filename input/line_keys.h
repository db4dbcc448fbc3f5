// The keys that bring the BBS's cursor to a line of a list or an item of a menu and open it, as a click on it
// asks for. Pure; user-interface thread.
#pragma once

#include <string>

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"

namespace quillet {

// Of a screen, and what stands on it. Empty when the row holds no entry of the list: heads, blank rows, the
// bottom row.
std::string KeysToOpenLine(const ScreenSnapshot& screen, const UnderstoodPage& page, int row);
// The same; empty when the row holds no "(X)" that could be an item.
std::string KeysToOpenItem(const ScreenSnapshot& screen, const UnderstoodPage& page, int row);

}  // namespace quillet
