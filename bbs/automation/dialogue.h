// One turn of an automation's talk with the BBS: a key goes out, and the page that answers it is waited for.
// An instant message that comes up meanwhile has swallowed the key: it is dismissed, and the key repeated
// where the BBS still asks for it. Used by the automations, on their worker threads.
#pragma once

#include <limits>
#include <optional>
#include <string_view>

#include "bbs/automation/screen_waits.h"

namespace quillet {

class Dialogue {
 public:
  using Condition = ScreenWaits::Condition;
  using Milliseconds = ScreenWaits::Milliseconds;

  struct Limits {
    Milliseconds answer;  // for each page that is to come
    int sends = 20;       // a key that messages swallow so often is given up
  };
  // `waits` outlives the object. Without limits the BBS is waited for as long as the run goes on.
  explicit Dialogue(ScreenWaits& waits, std::optional<Limits> limits = std::nullopt);

  enum class Answer {
    kNone,         // within the limits, or the run ended
    kAtOnce,       // to the key itself
    kAfterMessage  // what dismissed a message may have been taken for an answer, too
  };
  // Presses a key and waits until the BBS has `answered`. Behind a message the key is repeated only where the
  // screen is `stillAsking` for it.
  Answer Press(std::string_view key, const Condition& answered, const Condition& stillAsking);
  // False when it did not come about within the limits, or the run ended.
  bool Await(const Condition& holds);

  // Presses a key and waits for any reaction, another text or another row of the cursor; false when none came
  // within the limits, or the run ended.
  bool PressForReaction(std::string_view key);

 private:
  bool AwaitPageBeneath(const Condition& answered, const Condition& stillAsking);

  ScreenWaits& waits_;
  const std::optional<Limits> limits_;
};

}  // namespace quillet
