#include "input/wheel_steps.h"

#include <algorithm>
#include <limits>

namespace quillet {
namespace {

// One notch of an ordinary wheel: 15 degrees.
constexpr int kNotch = 120;
// A finger that has lain still for so long begins a new movement.
constexpr std::int64_t kPauseMs = 500;
// More than any device sends at once; keeps the sums within their type.
constexpr int kMostAtOnce = 1 << 20;

int Bounded(int delta) {
  return std::clamp(delta, -kMostAtOnce, kMostAtOnce);
}

int SignOf(int value) {
  return (value > 0) - (value < 0);
}

}  // namespace

// A rest in parts of another size is no longer a rest of anything.
int WheelSteps::Rest::Take(std::int64_t parts, std::int64_t size) {
  if (size != size_) parts_ = 0;
  size_ = size;
  parts_ += parts;
  const std::int64_t whole = parts_ / size;
  parts_ -= whole * size;
  return static_cast<int>(
      std::clamp<std::int64_t>(whole, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

WheelTurn WheelSteps::Add(const WheelDelta& delta, const WheelScale& scale, std::int64_t now) {
  const int angle = Bounded(delta.angle);
  const int pixels = Bounded(delta.pixels);
  const int direction = SignOf(pixels != 0 ? pixels : angle);
  if (direction == 0) return {};
  if (direction != direction_ || now - last_ > kPauseMs) Reset();
  direction_ = direction;
  last_ = now;

  WheelTurn turn;
  turn.notches = notches_.Take(angle, kNotch);
  const auto linesPerNotch = static_cast<std::int64_t>(std::max(1, scale.linesPerNotch));
  turn.lines = pixels != 0 ? lines_.Take(pixels, std::max(1, scale.pixelsPerLine))
                           : lines_.Take(angle * linesPerNotch, kNotch);
  return turn;
}

void WheelSteps::Reset() {
  notches_.Clear();
  lines_.Clear();
  direction_ = 0;
}

}  // namespace quillet
