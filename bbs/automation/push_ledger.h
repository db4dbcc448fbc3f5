// What is to be pushed onto an article, and what has become of it. The order is a value; the ledger is any
// thread's.
#pragma once

#include <chrono>
#include <mutex>
#include <string>

#include "bbs/automation/push_pages.h"

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

// What has become of an order so far; outlives the run and tells of one that was cancelled, too.
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

}  // namespace quillet
