// The view's clockwork: blinking text, the caret, the driver's tick, the busy panel's motion. Keeps the
// phases and says when they turn. User-interface thread.
#pragma once

#include <functional>

#include <QTimer>

namespace quillet {

class ViewTimers {
 public:
  struct Handlers {
    std::function<void()> phaseTurned;  // blink or caret
    std::function<void()> tick;         // four times a second
    std::function<void()> animate;      // while animation is on, each displayed frame
  };
  explicit ViewTimers(Handlers handlers);

  bool BlinkOff() const { return blinkOff_; }
  bool CaretOn() const { return caretOn_; }

  // The caret shows at once and for a whole half period: it must not vanish while one types.
  void RestartCaret();
  // Without the focus nothing needs to turn.
  void SetFocused(bool focused);
  void SetAnimating(bool on);

 private:
  Handlers handlers_;
  QTimer blink_;
  QTimer caret_;
  QTimer tick_;
  QTimer animation_;
  bool blinkOff_ = false;
  bool caretOn_ = true;
};

}  // namespace quillet
