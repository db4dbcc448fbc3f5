// Enters a board: from the board's name at a prompt, or under the cursor, to its article list, past whatever
// the BBS shows before. Worker threads.
#pragma once

#include "bbs/automation/screen_waits.h"

namespace quillet {

enum class BoardName { kAtPrompt, kAlreadyEntered };

// From the board prompt, with the name typed, to the board's article list, drawn completely. False when the
// run ended, or when the BBS, asked again and again, stays on a menu or list of something else: it has no
// such board.
bool EnterBoardFromPrompt(ScreenWaits& waits, BoardName name);

}  // namespace quillet
