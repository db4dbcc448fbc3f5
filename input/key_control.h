// What a key means where nothing else claims it: a command of the client's own or bytes for the BBS; and what
// becomes of a pasted text. Pure. DecideKeyMessage, which decides what else claims a key, asks it; the view
// carries the action out. User-interface thread.
#pragma once

#include <string>
#include <string_view>

#include "bbs/understood_page.h"

namespace quillet {

// Windows virtual-key codes of the keys that this room decides about; those with a sequence of their own are
// in core/key_sequence.h. Letters are 'A' to 'Z', the digits '0' to '9'.
inline constexpr int kKeyBackspace = 8;
inline constexpr int kKeyTab = 9;
inline constexpr int kKeyEnter = 13;
inline constexpr int kKeyEscape = 27;
inline constexpr int kKeyF3 = 114;
inline constexpr int kKeyF11 = 122;
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

enum class KeyActionKind {
  kNone,           // not ours: let the toolkit have it
  kSendKey,        // TermSession::SendKey(virtualKey)
  kSendBytes,      // bytes as they are
  kSendText,       // text through SendText
  kMoveCursor,     // TermSession::MoveCursorTo(row, col)
  kSendThenClose,  // send the bytes, then close the connection: the user confirmed the log-out
  kCommand
};

enum class KeyCommand {
  kNone,
  kPaste,
  kCopy,  // the selection, else the screen
  kConnect,
  kFullScreen,
  kReveal,
  kWorkMode,
  kBookmark,  // these five: of the article that is open
  kPush,
  kPushOn,
  kGiveMoney,
  kTogglePlaces  // shows or hides the places of push addresses
};

struct KeyAction {
  KeyActionKind kind = KeyActionKind::kNone;
  int virtualKey = 0;
  std::string bytes{};
  std::u16string text{};
  int row = 0;
  int col = 0;
  KeyCommand command = KeyCommand::kNone;

  bool operator==(const KeyAction&) const = default;
};

// What a press of `press` means on a screen where `page` stands.
KeyAction DecideKey(const KeyPress& press, const UnderstoodPage& page);

// What may be pasted: CR LF, LF and the Unicode line ends become the BBS's Enter (CR), other control
// characters except TAB go, and blanks that the BBS does not have become its own.
std::u16string CleanPaste(std::u16string_view text);
// How many lines a paste of a text that CleanPaste made sends: each Enter ends one, and what follows the last
// Enter is one more. 0 for nothing.
int PastedLines(std::u16string_view clean);

}  // namespace quillet
