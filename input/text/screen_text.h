// The screen as plain text, for the clipboard. Pure; any thread once the character tables are loaded.
#pragma once

#include <string>

#include "core/screen_snapshot.h"

namespace quillet {

// One row's characters without the blanks at its end. Codes without a character are left out.
std::u16string RowAsText(const ScreenSnapshot& screen, int row);

// All rows, each ended by LF, without the empty rows at the bottom.
std::u16string ScreenAsText(const ScreenSnapshot& screen);

}  // namespace quillet
