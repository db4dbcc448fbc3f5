// Whether what is typed on a page can be a text, or is only ever taken as commands. An input method belongs
// to the former alone: on the latter it would compose what is meant as a command. Pure; user-interface
// thread.
#pragma once

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"

namespace quillet {

// Of a screen and what stands on it: the editor, the push line and other fields, and a page that nothing is
// known of. Not the questions that a letter or a digit answers.
bool AcceptsText(const ScreenSnapshot& screen, const UnderstoodPage& page);

}  // namespace quillet
