// The 48 colours of a palette and the three palettes. Pure.
#pragma once

#include <array>
#include <cstdint>

#include "settings/display_settings.h"

namespace quillet {

// 0xRRGGBB: 0-15 foregrounds, 16-23 backgrounds, 24-47 the client's own decorations.
using Palette = std::array<std::uint32_t, 48>;

enum class PaletteKind { kNormal, kDark, kDisguise };
const Palette& PaletteOf(PaletteKind kind);
// The one that the user's settings ask for.
PaletteKind PaletteKindFor(const DisplaySettings& settings);

// The colour index of an attribute's foreground (0-15, bold adds 8) and background (16-23).
constexpr int ForegroundIndex(std::uint8_t attr) {
  return attr & 0x0F;
}
constexpr int BackgroundIndex(std::uint8_t attr) {
  return 16 + (attr >> 5);
}

}  // namespace quillet
