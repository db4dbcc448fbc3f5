// A session as the program makes it, and automations that run on a worker thread of their own on it. A base
// for fixtures that have loaded the character tables.
#pragma once

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

#include "bbs/automation/screen_waits.h"
#include "bbs/screen_classifier.h"
#include "core/term_session.h"
#include "tests/support/wait_until.h"

namespace quillet {

class AutomationRunner {
 protected:
  using Meanwhile = std::function<void()>;
  // Returns what the automation returns; one that does not end fails the test.
  template <typename Automation>
  auto Await(
      Automation automation, const Meanwhile& meanwhile = [] {}) {
    std::atomic<bool> started{false}, ended{false};
    decltype(automation(*static_cast<ScreenWaits*>(nullptr))) result{};
    std::thread worker([&] {
      ScreenWaits waits(session_, pages_, cancelled_);
      started = true;
      result = automation(waits);
      ended = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return started.load(); }));
    meanwhile();
    EXPECT_TRUE(WaitUntil([&] { return ended.load(); }, std::chrono::seconds(60)));
    cancelled_ = true;
    worker.join();
    cancelled_ = false;
    return result;
  }

  std::atomic<bool> cancelled_{false};
  ScreenClassifier classifier_;
  const PageTests& pages_ = classifier_.Pages();
  TermSession session_{[this] {
    SessionOptions options;
    options.watcher = &classifier_;
    return options;
  }()};
};

}  // namespace quillet
