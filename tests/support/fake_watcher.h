// A watcher that counts what it is handed and answers the page tests as a test tells it to.
#pragma once

#include <atomic>
#include <functional>

#include "core/screen_watcher.h"

namespace quillet {

class FakeWatcher : public ScreenWatcher {
 public:
  bool IsReader(const ScreenSnapshot&) const override { return false; }
  bool IsReaderSettled(const ScreenSnapshot&) const override { return false; }
  bool IsArticleList(const ScreenSnapshot&) const override { return false; }
  bool IsStarLine(const ScreenSnapshot&) const override { return false; }
  bool IsListCursor(const ScreenSnapshot&) const override {
    ++listCursorQuestions;
    return listCursor;
  }
  bool IsInputField(const ScreenSnapshot&) const override { return false; }

  void ProcessScreen(ScreenSnapshot& screen, ScreenReason reason) override {
    switch (reason) {
      case ScreenReason::kUpdated:
        ++updated;
        break;
      case ScreenReason::kConnected:
        ++connected;
        break;
      case ScreenReason::kDisconnected:
        ++disconnected;
        break;
    }
    lastState = screen.sessionState;
    lastIsBbsSite = screen.isBbsSite;
    if (onScreen) onScreen(reason);
  }

  std::atomic<bool> listCursor{false};
  mutable std::atomic<int> listCursorQuestions{0};
  std::atomic<int> updated{0};
  std::atomic<int> connected{0};
  std::atomic<int> disconnected{0};
  std::atomic<SessionState> lastState{SessionState::kIdle};
  std::atomic<int> lastIsBbsSite{-1};
  std::function<void(ScreenReason)> onScreen;  // set before the session connects
};

}  // namespace quillet
