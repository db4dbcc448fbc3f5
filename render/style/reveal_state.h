// What the Tab key does where ids of the user's lists are showing: once, their descriptions; twice in quick
// succession, also what the lists hide; once more, nothing. Pure.
#pragma once

#include <cstdint>
#include <optional>

#include "render/style/style_rules.h"

namespace quillet {

class RevealState {
 public:
  // Two presses within so many milliseconds are one double press.
  static constexpr std::int64_t kDoublePressMs = 450;

  // `now` in milliseconds.
  void Press(std::int64_t now) {
    const bool again = lastPress_ && now - *lastPress_ <= kDoublePressMs;
    lastPress_ = now;
    if (shown_ == Reveal::kNothing)
      shown_ = Reveal::kDescriptions;
    else
      shown_ = shown_ == Reveal::kDescriptions && again ? Reveal::kHidden : Reveal::kNothing;
  }
  void Reset() { shown_ = Reveal::kNothing; }
  Reveal Shown() const { return shown_; }

 private:
  Reveal shown_ = Reveal::kNothing;
  std::optional<std::int64_t> lastPress_;
};

}  // namespace quillet
