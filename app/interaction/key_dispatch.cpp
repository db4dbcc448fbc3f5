#include "app/interaction/key_dispatch.h"

#include "input/sure_answer.h"

namespace quillet {

bool KeyDispatch::Perform(const KeyAction& action) {
  if (action.kind == KeyActionKind::kNone) return false;
  if (action.kind == KeyActionKind::kCommand)
    handlers_.command(action.command);
  else
    SendOrKeep({.action = action});
  return true;
}

void KeyDispatch::SendBytes(std::string bytes) {
  Perform(KeyAction{.kind = KeyActionKind::kSendBytes, .bytes = std::move(bytes)});
}

void KeyDispatch::Perform(const MouseAction& action) {
  if (action.kind == MouseActionKind::kMoveCursor)
    Perform(KeyAction{.kind = KeyActionKind::kMoveCursor, .row = action.row, .col = action.col});
  else
    SendBytes(action.bytes);
}

void KeyDispatch::SendText(std::u16string_view text, Wrap wrap) {
  SendOrKeep({.action = {.kind = KeyActionKind::kSendText, .text = std::u16string(text)}, .wrap = wrap});
}

void KeyDispatch::SendOrKeep(Input input) {
  if (!connection_.IsConnected()) return handlers_.noSite();
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

bool KeyDispatch::TakeOver() {
  const Activity stopped = automations_.Current();
  automations_.Stop();
  connection_.NoteNews(false);
  return stopped != Activity::kPush && stopped != Activity::kGiveMoney;
}

void KeyDispatch::Send(const Input& input) {
  if (!connection_.IsConnected() || !TakeOver()) return;
  TermSession& session = connection_.Session();
  const KeyAction& action = input.action;
  const unsigned sent = session.sentCount;
  const unsigned received = session.receivedCount;
  switch (action.kind) {
    case KeyActionKind::kSendKey:
      session.SendKey(action.virtualKey);
      break;
    case KeyActionKind::kSendText:
      session.SendText(action.text, input.wrap);
      break;
    case KeyActionKind::kMoveCursor: {
      const ScreenSnapshot& screen = handlers_.screen();
      session.MoveCursorTo(action.row, action.col, CellPosition{screen.cursorRow, screen.cursorCol});
      break;
    }
    case KeyActionKind::kSendThenClose:
      session.SendBytes(action.bytes);
      connection_.DisconnectAfterSending();
      break;
    default:
      session.SendBytes(action.bytes);
      break;
  }
  // A text without a character that the BBS knows is nothing to answer.
  if (session.sentCount != sent && IsSurelyAnswered(handlers_.screen(), handlers_.page(), action))
    driver_.NoteTyped(received);
}

}  // namespace quillet
