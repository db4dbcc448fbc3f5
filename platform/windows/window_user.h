// Whose a window is. Windows sources only; any thread.
#pragma once

#include <windows.h>

namespace quillet {

// Two users may have windows on one desktop, where a program was started as somebody else. A window whose
// program may not be asked is another's, or of one with rights that a message of ours would not reach either.
bool IsOfThisUser(HWND window);

}  // namespace quillet
