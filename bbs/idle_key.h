// The key that shows the BBS that its user is still there, and does nothing else. Pure; any thread.
#pragma once

#include <string_view>

#include "bbs/understood_page.h"

namespace quillet {

// The bytes of a key that the BBS answers by drawing the page anew: on menus, lists and in its reader. Empty
// on every other page, where a key is taken for something: while a text, an answer or a password is being
// typed, while something is played or waits for a key, under an instant message, and where nothing is known.
std::string_view IdleKey(const UnderstoodPage& page);

}  // namespace quillet
