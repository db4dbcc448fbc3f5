// A connection as the program makes one: session, classifier and, on a thread of its own, an automation that
// can be cancelled.
#pragma once

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <thread>

#include "bbs/automation/screen_waits.h"
#include "bbs/screen_classifier.h"
#include "core/term_session.h"
#include "tests/demo/test_client.h"
#include "tests/support/wait_until.h"

namespace quillet {

class LiveSession {
 public:
  ~LiveSession() {
    Cancel();
    session.Disconnect();
  }

  bool Connect(const std::string& address) {
    session.Connect(address, {}, {.isBbs = true, .autoLogin = true});
    return session.state == SessionState::kConnected;
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
  // What the automation returns on the worker thread, waited for.
  template <typename Automation>
  auto Run(Automation automation) {
    decltype(automation(*static_cast<ScreenWaits*>(nullptr))) result{};
    Start([&](ScreenWaits& waits) { result = automation(waits); });
    EXPECT_TRUE(WaitUntil([&] { return ended.load(); }, std::chrono::seconds(60))) << Dump();
    Cancel();
    return result;
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

  ScreenClassifier classifier;
  TermSession session{[this] {
    SessionOptions options;
    options.watcher = &classifier;
    return options;
  }()};
  std::atomic<bool> cancelled{false};
  std::atomic<bool> ended{false};

 private:
  LiveScreen::Copy copy_;
  std::thread worker_;
};

}  // namespace quillet
