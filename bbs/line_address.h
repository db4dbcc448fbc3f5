// Where the BBS writes the address of a person outside the push lines: where an article was written,
// edited or forwarded, and where one's last visit came from. Pure; any thread.
#pragma once

#include "bbs/cell_range.h"
#include "core/screen_snapshot.h"

namespace quillet {

// The cells of the dotted IPv4 address on an origin line, a note of an edit or a forward, or the line of the
// last visit: the last one that stands there. Empty on any other line and where there is none.
CellRange LineAddress(const ScreenRow& text);

}  // namespace quillet
