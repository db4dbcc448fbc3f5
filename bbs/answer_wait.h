// Whether the BBS has left what the user typed without an answer for so long that he should know of it.
// Decides by a clock that it is told; owned by the session driver, on its thread.
#pragma once

#include <cstdint>
#include <optional>

namespace quillet {

class AnswerWait {
 public:
  enum class State {
    kNone,    // everything is answered
    kSlow,    // longer than a BBS takes
    kStalled  // so long that the connection may be dead
  };
  static constexpr std::int64_t kSlowAfter = 2000;  // ms
  static constexpr std::int64_t kStalledAfter = 10'000;

  // The user has sent something. `received` counts what has come: TermSession::receivedCount. `now` in
  // milliseconds of a steady clock.
  void OnSent(std::int64_t now, unsigned received);
  State At(std::int64_t now, unsigned received) const;
  // For a connection that begins.
  void Forget() { since_.reset(); }

 private:
  std::optional<std::int64_t> since_;  // the first of the keys that are not answered yet
  unsigned received_ = 0;              // by then
};

}  // namespace quillet
