#include "bbs/automation/push_ledger.h"

#include <utility>

namespace quillet {

PushLedger::PushLedger(const PushOrder& order) {
  result_.outcome = PushOutcome::kTakenOver;
  result_.rest = order.text;
}

void PushLedger::Note(PushRunResult result) {
  const std::lock_guard guard(lock_);
  result_ = std::move(result);
}

PushRunResult PushLedger::Result() const {
  const std::lock_guard guard(lock_);
  return result_;
}

}  // namespace quillet
