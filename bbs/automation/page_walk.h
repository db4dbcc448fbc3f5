// How an automation gets out of the page that the BBS shows: which kind of page it is, and the keys that
// leave it, until a menu or a list shows. Used by the automations that start wherever the user is. Worker
// threads.
#pragma once

#include <string>
#include <string_view>

#include "bbs/automation/screen_waits.h"

namespace quillet {

// Pages are nested less deep than this.
inline constexpr int kMostPagesLeft = 20;

class PageWalk {
 public:
  // `waits` outlives the walk.
  explicit PageWalk(ScreenWaits& waits);

  enum class Step {
    kDone,
    kBusy,  // the page is typed into, or none that is known: nothing may be pressed there
    kEnded  // the run has
  };
  // Leaves articles, notices and pauses until there is a list or menu with its cursor.
  Step ReachList();
  // Sends and waits for any reaction.
  void Press(std::string_view key);
  // A page that shows no reaction by then has none to the key.
  static constexpr std::chrono::milliseconds kReaction{3000};

 private:
  // What a page wants before it can be left; unknown also while it is still being drawn.
  enum class Kind { kUnknown, kList, kTypedInto, kLeft, kPassed };
  Kind KindOf(const ScreenSnapshot& screen) const;

  ScreenWaits& waits_;
  const PageTests& pages_;
  const std::string message_;
};

}  // namespace quillet
