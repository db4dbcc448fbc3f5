// What the BBS's last pages say of why it hangs up: that its user has said goodbye, or that another login of
// his own has taken the place of this one. Is shown every screen of a connection; any one thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/screen_snapshot.h"

namespace quillet {

enum class Farewell : std::uint8_t {
  kNone,       // nothing: whatever ends now was not meant to
  kLoggedOut,  // it has asked whether he wants to leave, and no page of its own came after that
  kReplaced    // he has logged in elsewhere, and that was to end this login
};

class FarewellWatch {
 public:
  // The character tables must have been loaded.
  FarewellWatch();

  // What a classified page says by itself.
  Farewell Read(const ScreenSnapshot& screen) const;
  // The next screen, classified.
  void Look(const ScreenSnapshot& screen);
  // For a connection that begins.
  void Forget() { last_ = Farewell::kNone; }

  // Up to the screen that came last.
  Farewell Last() const { return last_; }

 private:
  bool TellsOfAnotherLogin(const ScreenSnapshot& screen) const;

  const std::string question_;
  const std::vector<std::string> replaced_;
  Farewell last_ = Farewell::kNone;
};

}  // namespace quillet
