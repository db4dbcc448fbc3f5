// An automation on a thread of its own against a BBS that plays turns, and the pages of boards that the turns
// are made of. For the tests of this folder.
#pragma once

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bbs/automation/screen_waits.h"
#include "bbs/screen_classifier.h"
#include "tests/support/tables.h"
#include "tests/support/turns.h"
#include "tests/support/wait_until.h"

namespace quillet {

inline std::string Star(int row) {
  return At(row, 0) + "\x1b[1;33;46m" + ToBig5(u"★someone") + "\x1b[37;45m hello \x1b[m ";
}
inline std::string StarLine(int row) {
  return Star(row) + At(row, 16);
}
inline std::string BoardPrompt() {
  return At(0, 0, u"【 選擇看板 】") + At(1, 0, u"請輸入看板名稱(按空白鍵自動搜尋): ") + FieldAt(1, 40);
}
inline std::string ArticleList() {
  return kClearScreen + At(0, 0, u"【板主:someone】") +
         At(1, 0, u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ") +
         At(23, 0, u" 文章選讀 ") + At(3, 0, u"●") + At(3, 1);
}

class AutomationTest : public WithTables {
 protected:
  void Connect(std::shared_ptr<TransportScript> script) {
    script_ = std::move(script);
    session_.ConnectWith(std::make_unique<ScriptedTransport>(script_), {}, {.isBbs = true});
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
    EXPECT_TRUE(WaitUntil([&] { return ended.load(); })) << Typed();
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
    EXPECT_TRUE(WaitUntil([&] { return Typed().size() >= TypedIn(turns).size(); }));
    EXPECT_EQ(Typed(), TypedIn(turns));
    return result;
  }
  std::string Typed() const { return script_->Written(); }

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
