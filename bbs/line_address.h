// Where the BBS writes the address of a person outside the push lines: where an article was written,
// edited or forwarded, and where one's last visit came from. Read once for each row of a page. Pure; any
// thread.
#pragma once

#include "bbs/cell_range.h"
#include "bbs/end_lines.h"
#include "core/screen_snapshot.h"

namespace quillet {

// The cells of the dotted IPv4 address on an origin line, a note of an edit or a forward, or the line of the
// last visit: the last one that stands there. Empty on any other line and where there is none. `note`: what
// the line is in an article; kNone elsewhere.
CellRange LineAddress(const ScreenRow& text, NoteLine note);

}  // namespace quillet
