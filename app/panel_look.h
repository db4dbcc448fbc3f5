// The look of what lies over the terminal: the status panel, the login form, the badge of an automation.
// Quieter than the BBS's own colours; every text keeps 4.5:1 on the panel. User-interface thread.
#pragma once

#include <algorithm>

#include <QColor>

namespace quillet::panel_look {

inline constexpr QColor kScrim(0, 0, 0, 150);
inline constexpr QColor kCalmScrim(0, 0, 0, 60);
inline constexpr QColor kFill(0x1B, 0x1F, 0x26);
inline constexpr QColor kBorder(0x3C, 0x44, 0x50);
inline constexpr QColor kTitle(0xF2, 0xF4, 0xF7);
inline constexpr QColor kLine(0xC6, 0xCD, 0xD8);
inline constexpr QColor kHint(0x9D, 0xA8, 0xB8);

inline constexpr QColor kCalm(0x7F, 0x8C, 0x9F);
inline constexpr QColor kBusy(0x5A, 0xB0, 0xD6);
inline constexpr QColor kEnded(0xD9, 0xA4, 0x41);
inline constexpr QColor kProblem(0xE0, 0x7A, 0x6A);

// Letters' size over text rows of the height `unit`.
inline double TextSize(double unit) {
  return std::clamp(unit * 0.56, 13.0, 40.0);
}

}  // namespace quillet::panel_look
