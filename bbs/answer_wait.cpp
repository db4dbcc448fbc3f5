#include "bbs/answer_wait.h"

#include "bbs/page_tests.h"

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

bool ExpectsSilence(const ScreenSnapshot& screen) {
  constexpr int kPasswordRow = 21;
  return RowStartsWith(screen, kPasswordRow, 0, u"請輸入您的密碼");
}

}  // namespace quillet
