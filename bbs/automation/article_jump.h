// Goes to an article by its code: enters its board, types the code, and knows whether the BBS found it. A
// worker thread's.
#pragma once

#include <string>
#include <string_view>

#include "bbs/automation/screen_waits.h"

namespace quillet {

enum class JumpResult {
  kFound,     // the list's cursor stands on the article
  kNotFound,  // the BBS knows no such code on this board, whose list is showing, or it is no code at all
  kNoBoard,   // the BBS knows no such board, or it is no name at all; a menu or list is showing
  kBusy,      // the user is typing at a prompt or in the editor, or no way leads to the board prompt
  kClosed,    // the run ended
};

// From any page from which keys lead out to a menu or list: an article and a pause are left, a prompt and an
// editor are left alone. `board` and `code` may come from anywhere: what cannot be a name or a code is not
// typed.
JumpResult JumpToArticle(ScreenWaits& waits, std::u16string_view board, std::u16string_view code);

}  // namespace quillet
