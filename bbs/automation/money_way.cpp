#include "bbs/automation/money_way.h"

#include <utility>

#include "core/ascii.h"

namespace quillet {
namespace {

constexpr int kMostSteps = 30;
constexpr int kMostSilentSteps = 3;

}  // namespace

MoneyWay::MoneyWay(ScreenWaits& waits, const MoneyPage& page, ScreenWaits::Milliseconds reaction)
    : waits_(waits), page_(page), walk_(waits, reaction), reaction_(reaction) {}

MoneyRunEnd MoneyWay::Reach(Goal goal) {
  silentSteps_ = 0;
  asked_ = false;
  for (int step = 0; step < kMostSteps; ++step) {
    const std::optional<PageWalk::Page> page = walk_.Await();
    if (!page) return MoneyRunEnd::kClosed;
    if (const End end = StepFrom(*page, goal)) return *end;
  }
  return NoWay();
}

MoneyWay::End MoneyWay::StepFrom(PageWalk::Page page, Goal goal) {
  const bool insteadOfMoneyPage = std::exchange(asked_, false);
  switch (page) {
    case PageWalk::Page::kUnknown:
      return MoneyRunEnd::kNoWay;
    case PageWalk::Page::kTypedInto:
      return StepFromPrompt(goal);
    case PageWalk::Page::kReader:
      return Stepped(walk_.StepOut());
    case PageWalk::Page::kNotice:
      return Stepped(walk_.Leave(page));
    case PageWalk::Page::kMessage:
      return StepFromMessage(insteadOfMoneyPage);
    case PageWalk::Page::kList:
      break;
  }
  return StepFromList(goal);
}

MoneyWay::End MoneyWay::StepFromPrompt(Goal goal) {
  if (!page_.IsShown(waits_.Seen())) return MoneyRunEnd::kBusy;
  if (goal == Goal::kMoneyPage && page_.IsFresh(waits_.Seen())) return MoneyRunEnd::kFinished;
  return Stepped(walk_.Press(kCancelKey));
}

MoneyWay::End MoneyWay::StepFromMessage(bool insteadOfMoneyPage) {
  if (!insteadOfMoneyPage) return Stepped(walk_.Leave(PageWalk::Page::kMessage));
  said_ = page_.MessageOn(waits_.Seen());
  return MoneyRunEnd::kRefused;
}

MoneyWay::End MoneyWay::StepFromList(Goal goal) {
  const auto isTitled = [this](std::u16string_view title) {
    return RowStartsWith(waits_.Seen(), 0, 0, title);
  };
  const bool toMoney = goal == Goal::kMoneyPage;
  if (isTitled(u"【主功能表】")) return Stepped(Choose(toMoney ? 'X' : 'B'));
  if (toMoney && isTitled(u"【系統資訊】")) {
    asked_ = true;
    return Stepped(Choose('P'));
  }
  if (!toMoney && isTitled(u"【看板列表】")) return MoneyRunEnd::kFinished;
  return Stepped(walk_.StepOut());
}

MoneyWay::End MoneyWay::Stepped(bool reacts) {
  silentSteps_ = reacts ? 0 : silentSteps_ + 1;
  if (silentSteps_ < kMostSilentSteps) return std::nullopt;
  return NoWay();
}

bool MoneyWay::Choose(char letter) {
  const std::string label = {'(', letter, ')'};
  waits_.Send(std::string(1, AsciiLower(letter)));
  const bool isChosen = waits_.WaitAtMost(reaction_, [&](const ScreenSnapshot& screen) {
    return waits_.Pages().IsListCursor(screen) &&
           screen.RowText(screen.cursorRow).find(label) != std::string::npos;
  });
  return isChosen && walk_.Press("\r");
}

void MoneyWay::LeaveMoneyPage() {
  if (page_.IsShown(waits_.Look())) walk_.Press(kCancelKey);
}

}  // namespace quillet
