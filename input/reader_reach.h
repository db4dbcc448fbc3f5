// How far the BBS's reader can be scrolled before it leaves the article, as far as its bottom row tells.
// Pure; user-interface thread.
#pragma once

#include "core/screen_snapshot.h"

namespace quillet {

// At least so many lines are above or below those on the page: never more than there are, 0 only at the
// article's top or end.
int LinesAbove(const ScreenSnapshot& screen);
int LinesBelow(const ScreenSnapshot& screen);

}  // namespace quillet
