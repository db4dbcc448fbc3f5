#include "app/key_dispatch.h"

namespace quillet {

bool KeyDispatch::Perform(const KeyAction& action) {
  if (action.kind == KeyActionKind::kNone) return false;
  if (action.kind == KeyActionKind::kCommand) {
    onCommand_(action.command);
    return true;
  }
  if (!doc_.IsConnected()) return true;
  doc_.OnUserActed();
  switch (action.kind) {
    case KeyActionKind::kSendKey:
      doc_.Session().SendKey(action.virtualKey);
      break;
    case KeyActionKind::kSendText:
      doc_.Session().SendText(action.text);
      break;
    case KeyActionKind::kSendThenClose:
      doc_.Session().SendBytes(action.bytes);
      doc_.DisconnectAfterSending();
      break;
    default:
      doc_.Session().SendBytes(action.bytes);
      break;
  }
  return true;
}

void KeyDispatch::SendText(std::u16string_view text, Wrap wrap) {
  if (!doc_.IsConnected()) return;
  doc_.OnUserActed();
  doc_.Session().SendText(text, wrap);
}

}  // namespace quillet
