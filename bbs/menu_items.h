// The lines of a menu, each known by its key in brackets. Pure; any thread.
#pragma once

#include <bitset>

#include "core/screen_snapshot.h"

namespace quillet {

// The columns at which a "(X)" begins, X a letter or a digit.
using MenuItems = std::bitset<kCols>;

MenuItems FindMenuItems(const ScreenRow& text);

}  // namespace quillet
