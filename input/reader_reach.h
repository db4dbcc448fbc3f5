// How far the BBS's reader can be scrolled before it leaves the article, as far as its status line tells.
// Pure; user-interface thread.
#pragma once

#include "bbs/understood_page.h"

namespace quillet {

// At least so many lines are above or below those on the page: never more than there are, 0 only at the
// article's top or end.
int LinesAbove(const UnderstoodPage& page);
int LinesBelow(const UnderstoodPage& page);

}  // namespace quillet
