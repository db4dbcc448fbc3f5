#include "app/session/screen_witness.h"

#include <utility>

#include "bbs/article/push_over_reader.h"
#include "bbs/page_flags.h"
#include "core/session_state.h"

namespace quillet {

void ScreenWitness::Look(ScreenSnapshot& screen, ScreenReason reason, std::int64_t now) {
  MarkPushOverReader(Page().flags, screen);
  const UnderstoodPage& page = understanding_.Look(screen);
  if (reason != ScreenReason::kUpdated) {
    article_.Drop();
    login_.Clear();
    push_.Forget();
  }
  // Before the BBS goes back to a list, where no article is open.
  if (page.Shows(PF_PUSH_LINE)) pushing_ = article_.Current();
  if (screen.sessionState == SessionState::kConnected) article_.Look(screen, page, now);
  login_.Look(screen);
  if (std::exchange(connection_, screen.connection) != screen.connection) farewell_.Forget();
  farewell_.Look(screen);
  if (push_.Look(screen, page)) pushed_.push_back(pushing_);
}

Sightings ScreenWitness::Take() {
  return {.article = article_.Current(),
          .articleOpen = article_.IsOpen(),
          .loginId = login_.Id(),
          .pushed = std::exchange(pushed_, {}),
          .farewell = farewell_.Last()};
}

void ScreenWitness::ForgetPush() {
  push_.Forget();
  pushed_.clear();
}

}  // namespace quillet
