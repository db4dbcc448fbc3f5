// What the window says about continuous pushing. Pure.
#pragma once

#include <optional>

#include "app/messages/panel_text.h"
#include "bbs/automation/push_run.h"

namespace quillet {

// What came of it, where that needs no more than a line that goes by itself; empty when it needs more.
QString DescribePushSuccess(const PushRunResult& result);
// How far a run came that did not push everything, why, and where the rest is. No title after a success.
PanelText DescribePushEnd(const PushRunResult& result);

// Why nobody can push on now.
enum class NoPushReason {
  kNotConnected,
  kNoArticle,
  kBusy,          // the client is at work for the user already
  kOtherArticle,  // another article than the one that the text is for is open
};
QString DescribeNoPush(NoPushReason reason);

// One line of the preview's heading: how many pieces and how wide the widest may be.
QString DescribePieces(int pieces, int columns);
// The characters that will be left out; empty for none.
QString DescribeUnpushable(const QString& characters);

}  // namespace quillet
