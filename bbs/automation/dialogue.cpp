#include "bbs/automation/dialogue.h"

namespace quillet {
namespace {

constexpr std::chrono::milliseconds kLookInterval{1};

}  // namespace

Dialogue::Dialogue(ScreenWaits& waits, std::optional<Limits> limits) : waits_(waits), limits_(limits) {}

Dialogue::Answer Dialogue::Press(std::string_view key, const Condition& answered,
                                 const Condition& stillAsking) {
  const int most = limits_ ? limits_->sends : std::numeric_limits<int>::max();
  for (int sent = 0; sent < most && waits_.IsAlive(); ++sent) {
    waits_.Send(key);
    bool interrupted = false;
    const bool seen = Await([&](const ScreenSnapshot& screen) {
      interrupted = waits_.Pages().IsStarLine(screen);
      return interrupted || answered(screen);
    });
    if (!seen) return Answer::kNone;
    if (!interrupted) return sent == 0 ? Answer::kAtOnce : Answer::kAfterMessage;
    if (!AwaitPageBeneath(answered, stillAsking)) return Answer::kNone;
    if (answered(waits_.Seen())) return Answer::kAfterMessage;
  }
  return Answer::kNone;
}

// Another message may follow the first; one that does not go is waited out.
bool Dialogue::AwaitPageBeneath(const Condition& answered, const Condition& stillAsking) {
  bool another = false;
  bool seen = false;
  do {
    const bool gone = waits_.DismissMessages();
    seen = Await([&](const ScreenSnapshot& screen) {
      another = gone && waits_.Pages().IsStarLine(screen);
      return another || answered(screen) || stillAsking(screen);
    });
  } while (seen && another);
  return seen;
}

bool Dialogue::Await(const Condition& holds) {
  return limits_ ? waits_.WaitAtMost(limits_->answer, holds, kLookInterval)
                 : waits_.WaitUntil(holds, kLookInterval);
}

bool Dialogue::PressForReaction(std::string_view key) {
  const ScreenSnapshot before = waits_.Seen();
  waits_.Send(key);
  return Await([&](const ScreenSnapshot& screen) {
    return screen.text != before.text || screen.cursorRow != before.cursorRow;
  });
}

}  // namespace quillet
