#include "app/window/view_timers.h"

#include <utility>

namespace quillet {
namespace {

constexpr int kHalfPeriodMs = 500;
constexpr int kTickMs = 250;
constexpr int kAnimationMs = 33;

}  // namespace

ViewTimers::ViewTimers(Handlers handlers) : handlers_(std::move(handlers)) {
  QObject::connect(&blink_, &QTimer::timeout, [this] {
    blinkOff_ = !blinkOff_;
    handlers_.phaseTurned();
  });
  QObject::connect(&caret_, &QTimer::timeout, [this] {
    caretOn_ = !caretOn_;
    handlers_.phaseTurned();
  });
  QObject::connect(&tick_, &QTimer::timeout, [this] { handlers_.tick(); });
  QObject::connect(&animation_, &QTimer::timeout, [this] { handlers_.animate(); });
  blink_.start(kHalfPeriodMs);
  tick_.start(kTickMs);
}

void ViewTimers::RestartCaret() {
  if (caret_.isActive()) caret_.start(kHalfPeriodMs);
  if (!std::exchange(caretOn_, true)) handlers_.phaseTurned();
}

void ViewTimers::SetFocused(bool focused) {
  caretOn_ = true;
  if (focused)
    caret_.start(kHalfPeriodMs);
  else
    caret_.stop();
  handlers_.phaseTurned();
}

void ViewTimers::SetAnimating(bool on) {
  if (on == animation_.isActive()) return;
  if (on)
    animation_.start(kAnimationMs);
  else
    animation_.stop();
}

}  // namespace quillet
