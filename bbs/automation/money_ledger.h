// Whom the user gives money, and what has become of each gift. The ledger is any thread's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "bbs/page_facts.h"

namespace quillet {

struct MoneyGift {
  std::u16string id;
  std::int32_t amount = 0;  // 1 or more
};

enum class GiftState {
  kNotYet,
  kAsked,  // confirmed to the BBS, which has not said or shown what came of it
  kGiven,
  kRefused  // the BBS has not made the gift
};

struct GiftRecord {
  MoneyGift gift;
  GiftState state = GiftState::kNotYet;
  std::u16string words;  // the BBS's, where it has not simply made the gift
};

enum class MoneyRunEnd {
  kFinished,   // every gift was tried
  kNotEnough,  // the money does not suffice
  kRefused,    // the BBS does not open its money page; `said` says why
  kBusy,       // the user is typing at a prompt or in the editor
  kNoWay,      // the BBS does not answer, or no way leads to its money page
  kUnclear,    // neither the answer nor the money tells what came of a gift
  kTakenOver,  // the user has stopped it
  kClosed      // the connection ended
};

struct MoneyRunResult {
  MoneyRunEnd end = MoneyRunEnd::kTakenOver;
  std::u16string said;
  std::int32_t money = kNoMoney;  // as the BBS showed it last
  std::vector<GiftRecord> gifts;

  int Count(GiftState state) const;
  // Of the gifts in this state.
  std::int64_t Sum(GiftState state) const;
};

// What has become of an order so far; outlives the run and tells of a run that was cancelled, too.
class MoneyLedger {
 public:
  explicit MoneyLedger(const std::vector<MoneyGift>& gifts);

  void Note(std::size_t gift, GiftState state, std::u16string words = {});
  void NoteMoney(std::int32_t money);
  void NoteEnd(MoneyRunEnd end, std::u16string said = {});

  // Gifts that have been tried.
  int Tried() const;
  int Total() const;
  // kTakenOver before NoteEnd.
  MoneyRunResult Result() const;

 private:
  mutable std::mutex lock_;
  MoneyRunResult result_;  // guarded by lock_
};

}  // namespace quillet
