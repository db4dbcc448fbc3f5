#include "bbs/answer_wait.h"

namespace quillet {

void AnswerWait::OnSent(std::int64_t now, unsigned received) {
  if (since_ && received_ == received) return;
  since_ = now;
  received_ = received;
}

AnswerWait::State AnswerWait::At(std::int64_t now, unsigned received) const {
  if (!since_ || received_ != received || now - *since_ < kSlowAfter) return State::kNone;
  return now - *since_ < kStalledAfter ? State::kSlow : State::kStalled;
}

}  // namespace quillet
