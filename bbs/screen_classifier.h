// Decides after every update of the screen which pages are showing, keeps the answer as flags in the screen,
// and posts a copy to the view. One per session, on the session's receive thread, right after the parser.
#pragma once

#include "bbs/page_flags.h"
#include "bbs/page_tests.h"
#include "core/screen_watcher.h"

namespace quillet {

// Writes `pageFlags` and the star-line word (`msgCount`). Allocates nothing. Returns false when the screen is
// frozen and nothing was done: a closed connection is looked at all the same.
bool ClassifyScreen(const PageTests& pages, ScreenSnapshot& screen, ScreenReason reason);

// Posts a heap copy of the screen to its notify window, whose it then is; frees it when it is not taken.
void PostSnapshot(const ScreenSnapshot& screen, ScreenReason reason);

class ScreenClassifier : public ScreenWatcher {
 public:
  const PageTests& Pages() const { return pages_; }

  bool IsReader(const ScreenSnapshot& screen) const override;
  bool IsReaderSettled(const ScreenSnapshot& screen) const override;
  bool IsArticleList(const ScreenSnapshot& screen) const override;
  bool IsStarLine(const ScreenSnapshot& screen) const override;
  bool IsListCursor(const ScreenSnapshot& screen) const override;
  bool IsInputField(const ScreenSnapshot& screen) const override;
  void ProcessScreen(ScreenSnapshot& screen, ScreenReason reason) override;

 private:
  PageTests pages_;
};

}  // namespace quillet
