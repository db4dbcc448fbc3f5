// Whether a BBS answers a key in any case, so that silence after it tells something of the connection: a
// cursor key at an end or a letter that is no command it leaves without a word. Asked for each key of the
// user's when it is sent. Pure; user-interface thread.
#pragma once

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"
#include "input/key_control.h"

namespace quillet {

// Of a screen, what stands on it, and a key that was sent to it.
bool IsSurelyAnswered(const ScreenSnapshot& screen, const UnderstoodPage& page, const KeyAction& action);

}  // namespace quillet
