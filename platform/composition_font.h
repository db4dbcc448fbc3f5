// The letters in which the system's input method shows what is being composed, where it shows that itself.
// User-interface thread.
#pragma once

#include <cstdint>
#include <string>

namespace quillet {

// `window` is the system's handle of the window that has the keyboard; `face` may be empty for the system's
// choice; `height` is an em in pixels. False where no input method takes it: the system has none that does,
// or there is no such window.
bool SetCompositionFont(std::uintptr_t window, const std::u16string& face, int height);

}  // namespace quillet
