// An automation on a thread of its own against a BBS that plays turns. For the tests of this folder.
#pragma once

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bbs/automation/screen_waits.h"
#include "bbs/screen_classifier.h"
#include "tests/bbs/automation/automation_pages.h"
#include "tests/support/tables.h"
#include "tests/support/wait_until.h"

namespace quillet {

class AutomationTest : public WithTables {
 protected:
  void Connect(std::shared_ptr<TransportScript> script) {
    script_ = std::move(script);
    session_.ConnectWith(std::make_unique<ScriptedTransport>(script_), {},
                         {.isBbs = true, .autoLogin = true});
  }
  // Connects to a BBS that shows the page and nothing else, and waits until it does.
  void Show(const std::string& page) {
    Connect(PlayTurns({{"", page + "\x1b[m"}}));
    LiveScreen::Copy copy;
    ASSERT_TRUE(WaitUntil([&] {
      session_.live.Read(copy);
      return copy.screen.pageFlags != 0 || copy.screen.cursorRow != 0;
    }));
  }
  // Runs an automation on a thread of its own; a run that does not end fails the test.
  template <typename Run>
  auto Await(Run run) {
    std::atomic<bool> ended{false};
    decltype(run(*static_cast<ScreenWaits*>(nullptr))) result{};
    std::thread worker([&] {
      ScreenWaits waits(session_, classifier_.Pages(), cancelled_);
      result = run(waits);
      ended = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return ended.load(); })) << script_->Written();
    cancelled_ = true;
    worker.join();
    cancelled_ = false;
    return result;
  }
  // The same with a BBS that plays the turns; all that the turns wait for must have been typed, and no more.
  template <typename Run>
  auto Follow(const std::vector<Turn>& turns, Run run, int thinking = 0) {
    Connect(PlayTurns(turns, thinking));
    const auto result = Await(run);
    EXPECT_EQ(Typed(), TypedIn(turns));
    return result;
  }
  // The BBS falls silent behind the turns, and when all has been typed `then` happens.
  template <typename Run>
  auto FollowUntil(const std::vector<Turn>& turns, Run run, const std::function<void()>& then) {
    Connect(PlayTurns(turns));
    const std::string expected = TypedIn(turns);
    std::thread other([&] {
      EXPECT_TRUE(WaitUntil([&] { return script_->Written().size() >= expected.size(); }));
      then();
    });
    const auto result = Await(run);
    other.join();
    EXPECT_EQ(Typed(), expected);
    return result;
  }
  // On this connection, all that has been sent so far included.
  std::string Typed() {
    constexpr char kLast = '\x1c';
    const std::string last(1, kLast);
    session_.SendBytes(last);
    EXPECT_TRUE(WaitUntil(
        [&] { return script_->Written().ends_with(last) || session_.state != SessionState::kConnected; }));
    std::string typed = script_->Written();
    std::erase(typed, kLast);
    return typed;
  }

  std::atomic<bool> cancelled_{false};
  ScreenClassifier classifier_;
  TermSession session_{[this] {
    SessionOptions options;
    options.watcher = &classifier_;
    return options;
  }()};
  std::shared_ptr<TransportScript> script_ = std::make_shared<TransportScript>();
};

}  // namespace quillet
