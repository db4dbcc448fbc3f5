#include "app/key_dispatch.h"

#include "core/charset.h"
#include "core/wrap_text.h"

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

void KeyDispatch::SendText(std::u16string_view text) {
  if (!doc_.IsConnected()) return;
  doc_.OnUserActed();
  doc_.Session().SendText(text);
}

void KeyDispatch::SendPaste(std::u16string_view text, LongLines longLines) {
  if (longLines == LongLines::kKept || text.empty()) {
    SendText(text);
    return;
  }
  if (!doc_.IsConnected()) return;
  doc_.OnUserActed();
  std::string lines = WrapBig5(ToBig5(text));
  if (text.back() != u'\r' && !lines.empty()) lines.pop_back();
  doc_.Session().SendBytes(lines);
}

}  // namespace quillet
