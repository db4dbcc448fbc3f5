// Pushes a longer text piece by piece onto the article that is open. A worker thread's.
//
//   reader --X--> kind? --1/2/3--> text field --piece, Enter--> confirmation --y, Enter--> reader
//
// A BBS may skip the question for the kind, and may come back to the article's list. Where it asks to wait,
// the run waits and tries the same piece again. No key is sent but to a page that has been recognised: what
// the BBS has or has not taken is known from its pages, and a piece is never sent twice.
#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <utility>

#include "bbs/automation/push_pages.h"
#include "bbs/automation/screen_waits.h"

namespace quillet {

struct PushOrder {
  std::u16string text{};
  PushKind kind = PushKind::kGood;
  std::u16string
      author{};           // of the article, as the list prints it; tells its line when the BBS shows the list
  int columns = 33;       // that a push is likely to have; the BBS's own field says it surely
  bool asksCode = false;  // of the article, once something has been pushed to it
  std::chrono::milliseconds patience{10'000};  // for each answer of the BBS
};

enum class PushOutcome {
  kDone,        // nothing is left
  kRefused,     // the BBS's words say why
  kNotOffered,  // the BBS lets nobody push in the wanted way here
  kNoReader,    // no article was showing
  kNoAnswer,    // none, or none that is known, within the patience
  kTakenOver,   // by the user; only the ledger says so
  kClosed       // the connection ended, or the run was cancelled
};

struct PushRunResult {
  PushOutcome outcome = PushOutcome::kDone;
  int pushed = 0;
  int total = 0;          // pieces, as far as the columns are known
  std::u16string said{};  // the BBS's own words, perhaps empty
  std::u16string rest{};  // of the text, what has not been taken by the BBS
  bool unsure = false;    // the first piece of the rest may have been taken
  int columns = 0;        // of the BBS's field; 0 when none has been seen
  int waitSeconds = 0;    // while the run goes on: the BBS has asked to wait so long
  std::u16string code{};  // of the article, where the order asks for it
};

// What has become of an order so far; outlives the run and tells of one that was cancelled, too. Any thread.
class PushLedger {
 public:
  explicit PushLedger(const PushOrder& order);

  void Note(PushRunResult result);
  // As long as the run goes on: what holds if the user takes over now.
  PushRunResult Result() const;

 private:
  mutable std::mutex lock_;
  PushRunResult result_;  // guarded by lock_
};

// `progress` is called on the run's thread with what holds so far, each time that it changes.
PushRunResult PushInPieces(ScreenWaits& waits, const PushOrder& order,
                           const std::function<void(const PushRunResult&)>& progress = {});
// The same, noted in the ledger, which was made of the order; asks for the article's code afterwards where
// the order wants it.
PushRunResult RunPushOrder(ScreenWaits& waits, const PushOrder& order, PushLedger& ledger);

}  // namespace quillet
