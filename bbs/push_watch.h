// Notices that the user himself has pushed the article that is open: the confirmation was answered with "y"
// and the article, or its list, is back. Has to be fed with every screen, of which some show for a moment
// only; any one thread.
#pragma once

#include <cstdint>
#include <utility>

#include "bbs/page_flags.h"
#include "core/screen_snapshot.h"

namespace quillet {

class PushWatch {
 public:
  // Whether a push has been taken since the screen before. `screen` is classified.
  bool Look(const ScreenSnapshot& screen) {
    const std::uint32_t flags = screen.pageFlags;
    if ((flags & PF_STAR_LINE) != 0) return false;  // lies over whatever it was
    if ((flags & PF_PUSH_CONFIRM) != 0) {
      confirmed_ = true;
      return false;
    }
    const bool back = (flags & (PF_READING | PF_LIST_CURSOR)) != 0;
    // While the page is drawn anew, no flag says anything; the prompt and a refusal have one.
    if (back || (flags & PF_PUSH_LINE) != 0) return std::exchange(confirmed_, false) && back;
    return false;
  }
  void Forget() { confirmed_ = false; }

 private:
  bool confirmed_ = false;
};

}  // namespace quillet
