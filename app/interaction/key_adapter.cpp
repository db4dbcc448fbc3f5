#include "app/interaction/key_adapter.h"

#include <algorithm>
#include <array>

#include "core/key_sequence.h"

namespace quillet {
namespace {

struct KeyRow {
  int qtKey;
  int virtualKey;
};

// Letters and digits are not listed: their numbers are the same on both sides. With Shift held the toolkit
// reports the shifted sign of a key, hence two rows for some.
constexpr std::array kKeys = {
    KeyRow{Qt::Key_PageUp, kKeyPageUp},
    KeyRow{Qt::Key_PageDown, kKeyPageDown},
    KeyRow{Qt::Key_End, kKeyEnd},
    KeyRow{Qt::Key_Home, kKeyHome},
    KeyRow{Qt::Key_Left, kKeyLeft},
    KeyRow{Qt::Key_Up, kKeyUp},
    KeyRow{Qt::Key_Right, kKeyRight},
    KeyRow{Qt::Key_Down, kKeyDown},
    KeyRow{Qt::Key_Insert, kKeyInsert},
    KeyRow{Qt::Key_Delete, kKeyDelete},
    KeyRow{Qt::Key_Backspace, kKeyBackspace},
    KeyRow{Qt::Key_Tab, kKeyTab},
    KeyRow{Qt::Key_Backtab, kKeyTab},
    KeyRow{Qt::Key_Return, kKeyEnter},
    KeyRow{Qt::Key_Enter, kKeyEnter},
    KeyRow{Qt::Key_Escape, kKeyEscape},
    KeyRow{Qt::Key_F1, kKeyF1},
    KeyRow{Qt::Key_F3, kKeyF3},
    KeyRow{Qt::Key_F6, kKeyF6},
    KeyRow{Qt::Key_F11, kKeyF11},
    KeyRow{Qt::Key_AsciiCircum, '6'},
    KeyRow{Qt::Key_Plus, kKeyPlus},
    KeyRow{Qt::Key_Equal, kKeyPlus},
    KeyRow{Qt::Key_Minus, kKeyMinus},
    KeyRow{Qt::Key_Underscore, kKeyMinus},
    KeyRow{Qt::Key_BracketLeft, kKeyOpenBracket},
    KeyRow{Qt::Key_Backslash, kKeyBackslash},
    KeyRow{Qt::Key_BracketRight, kKeyCloseBracket},
};

int VirtualKeyOf(int qtKey) {
  const bool letter = qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z;
  const bool digit = qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9;
  if (letter || digit) return qtKey;
  const auto* const row = std::find_if(kKeys.begin(), kKeys.end(),
                                       [&](const KeyRow& candidate) { return candidate.qtKey == qtKey; });
  return row == kKeys.end() ? 0 : row->virtualKey;
}

}  // namespace

KeyPress ToKeyPress(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers();
  return {.virtualKey = VirtualKeyOf(event.key()),
          .control = modifiers.testFlag(Qt::ControlModifier),
          .shift = modifiers.testFlag(Qt::ShiftModifier),
          .alt = modifiers.testFlag(Qt::AltModifier) || modifiers.testFlag(Qt::MetaModifier),
          .keypad = modifiers.testFlag(Qt::KeypadModifier),
          .text = event.text().toStdU16String()};
}

}  // namespace quillet
