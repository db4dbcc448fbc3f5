// Whose article the user is at: the id that "add to list" proposes. Pure; any thread once the character
// tables are loaded.
#pragma once

#include <string>

#include "core/screen_snapshot.h"

namespace quillet {

// The author on the article list's cursor line, or of the article whose top is showing. Empty on any other
// page and where the author is no id (a deleted article's "-").
std::u16string AuthorAtCursor(const ScreenSnapshot& screen);

}  // namespace quillet
