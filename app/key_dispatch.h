// Carries out what the key control decided: bytes to the session, commands to whoever handles them.
// User-interface thread.
#pragma once

#include <functional>
#include <utility>

#include "app/quill_doc.h"
#include "input/key_control.h"

namespace quillet {

class KeyDispatch {
 public:
  using CommandHandler = std::function<void(KeyCommand)>;
  KeyDispatch(CQuillDoc& doc, CommandHandler onCommand) : doc_(doc), onCommand_(std::move(onCommand)) {}

  // Returns false for kNone only; input without a connection is taken and dropped.
  bool Perform(const KeyAction& action);
  // Typed, composed or pasted text.
  void SendText(std::u16string_view text, Wrap wrap = Wrap::kNone);

 private:
  CQuillDoc& doc_;
  CommandHandler onCommand_;
};

}  // namespace quillet
