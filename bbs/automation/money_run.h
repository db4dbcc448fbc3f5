// Gives money to one user of the BBS after another in the BBS's own money page, and goes back to the article
// from which it was called. A worker thread's; the ledger is any thread's.
//
// Nobody gets money twice: a gift is marked in the ledger before it is confirmed to the BBS, and is never
// tried again from then on. Where the BBS's answer is not understood, the money that it shows tells whether
// the gift was made.
#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "bbs/article_code.h"
#include "bbs/automation/screen_waits.h"
#include "bbs/page_facts.h"

namespace quillet {

struct MoneyGift {
  std::u16string id;
  std::int32_t amount = 0;  // 1 or more
};

struct MoneyOrder {
  ArticleReference article;  // to go back to; its code is asked for when it is empty
  std::vector<MoneyGift> gifts;
  // A page that shows no reaction by then has none to the key; a gift is a matter of the BBS's disk.
  std::chrono::milliseconds reaction{3'000};
  std::chrono::milliseconds answer{10'000};
  // For the way back to the article: the user waits for what came of the gifts.
  std::chrono::milliseconds wayBack{30'000};
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
  MoneyRunResult result_;
};

// From the reader, or any page from which keys lead out to the main menu. Nothing is given unless the money,
// where the BBS shows it, suffices for all. Afterwards the article is opened again; where its code cannot be
// known, the board list shows. What came of it stands in the ledger, of whose gifts `order` is made.
void RunMoneyOrder(ScreenWaits& waits, const MoneyOrder& order, MoneyLedger& ledger);

}  // namespace quillet
