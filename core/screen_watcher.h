// What the stream parser asks of those who understand pages, and whom it hands screens to. The room that
// knows the pages implements it; tests give a fake. Called on the session's receive thread (and by
// Connect before that thread exists); IsListCursor also on a sending thread, over a copy of the screen.
#pragma once

#include "core/screen_snapshot.h"

namespace quillet {

// Why a screen is handed over; travels to the view as the message's first parameter.
enum class ScreenReason : int { kUpdated = 0, kConnected = 1, kDisconnected = 2 };

class ScreenWatcher {
 public:
  ScreenWatcher() = default;
  ScreenWatcher(const ScreenWatcher&) = delete;
  ScreenWatcher& operator=(const ScreenWatcher&) = delete;
  virtual ~ScreenWatcher() = default;

  // The article viewer is showing.
  virtual bool IsReader(const ScreenSnapshot& screen) const = 0;
  // The same, with the cursor parked behind the finished status line.
  virtual bool IsReaderSettled(const ScreenSnapshot& screen) const = 0;
  virtual bool IsArticleList(const ScreenSnapshot& screen) const = 0;
  // A one-line instant message lies over the bottom rows.
  virtual bool IsStarLine(const ScreenSnapshot& screen) const = 0;
  virtual bool IsListCursor(const ScreenSnapshot& screen) const = 0;
  virtual bool IsInputField(const ScreenSnapshot& screen) const = 0;

  // Takes a screen that is complete enough to be looked at. May write the page flags and the classifier's
  // own fields; must not wait.
  virtual void ProcessScreen(ScreenSnapshot& screen, ScreenReason reason) = 0;
};

}  // namespace quillet
