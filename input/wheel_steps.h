// Turns of a wheel, however finely the device tells them, as whole notches and whole lines: what is left over
// counts towards the next turn, so that nothing is lost and nothing is moved twice. One object for each axis.
// Pure; user-interface thread.
#pragma once

#include <cstdint>

namespace quillet {

// All positive away from the user, which is up.
struct WheelDelta {
  int angle = 0;   // eighths of a degree
  int pixels = 0;  // of touchpads that tell them, else 0
};

struct WheelTurn {
  int notches = 0;
  int lines = 0;

  bool IsNothing() const { return notches == 0 && lines == 0; }
  bool operator==(const WheelTurn&) const = default;
};

// What a line is; values below 1 count as 1.
struct WheelScale {
  int linesPerNotch = 3;
  int pixelsPerLine = 1;
};

class WheelSteps {
 public:
  // `now` in milliseconds of a clock that never goes back. The rest is forgotten when the direction changes
  // or the wheel has rested.
  WheelTurn Add(const WheelDelta& delta, const WheelScale& scale, std::int64_t now);
  void Reset();

 private:
  // A sum of parts, given out in wholes of `size` parts.
  class Rest {
   public:
    int Take(std::int64_t parts, std::int64_t size);
    void Clear() { parts_ = 0; }

   private:
    std::int64_t parts_ = 0;
    std::int64_t size_ = 1;
  };

  Rest notches_, lines_;
  std::int64_t last_ = 0;
  int direction_ = 0;
};

}  // namespace quillet
