// Which page the BBS shows to an automation, and the keys that lead out of it. Used by the automations that
// start wherever the user is. Worker threads.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "bbs/automation/dialogue.h"

namespace quillet {

// Pages are nested less deep than this.
inline constexpr int kMostPagesLeft = 20;

class PageWalk {
 public:
  using Milliseconds = ScreenWaits::Milliseconds;
  // A page that shows no reaction by then has none to the key.
  static constexpr Milliseconds kReaction{3000};
  // For as long a page that is being drawn may look like another.
  static constexpr Milliseconds kDrawing{200};

  // `waits` outlives the walk.
  explicit PageWalk(ScreenWaits& waits, Milliseconds reaction = kReaction);

  enum class Page {
    kUnknown,    // or still being drawn
    kTypedInto,  // a prompt or the editor
    kReader,
    kNotice,   // in front of an article
    kMessage,  // or a pause: waits for any key
    kList      // or a menu, with its cursor
  };
  Page PageOf(const ScreenSnapshot& screen) const;
  // The page that shows with no message over it; kUnknown when none that is known comes in time, or a message
  // stays. Nothing when the run has ended.
  std::optional<Page> Await();

  enum class Step {
    kDone,
    kBusy,  // the page is typed into, or none that is known: nothing may be pressed there
    kEnded  // the run has
  };
  // Leaves articles, notices and messages until there is a list or menu.
  Step ReachList();

  // Each waits for the reaction; false when there is none.
  bool Press(std::string_view key);
  bool Leave(Page page);  // one that ReachList leaves
  bool StepOut();         // of a list or menu to the one from which it was entered, or of an article

 private:
  ScreenWaits& waits_;
  const PageTests& pages_;
  Dialogue dialogue_;
  const std::string message_;
};

}  // namespace quillet
