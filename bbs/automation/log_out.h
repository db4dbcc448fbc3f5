// Leaves the BBS as a user does who says goodbye: back to the main menu, its last item, and yes. A worker
// thread's; keeps nothing between calls.
#pragma once

#include "bbs/automation/screen_waits.h"

namespace quillet {

enum class LogOutResult {
  kSaidGoodbye,  // the BBS has been told; it may hang up at any moment, or already has
  kNoWay,        // the page is typed into, or the BBS has no such menu: the connection is as it was
  kEnded         // the connection ended on the way, or the run was cancelled
};

LogOutResult LogOut(ScreenWaits& waits);

}  // namespace quillet
