// Pushes a longer text piece by piece onto the article that is open. Where the BBS asks to wait, the run
// waits and tries the same piece again. What the BBS has or has not taken is known from its pages, and a
// piece is never sent twice. A worker thread's.
#pragma once

#include <functional>

#include "bbs/automation/push_ledger.h"
#include "bbs/automation/screen_waits.h"

namespace quillet {

// `progress` is called on the run's thread with what holds so far, each time that it changes.
PushRunResult PushInPieces(ScreenWaits& waits, const PushOrder& order,
                           const std::function<void(const PushRunResult&)>& progress = {});
// The same, noted in the ledger, which was made of the order; asks for the article's code afterwards where
// the order wants it.
PushRunResult RunPushOrder(ScreenWaits& waits, const PushOrder& order, PushLedger& ledger);

}  // namespace quillet
