// What a key means where nothing else claims it: a command of the client's own or bytes for the BBS; and what
// becomes of a pasted text. Pure. DecideKeyMessage, which decides what else claims a key, asks it; the view
// carries the action out. User-interface thread.
#pragma once

#include <string>
#include <string_view>

#include "bbs/understood_page.h"
#include "input/commands/commands.h"
#include "input/commands/key_press.h"

namespace quillet {

enum class KeyActionKind {
  kNone,           // not ours: let the toolkit have it
  kSendKey,        // TermSession::SendKey(virtualKey)
  kSendBytes,      // bytes as they are
  kSendText,       // text through SendText
  kMoveCursor,     // TermSession::MoveCursorTo(row, col)
  kSendThenClose,  // send the bytes, then close the connection: the user confirmed the log-out
  kCommand
};

struct KeyAction {
  KeyActionKind kind = KeyActionKind::kNone;
  int virtualKey = 0;
  std::string bytes{};
  std::u16string text{};
  int row = 0;
  int col = 0;
  Command command = Command::kNone;

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
