#include "bbs/automation/money_ledger.h"

#include <algorithm>
#include <utility>

namespace quillet {

int MoneyRunResult::Count(GiftState state) const {
  return static_cast<int>(std::count_if(gifts.begin(), gifts.end(),
                                        [state](const GiftRecord& gift) { return gift.state == state; }));
}

std::int64_t MoneyRunResult::Sum(GiftState state) const {
  std::int64_t sum = 0;
  for (const GiftRecord& record : gifts)
    if (record.state == state) sum += record.gift.amount;
  return sum;
}

MoneyLedger::MoneyLedger(const std::vector<MoneyGift>& gifts) {
  for (const MoneyGift& gift : gifts)
    result_.gifts.push_back({.gift = gift, .state = GiftState::kNotYet, .words = {}});
}

void MoneyLedger::Note(std::size_t gift, GiftState state, std::u16string words) {
  const std::lock_guard guard(lock_);
  result_.gifts[gift].state = state;
  result_.gifts[gift].words = std::move(words);
}

void MoneyLedger::NoteMoney(std::int32_t money) {
  const std::lock_guard guard(lock_);
  result_.money = money;
}

void MoneyLedger::NoteEnd(MoneyRunEnd end, std::u16string said) {
  const std::lock_guard guard(lock_);
  result_.end = end;
  result_.said = std::move(said);
}

int MoneyLedger::Tried() const {
  const std::lock_guard guard(lock_);
  return static_cast<int>(result_.gifts.size()) - result_.Count(GiftState::kNotYet);
}

int MoneyLedger::Total() const {
  const std::lock_guard guard(lock_);
  return static_cast<int>(result_.gifts.size());
}

MoneyRunResult MoneyLedger::Result() const {
  const std::lock_guard guard(lock_);
  return result_;
}

}  // namespace quillet
