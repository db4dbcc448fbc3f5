#include "app/interaction/key_dispatch.h"

#include "input/sure_answer.h"

namespace quillet {

bool KeyDispatch::Perform(const KeyAction& action) {
  if (action.kind == KeyActionKind::kNone) return false;
  if (action.kind == KeyActionKind::kCommand)
    handlers_.command(action.command);
  else
    Take({.action = action});
  return true;
}

void KeyDispatch::SendBytes(std::string bytes) {
  Perform(KeyAction{.kind = KeyActionKind::kSendBytes, .bytes = std::move(bytes)});
}

void KeyDispatch::Perform(const MouseAction& action) {
  const ScreenSnapshot& screen = handlers_.screen();
  const bool moves = action.kind == MouseActionKind::kMoveCursor;
  SendBytes(moves ? CursorKeys({screen.cursorRow, screen.cursorCol}, {action.row, action.col})
                  : action.bytes);
}

void KeyDispatch::SendText(std::u16string_view text, Wrap wrap) {
  Take({.action = {.kind = KeyActionKind::kSendText, .text = std::u16string(text)}, .wrap = wrap});
}

void KeyDispatch::Take(Input input) {
  if (!doc_.IsConnected()) return;
  handlers_.userTypes();
  const LostCharacters lost = FindLostCharacters(input.action.text);
  if (!lost.IsNone()) handlers_.lost(lost);
  waiting_.push_back(std::move(input));
  Flush();
}

void KeyDispatch::Flush() {
  while (!waiting_.empty() && !handlers_.mustWait()) {
    const Input input = std::move(waiting_.front());
    waiting_.pop_front();
    Send(input);
  }
}

void KeyDispatch::Send(const Input& input) {
  if (!doc_.IsConnected()) return;
  if (!doc_.OnUserActed()) return;
  const KeyAction& action = input.action;
  const unsigned sent = doc_.Session().sentCount;
  const unsigned received = doc_.Session().receivedCount;
  switch (action.kind) {
    case KeyActionKind::kSendKey:
      doc_.Session().SendKey(action.virtualKey);
      break;
    case KeyActionKind::kSendText:
      doc_.Session().SendText(action.text, input.wrap);
      break;
    case KeyActionKind::kSendThenClose:
      doc_.Session().SendBytes(action.bytes);
      doc_.DisconnectAfterSending();
      break;
    default:
      doc_.Session().SendBytes(action.bytes);
      break;
  }
  // A text without a character that the BBS knows is nothing to answer.
  if (doc_.Session().sentCount != sent && IsSurelyAnswered(handlers_.screen(), action))
    doc_.Driver().NoteTyped(received);
}

}  // namespace quillet
