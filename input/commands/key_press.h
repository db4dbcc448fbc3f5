// Keys as this room sees them: a press, and a key with its modifiers as a shortcut names it. Plain values.
#pragma once

#include <string>

namespace quillet {

// Windows virtual-key codes of the keys that this room decides about; those with a sequence of their own are
// in core/key_sequence.h. Letters are 'A' to 'Z', the digits '0' to '9'.
inline constexpr int kKeyBackspace = 8;
inline constexpr int kKeyTab = 9;
inline constexpr int kKeyEnter = 13;
inline constexpr int kKeyEscape = 27;
inline constexpr int kKeyF1 = 112;
inline constexpr int kKeyF3 = 114;
inline constexpr int kKeyF4 = 115;
inline constexpr int kKeyF6 = 117;
inline constexpr int kKeyF11 = 122;
inline constexpr int kKeyPlus = 187;
inline constexpr int kKeyMinus = 189;
inline constexpr int kKeyOpenBracket = 219;
inline constexpr int kKeyBackslash = 220;
inline constexpr int kKeyCloseBracket = 221;

struct KeyPress {
  int virtualKey = 0;  // Windows virtual-key code, 0 when the key has none of interest
  bool control = false;
  bool shift = false;
  bool alt = false;
  bool keypad = false;
  std::u16string text{};  // what the keyboard layout makes of it, already composed
};

enum class Modifier { kNone, kShift, kControl, kControlShift, kAlt, kControlAlt, kOther };

constexpr Modifier ModifierOf(const KeyPress& press) {
  if (press.alt && press.shift) return Modifier::kOther;
  if (press.alt) return press.control ? Modifier::kControlAlt : Modifier::kAlt;
  if (press.control) return press.shift ? Modifier::kControlShift : Modifier::kControl;
  return press.shift ? Modifier::kShift : Modifier::kNone;
}

struct KeyChord {
  int virtualKey = 0;  // 0: no key
  Modifier modifier = Modifier::kNone;

  constexpr bool IsPressedBy(const KeyPress& press) const {
    return virtualKey != 0 && virtualKey == press.virtualKey && modifier == ModifierOf(press);
  }
  bool operator==(const KeyChord&) const = default;
};

}  // namespace quillet
