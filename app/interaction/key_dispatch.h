// Carries out what the key control decided: bytes to the session, commands to whoever handles them. While the
// client itself has led the BBS away from what the user sees, keys wait for its return. User-interface
// thread.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "app/session/automations.h"
#include "app/session/connection.h"
#include "input/key_control.h"
#include "input/mouse_scheme.h"
#include "input/text/lost_characters.h"

namespace quillet {

class KeyDispatch {
 public:
  struct Handlers {
    std::function<void(Command)> command;
    std::function<void()> userTypes;  // before anything of the user's goes, or waits to go, to the BBS
    std::function<bool()> mustWait;   // it may not go yet
    std::function<void()> noSite;     // there is none that it could go to
    // Of a text, that the site's character set does not have.
    std::function<void(const LostCharacters&)> lost;
    std::function<const ScreenSnapshot&()> screen;  // that the user types at
    std::function<const UnderstoodPage&()> page;    // what stands on it
  };
  // All outlive the object.
  KeyDispatch(Connection& connection, Automations& automations, SessionDriver& driver, Handlers handlers)
      : connection_(connection), automations_(automations), driver_(driver), handlers_(std::move(handlers)) {}

  // Returns false for kNone only; input without a connection is taken and dropped.
  bool Perform(const KeyAction& action);
  void SendBytes(std::string bytes);
  // What the mouse sends: kSend and kMoveCursor only.
  void Perform(const MouseAction& action);
  // Typed, composed or pasted text.
  void SendText(std::u16string_view text, Wrap wrap = Wrap::kNone);
  // Sends what had to wait, as far as nothing has to wait any more.
  void Flush();
  // Forgets what waits: the connection has ended.
  void DropWaiting() { waiting_.clear(); }

 private:
  struct Input {
    KeyAction action;
    Wrap wrap = Wrap::kNone;
  };
  void SendOrKeep(Input input);
  void Send(const Input& input);
  // The user is about to type to the site: he has seen that his lists hold something, and no automation types
  // between his keys. False when that has stopped one that was filling in prompts: what he types was meant
  // for another page, and must not go out.
  [[nodiscard]] bool TakeOver();

  Connection& connection_;
  Automations& automations_;
  SessionDriver& driver_;
  Handlers handlers_;
  std::deque<Input> waiting_;
};

}  // namespace quillet
