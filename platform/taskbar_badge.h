// A small picture over the window's button in the task bar, where the system has such. User-interface thread.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace quillet {

// `window` is the system's handle of a window that has a button there. `pixels` are side by side of
// 0xAARRGGBB, from the top; none of them take the picture away. `meaning` is read out to those who cannot see
// it. False where nothing is shown.
bool SetTaskbarBadge(std::uintptr_t window, std::span<const std::uint32_t> pixels, int side,
                     const std::u16string& meaning);

}  // namespace quillet
