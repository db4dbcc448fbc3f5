// The way from wherever the user is to the BBS's money page, and from there to the board list. Used by the
// money run, on its worker thread.
#pragma once

#include <optional>
#include <string>

#include "bbs/automation/money_ledger.h"
#include "bbs/automation/money_page.h"
#include "bbs/automation/page_walk.h"
#include "bbs/automation/screen_waits.h"

namespace quillet {

class MoneyWay {
 public:
  // Both outlive the object. A page that shows no reaction in time has none.
  MoneyWay(ScreenWaits& waits, const MoneyPage& page, ScreenWaits::Milliseconds reaction);

  enum class Goal { kMoneyPage, kBoardList };
  // kFinished when it shows, else why it cannot be reached.
  MoneyRunEnd Reach(Goal goal);
  // A money page that shows is left; nothing else is.
  void LeaveMoneyPage();
  // What the BBS has said instead of opening its money page.
  const std::u16string& Said() const { return said_; }

 private:
  // Each takes one step; nothing as long as there are further ones.
  using End = std::optional<MoneyRunEnd>;
  End StepFrom(PageWalk::Page page, Goal goal);
  End StepFromPrompt(Goal goal);
  End StepFromList(Goal goal);
  End StepFromMessage(bool insteadOfMoneyPage);
  End Stepped(bool reacts);
  // An item of a menu by its letter. Where a message has swallowed the key, or the page was on its way to
  // another one, nothing is entered.
  bool Choose(char letter);
  MoneyRunEnd NoWay() const { return waits_.IsAlive() ? MoneyRunEnd::kNoWay : MoneyRunEnd::kClosed; }

  ScreenWaits& waits_;
  const MoneyPage& page_;
  PageWalk walk_;
  const ScreenWaits::Milliseconds reaction_;
  int silentSteps_ = 0;  // in a row, to which the BBS has shown no reaction
  bool asked_ = false;   // the last step asked for the money page
  std::u16string said_;
};

}  // namespace quillet
