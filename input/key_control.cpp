#include "input/key_control.h"

#include <algorithm>
#include <array>
#include <optional>

#include "bbs/page_flags.h"
#include "bbs/page_tests.h"
#include "core/key_sequence.h"

namespace quillet {
namespace {

constexpr int kQuestionRow = 22;
constexpr std::u16string_view kLogOutConfirmed = u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] y";

enum class Modifier { kNone, kShift, kControl, kControlShift };

struct CommandKey {
  int virtualKey;
  Modifier modifier;
  KeyCommand command;
};

// Ctrl+C stays with the BBS (its editor resets colours with it), so copying needs Shift. Ctrl+V pastes,
// because that is what everybody's hands do; the BBS's own Ctrl+V, a rare editor command, is in the menu
// instead.
constexpr std::array kCommandKeys = {
    CommandKey{kKeyInsert, Modifier::kShift, KeyCommand::kPaste},
    CommandKey{'V', Modifier::kControl, KeyCommand::kPaste},
    CommandKey{'V', Modifier::kControlShift, KeyCommand::kPaste},
    CommandKey{kKeyInsert, Modifier::kControl, KeyCommand::kCopyScreen},
    CommandKey{'C', Modifier::kControlShift, KeyCommand::kCopyScreen},
    CommandKey{'N', Modifier::kControlShift, KeyCommand::kConnect},
    CommandKey{kKeyF11, Modifier::kNone, KeyCommand::kFullScreen},
};

struct ControlKey {
  int virtualKey;
  bool shift;
  char code;
};

// The control characters that are not made with a letter; where the keyboard has them as on a US layout.
constexpr std::array kControlKeys = {
    ControlKey{kKeyOpenBracket, false, '\x1B'},  ControlKey{kKeyBackslash, false, '\x1C'},
    ControlKey{kKeyCloseBracket, false, '\x1D'}, ControlKey{'6', true, '\x1E'},
    ControlKey{kKeyMinus, true, '\x1F'},
};

Modifier ModifierOf(const KeyPress& press) {
  if (press.control) return press.shift ? Modifier::kControlShift : Modifier::kControl;
  return press.shift ? Modifier::kShift : Modifier::kNone;
}

KeyCommand CommandOf(const KeyPress& press) {
  const auto* const found =
      std::find_if(kCommandKeys.begin(), kCommandKeys.end(), [&](const CommandKey& key) {
        return key.virtualKey == press.virtualKey && key.modifier == ModifierOf(press);
      });
  return found == kCommandKeys.end() ? KeyCommand::kNone : found->command;
}

std::optional<char> ControlCodeOf(const KeyPress& press) {
  if (press.virtualKey >= 'A' && press.virtualKey <= 'Z' && !press.shift)
    return static_cast<char>(press.virtualKey - 'A' + 1);
  const auto* const found = std::find_if(
      kControlKeys.begin(), kControlKeys.end(),
      [&](const ControlKey& key) { return key.virtualKey == press.virtualKey && key.shift == press.shift; });
  if (found == kControlKeys.end()) return std::nullopt;
  return found->code;
}

bool IsControlCharacter(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

std::u16string Printable(std::u16string_view text) {
  std::u16string result;
  std::copy_if(text.begin(), text.end(), std::back_inserter(result),
               [](char16_t unit) { return !IsControlCharacter(unit); });
  return result;
}

KeyAction SendBytes(std::string bytes) {
  return {.kind = KeyActionKind::kSendBytes, .bytes = std::move(bytes)};
}

KeyAction EnterOn(const ScreenSnapshot& screen) {
  KeyAction action = SendBytes("\r");
  if (RowStartsWith(screen, kQuestionRow, 0, kLogOutConfirmed)) action.kind = KeyActionKind::kSendThenClose;
  return action;
}

// The keys that mean the same byte with or without Ctrl and Shift.
std::optional<KeyAction> EditingKey(const KeyPress& press, const ScreenSnapshot& screen) {
  switch (press.virtualKey) {
    case kKeyEnter:
      return EnterOn(screen);
    case kKeyBackspace:
      return SendBytes("\b");
    case kKeyEscape:
      return SendBytes("\x1B");
    case kKeyTab:
      if (press.shift || press.control) return std::nullopt;
      return SendBytes("\t");
    default:
      return std::nullopt;
  }
}

// On pages with ids, Tab shows what the user noted about them; the BBS's own Tab is on the back quote there.
std::optional<KeyAction> TabOnPageWithIds(const KeyPress& press, const ScreenSnapshot& screen) {
  constexpr std::uint32_t kTypingPages = PF_INPUT_FIELD | PF_EDITOR | PF_PUSH_LINE | PF_PUSH_OVER_READER;
  if ((screen.pageFlags & PF_BROWSABLE) == 0 || (screen.pageFlags & kTypingPages) != 0) return std::nullopt;
  if (press.virtualKey == kKeyTab && !press.shift && !press.control)
    return KeyAction{.kind = KeyActionKind::kCommand, .command = KeyCommand::kReveal};
  if (press.text == u"`") return SendBytes("\t");
  return std::nullopt;
}

}  // namespace

KeyAction DecideKey(const KeyPress& press, const ScreenSnapshot& screen) {
  // Ctrl and Alt together are the AltGr of many layouts: what matters then is the character that it makes.
  const bool altGr = press.control && press.alt;
  if (!press.alt) {
    if (const KeyCommand command = CommandOf(press); command != KeyCommand::kNone)
      return {.kind = KeyActionKind::kCommand, .command = command};
    if (auto action = TabOnPageWithIds(press, screen)) return *std::move(action);
    if (const auto action = EditingKey(press, screen)) return *action;
    if (!KeySequence(press.virtualKey).empty())
      return {.kind = KeyActionKind::kSendKey, .virtualKey = press.virtualKey};
    if (press.control) {
      if (const auto code = ControlCodeOf(press)) return SendBytes(std::string(1, *code));
      return {};
    }
  } else if (!altGr) {
    return {};
  }
  std::u16string text = Printable(press.text);
  if (text.empty()) return {};
  return {.kind = KeyActionKind::kSendText, .text = std::move(text)};
}

std::u16string CleanPaste(std::u16string_view text) {
  constexpr char16_t kNextLine = 0x85;
  constexpr char16_t kLineSeparator = 0x2028;
  constexpr char16_t kParagraphSeparator = 0x2029;
  std::u16string result;
  result.reserve(text.size());
  char16_t previous = 0;
  for (const char16_t unit : text) {
    const bool secondHalf = unit == u'\n' && previous == u'\r';
    previous = unit;
    if (secondHalf) continue;
    if (unit == u'\r' || unit == u'\n' || unit == kNextLine || unit == kLineSeparator ||
        unit == kParagraphSeparator)
      result += u'\r';
    else if (unit == u'\t' || !IsControlCharacter(unit))
      result += unit;
  }
  return result;
}

}  // namespace quillet
