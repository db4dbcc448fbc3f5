#include "app/session/screen_witness.h"

#include <utility>

#include "bbs/page_flags.h"
#include "bbs/push_over_reader.h"
#include "core/session_state.h"

namespace quillet {

void ScreenWitness::Look(ScreenSnapshot& screen, ScreenReason reason, std::int64_t now) {
  MarkPushOverReader(lastFlags_, screen);
  lastFlags_ = screen.pageFlags;
  if (reason != ScreenReason::kUpdated) {
    article_.Drop();
    login_.Clear();
    push_.Forget();
  }
  // Before the BBS goes back to a list, where no article is open.
  if ((screen.pageFlags & PF_PUSH_LINE) != 0) pushing_ = article_.Current();
  if (screen.sessionState == SessionState::kConnected) article_.Look(screen, now);
  login_.Look(screen);
  if (push_.Look(screen)) pushed_ = pushing_;
}

Sightings ScreenWitness::Take() {
  return {.article = article_.Current(),
          .articleOpen = article_.IsOpen(),
          .loginId = login_.Id(),
          .pushed = std::exchange(pushed_, std::nullopt)};
}

void ScreenWitness::ForgetPush() {
  push_.Forget();
  pushed_.reset();
}

}  // namespace quillet
