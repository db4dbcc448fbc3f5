#include "input/key_control.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/charset.h"
#include "core/key_sequence.h"

namespace quillet {
namespace {

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

char16_t AsSent(char16_t unit) {
  return IsForeignBlank(unit) ? u' ' : unit;
}

std::u16string Printable(std::u16string_view text) {
  std::u16string result;
  for (const char16_t unit : text)
    if (!IsControlCharacter(unit)) result += AsSent(unit);
  return result;
}

KeyAction SendBytes(std::string bytes) {
  return {.kind = KeyActionKind::kSendBytes, .bytes = std::move(bytes)};
}

KeyAction EnterOn(const UnderstoodPage& page) {
  KeyAction action = SendBytes("\r");
  if (page.question == PageQuestion::kLogOutConfirmed) action.kind = KeyActionKind::kSendThenClose;
  return action;
}

// The keys that mean the same byte with or without Ctrl and Shift.
std::optional<KeyAction> EditingKey(const KeyPress& press, const UnderstoodPage& page) {
  switch (press.virtualKey) {
    case kKeyEnter:
      return EnterOn(page);
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

}  // namespace

KeyAction DecideKey(const KeyPress& press, const UnderstoodPage& page) {
  if (const Command command = CommandForKey(press); command != Command::kNone)
    return {.kind = KeyActionKind::kCommand, .command = command};
  // Ctrl and Alt together are the AltGr of many layouts: what matters then is the character that it makes.
  if (press.alt && !press.control) return {};
  if (!press.alt) {
    if (const auto action = EditingKey(press, page)) return *action;
    if (!KeySequence(press.virtualKey).empty())
      return {.kind = KeyActionKind::kSendKey, .virtualKey = press.virtualKey};
    if (press.control) {
      if (const auto code = ControlCodeOf(press)) return SendBytes(std::string(1, *code));
      return {};
    }
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
      result += AsSent(unit);
  }
  return result;
}

int PastedLines(std::u16string_view clean) {
  const bool open = !clean.empty() && clean.back() != u'\r';
  return static_cast<int>(std::count(clean.begin(), clean.end(), u'\r')) + (open ? 1 : 0);
}

}  // namespace quillet
