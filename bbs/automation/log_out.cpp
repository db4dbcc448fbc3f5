#include "bbs/automation/log_out.h"

#include "bbs/automation/page_walk.h"
#include "bbs/farewell_watch.h"
#include "core/charset.h"

namespace quillet {
namespace {

// The title of the menu.
constexpr int kTitleCol = 2;
// So long the BBS may take to show that it has heard the answer; it is left in any case then.
constexpr std::chrono::milliseconds kFarewell{2000};
// A page that does not change for so long is complete; one that goes on changing is waited for no longer.
constexpr std::chrono::milliseconds kQuiet{150};
constexpr int kMostPieces = 10;

LogOutResult SayGoodbye(ScreenWaits& waits) {
  const FarewellWatch farewell;
  const auto asks = [&](const ScreenSnapshot& screen) {
    return farewell.Read(screen) == Farewell::kLoggedOut;
  };
  // The letter goes to the item, wherever in the menu it stands.
  waits.Send("g\r");
  if (!waits.WaitAtMost(PageWalk::kReaction, asks))
    return waits.IsAlive() ? LogOutResult::kNoWay : LogOutResult::kEnded;
  waits.Send("y\r");
  waits.WaitAtMost(kFarewell, [&](const ScreenSnapshot& screen) { return !asks(screen); });
  // The goodbye may come in pieces, and whoever leaves wants to see it whole.
  ScreenSnapshot shown = waits.Seen();
  for (int piece = 0; piece < kMostPieces; ++piece) {
    if (!waits.WaitAtMost(kQuiet, [&](const ScreenSnapshot& screen) { return screen.text != shown.text; }))
      break;
    shown = waits.Seen();
  }
  return LogOutResult::kSaidGoodbye;
}

}  // namespace

LogOutResult LogOut(ScreenWaits& waits) {
  const std::string mainMenu = ToBig5(u"主");
  PageWalk walk(waits);
  for (int page = 0; page < kMostPagesLeft; ++page) {
    const PageWalk::Step step = walk.ReachList();
    if (step == PageWalk::Step::kEnded) return LogOutResult::kEnded;
    if (step == PageWalk::Step::kBusy) return LogOutResult::kNoWay;
    if (RowStartsWith(waits.Seen(), 0, kTitleCol, std::string_view(mainMenu))) return SayGoodbye(waits);
    walk.StepOut();
  }
  return LogOutResult::kNoWay;
}

}  // namespace quillet
