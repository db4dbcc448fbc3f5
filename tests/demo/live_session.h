// A connection as the program makes one: session, classifier and, on a thread of its own, an automation that
// can be cancelled.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "bbs/screen_classifier.h"
#include "bbs/screen_waits.h"
#include "core/term_session.h"
#include "tests/demo/test_client.h"

namespace quillet {

class LiveSession {
 public:
  // `notify`, which outlives it, gets what a view would get.
  explicit LiveSession(NotifyTarget* notify = nullptr) : notify_(notify) {}
  ~LiveSession() {
    Cancel();
    session.Disconnect();
  }

  bool Connect(const std::string& address) {
    session.Connect(address, {}, {.isBbs = true, .autoLogin = true});
    return session.state == kStateConnected;
  }
  // Runs on a worker thread; one run at a time.
  void Start(std::function<void(ScreenWaits&)> run) {
    Cancel();
    cancelled = false;
    ended = false;
    worker_ = std::thread([this, run = std::move(run)] {
      ScreenWaits waits(session, classifier.Pages(), cancelled);
      run(waits);
      ended = true;
    });
  }
  // Waits for the run to end by itself.
  void Join() {
    if (worker_.joinable()) worker_.join();
  }
  void Cancel() {
    cancelled = true;
    Join();
  }

  const ScreenSnapshot& Screen() {
    session.live.Read(copy_);
    return copy_.screen;
  }
  std::string Dump() { return DumpScreen(Screen()); }

 private:
  NotifyTarget* const notify_;  // given to `session` below

 public:
  ScreenClassifier classifier;
  TermSession session{[this] {
    SessionOptions options;
    options.watcher = &classifier;
    options.notify = notify_;
    return options;
  }()};
  std::atomic<bool> cancelled{false};
  std::atomic<bool> ended{false};

 private:
  LiveScreen::Copy copy_;
  std::thread worker_;
};

}  // namespace quillet
