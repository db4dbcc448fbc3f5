// Notices that the user himself has pushed the article that is open: the confirmation was answered with "y"
// and the article, or its list, is back. Has to be fed with every screen, of which some show for a moment
// only; any one thread. The character tables must be loaded before one is made.
#pragma once

#include <string>

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"

namespace quillet {

class PushWatch {
 public:
  PushWatch();

  // Whether a push has been taken since the screen before. `page` is what stands on `screen`.
  bool Look(const ScreenSnapshot& screen, const UnderstoodPage& page);
  void Forget();

 private:
  // The push as it stands in front of the question whether to push, and a blank; empty without the question.
  std::string AskedFor(const ScreenSnapshot& screen) const;
  bool IsTakenUp(const ScreenSnapshot& screen, const UnderstoodPage& page) const;

  std::string question_;
  std::string asked_;
  bool confirmed_ = false;
};

}  // namespace quillet
