// Holds back what the mouse would send until the BBS has answered what it sent last: a second click or turn
// would be decided upon a page that is already going away, and act on the next one. User-interface thread.
#pragma once

#include <cstdint>

#include "core/screen_snapshot.h"

namespace quillet {

class AnswerGate {
 public:
  // Whether the page that was acted upon still stands. Gives up waiting after a second: not everything is
  // answered. `now` in milliseconds of a clock that never goes back.
  bool IsWaiting(const ScreenSnapshot& screen, std::int64_t now) const {
    return waiting_ && now - since_ < kPatienceMs && screen.text == text_ && screen.attr == attr_ &&
           screen.cursorRow == cursorRow_ && screen.cursorCol == cursorCol_;
  }
  // A screen has come. One that is another than what was acted upon is an answer, also when the page that
  // was acted upon is back soon after it.
  void OnScreen(const ScreenSnapshot& screen, std::int64_t now) { waiting_ = IsWaiting(screen, now); }
  // Something is sent on account of this screen.
  void Sent(const ScreenSnapshot& screen, std::int64_t now) {
    waiting_ = true;
    since_ = now;
    text_ = screen.text;
    attr_ = screen.attr;
    cursorRow_ = screen.cursorRow;
    cursorCol_ = screen.cursorCol;
  }

 private:
  static constexpr std::int64_t kPatienceMs = 1000;

  bool waiting_ = false;
  std::int64_t since_ = 0;
  decltype(ScreenSnapshot::text) text_{};
  decltype(ScreenSnapshot::attr) attr_{};
  std::int32_t cursorRow_ = 0;
  std::int32_t cursorCol_ = 0;
};

}  // namespace quillet
