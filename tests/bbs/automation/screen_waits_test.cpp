#include "bbs/automation/screen_waits.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

std::string BoardList() {
  return kClearScreen + At(0, 0, u"【看板列表】") + At(3, 0, u"●") + At(3, 1);
}
std::string Menu() {
  return kClearScreen + At(0, 0, u"【主功能表】") + At(12, 24, u"●") + At(12, 25);
}
std::string Pause() {
  return kClearScreen + At(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ") + At(23, 79);
}
// Complete with the bar's last blank; `bar` is the colour of the left part: 45 the first page, 44 the last.
std::string Reader(const std::string& bar) {
  return kClearScreen + At(23, 0) + "\x1b[1;37;" + bar + "m" + ToBig5(u"  瀏覽 第 1/2 頁 ") +
         "\x1b[0;30;47m" + std::string(62, ' ') + "\x1b[m" + At(23, 79);
}
std::string DisputedNotice() {
  return kClearScreen + At(11, 0, u"        本篇文章內容經站方授權之板務管理人員判斷有尚待證實之處，") +
         At(12, 0, u"        請使用者於閱讀時自行參閱其他資訊來源，對文章內容真實性進一步查證。") +
         At(23, 0) + "\x1b[1;37;44m" + ToBig5(u"  瀏覽 第 1/1 頁") + std::string(63, ' ') + "\x1b[m" +
         At(23, 79);
}

using ScreenWaitsTest = AutomationTest;

TEST_F(ScreenWaitsTest, EveryWaitEndsWithItsConnectionOrWhenCancelled) {
  const std::function<bool(ScreenWaits&)> waits[] = {
      [](ScreenWaits& w) { return w.WaitUntil([](const ScreenSnapshot&) { return false; }); },
      [](ScreenWaits& w) { return w.WaitForListCursor(); },
      [](ScreenWaits& w) {
        return w.WaitForProbes(Want::kMatch, {{5, 0, u"never"}}) != 0;
      },
      [](ScreenWaits& w) { return w.EnterBoardFromPrompt(ScreenWaits::BoardName::kAtPrompt); },
      [](ScreenWaits& w) { return w.EnterBoardFromPrompt(ScreenWaits::BoardName::kAlreadyEntered); },
      [](ScreenWaits& w) { return w.OpenArticleUnderCursor(ArticlePart::kTop); },
      [](ScreenWaits& w) { return w.WaitForNumberEcho(7); },
      [](ScreenWaits& w) { return w.Sleep(std::chrono::hours(1)); },
  };
  enum class End { kCancel, kDisconnect, kReconnect, kWorkerDisconnects };
  for (const End end : {End::kCancel, End::kDisconnect, End::kReconnect, End::kWorkerDisconnects}) {
    for (const auto& wait : waits) {
      Connect(PlayTurns({}));
      std::atomic<bool> started{false};
      std::atomic<bool> ended{false};
      bool result = true;
      std::thread worker([&] {
        ScreenWaits own(session_, classifier_.Pages(), cancelled_);
        started = true;
        if (end == End::kWorkerDisconnects) own.Disconnect();
        result = wait(own);
        ended = true;
      });
      EXPECT_TRUE(WaitUntil([&] { return started.load(); }));
      if (end == End::kCancel) cancelled_ = true;
      if (end == End::kDisconnect) session_.Disconnect();
      if (end == End::kReconnect) Connect(PlayTurns({}));
      EXPECT_TRUE(WaitUntil([&] { return ended.load(); })) << static_cast<int>(end);
      cancelled_ = true;
      worker.join();
      cancelled_ = false;
      EXPECT_FALSE(result);
    }
  }
}

TEST_F(ScreenWaitsTest, OnlyTheConnectionAskedForIsEnded) {
  Connect(PlayTurns({{"x", Menu()}}, 1));
  session_.RequestDisconnect(session_.connectionNumber - 1);
  session_.RequestDisconnect(session_.connectionNumber + 1);
  session_.SendBytes("x");
  EXPECT_TRUE(Await([](ScreenWaits& waits) { return waits.WaitForListCursor(); })) << "it goes on";
  session_.RequestDisconnect(session_.connectionNumber);
  EXPECT_TRUE(WaitUntil([&] { return session_.state == SessionState::kClosed; }));
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kClosedByUser);
}

TEST_F(ScreenWaitsTest, ProbesAreTestedInOrder) {
  Show(Menu() + At(5, 10, u"第一") + At(12, 25));
  const auto probe = [this](Want want, const std::vector<ScreenProbe>& probes) {
    return Await([&](ScreenWaits& waits) { return waits.WaitForProbes(want, probes); });
  };
  EXPECT_EQ(probe(Want::kMatch, {{5, 10, u"第二"}, {5, 10, u"第一"}, {0, 0, u"【"}}), 2);
  EXPECT_EQ(probe(Want::kMatch, {{5, 9, u"第一"}, {0, 2, u"主"}}), 2);
  EXPECT_EQ(probe(Want::kNoMatch, {{5, 10, u"第一"}, {0, 0, u"【"}, {12, 24, u"○"}}), 3);
}

// A page with a bracketed title whose cursor is on the bottom row is still being drawn, unless something
// there waits for the user.
TEST_F(ScreenWaitsTest, ProbesCountOnAFinishedPageOnly) {
  struct Case {
    std::string page;
    bool ready;
  };
  const std::string title = kClearScreen + At(0, 0, u"【板主:someone】");
  const Case cases[] = {
      {title + At(5, 0), true},
      {title + At(23, 40), false},
      {title + At(23, 79), false},
      {kClearScreen + At(0, 0, u"主功能表") + At(23, 40), true},
      {Pause() + At(0, 0, u"【板主") + At(23, 79), true},
      {Pause() + At(0, 0, u"【板主") + At(23, 78), false},
      {title + At(23, 0, u" ◆ 沒有這個看板") + At(23, 79), true},
      {title + At(23, 0, u" ◆ 沒有這個看板") + At(23, 60), false},
      {title + At(23, 0, u"跳至第幾項: ") + FieldAt(23, 12), true},
      {title + At(23, 0) + "\x1b[30;47m" + std::string(40, ' ') + "\x1b[m" + At(23, 30), false},
      {title + At(23, 0, u"您覺得這篇文章") + At(23, 40), true},
      {title + StarLine(23), true},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(&each - cases);
    Show(each.page);
    std::thread giveUp;
    const int found = Await([&](ScreenWaits& waits) {
      if (!each.ready) {
        giveUp = std::thread([this] {
          std::this_thread::sleep_for(std::chrono::milliseconds(40));  // several looks
          cancelled_ = true;
        });
      }
      return waits.WaitForProbes(Want::kMatch, {{0, 0, u"【"}, {0, 0, u"主功能表"}});
    });
    if (giveUp.joinable()) giveUp.join();
    cancelled_ = false;
    EXPECT_EQ(found != 0, each.ready);
  }
}

TEST_F(ScreenWaitsTest, ABoardIsEnteredFromThePromptWhateverComesBefore) {
  const auto enter = [](ScreenWaits& waits) {
    return waits.EnterBoardFromPrompt(ScreenWaits::BoardName::kAtPrompt);
  };
  EXPECT_TRUE(Follow({{"", BoardPrompt()}, {"\r", ArticleList()}}, enter));
  // The greeting of a board, and then the list.
  EXPECT_TRUE(Follow({{"", BoardPrompt()}, {"\r", Pause()}, {"\x03", ArticleList()}}, enter));
  // In the board list the name only selects.
  EXPECT_TRUE(Follow({{"", BoardList()}, {"", BoardPrompt()}, {"\r", BoardList()}, {"\r\x03", ArticleList()}},
                     enter));
  EXPECT_TRUE(Follow({{"", Menu()}, {"\r\x03", ArticleList()}}, [](ScreenWaits& waits) {
    return waits.EnterBoardFromPrompt(ScreenWaits::BoardName::kAlreadyEntered);
  }));
}

TEST_F(ScreenWaitsTest, AMessageThatSwallowsTheKeyIsDismissedAndTheKeyRepeated) {
  const auto asking = [this](const ScreenSnapshot& screen) {
    return classifier_.Pages().IsInputField(screen);
  };
  const auto answered = [this](const ScreenSnapshot& screen) {
    return classifier_.Pages().IsListCursor(screen);
  };
  EXPECT_TRUE(Follow(
      {{"", BoardPrompt()}, {"\r", StarLine(23)}, {"\n", At(23, 0) + "\x1b[K" + At(1, 40)}, {"\r", Menu()}},
      [&](ScreenWaits& waits) { return waits.WaitUntil(asking) && waits.SendKey("\r", answered, asking); }));
}

// The extra ones would choose and confirm things on the page beneath.
TEST_F(ScreenWaitsTest, EachMessageGetsOneKeyHoweverSlowTheLine) {
  for (const int thinking : {120, 900})
    EXPECT_TRUE(Follow(
        {{"", Menu() + StarLine(22)}, {"\n", StarLine(22)}, {"\n", Menu()}},
        [this](ScreenWaits& waits) {
          waits.WaitUntil([this](const auto& screen) { return classifier_.Pages().IsStarLine(screen); });
          waits.ResendWhileInterrupted(ScreenWaits::StarLine::kOnlyPending);
          return waits.DismissMessages();
        },
        thinking));
}

TEST_F(ScreenWaitsTest, AnArticleIsOpenedAtTheTopOrTheEnd) {
  const auto top = [](ScreenWaits& waits) {
    return waits.WaitForListCursor() && waits.OpenArticleUnderCursor(ArticlePart::kTop);
  };
  const auto end = [](ScreenWaits& waits) {
    return waits.WaitForListCursor() && waits.OpenArticleUnderCursor(ArticlePart::kEnd);
  };
  EXPECT_TRUE(Follow({{"", ArticleList()}, {"l", Reader("46")}, {"N", Reader("45")}}, top));
  EXPECT_TRUE(Follow({{"", ArticleList()}, {"l", Reader("45")}, {"N$$", Reader("44")}}, end));
  EXPECT_TRUE(Follow({{"", ArticleList()}, {"l", DisputedNotice()}, {"\rN", Reader("45")}}, top));
  EXPECT_TRUE(Follow({{"", ArticleList()}, {"l", DisputedNotice()}, {"\rN$$", Reader("44")}}, end));
  const std::string empty = At(23, 0, u" ◆ 此文章無內容                     ") + At(23, 79);
  EXPECT_FALSE(Follow({{"", ArticleList()}, {"l", empty}}, top));

  // Nor does it matter that the session's own classification is suspended.
  EXPECT_TRUE(
      Follow({{"", ArticleList()}, {"l", Reader("45")}, {"N$$", Reader("44")}}, [&](ScreenWaits& waits) {
        waits.Session().frozen = true;
        return end(waits);
      }));
}

TEST_F(ScreenWaitsTest, EachMessageIsDismissedOnce) {
  using Until = ScreenWaits::StarLine;
  const auto showing = [this](const ScreenSnapshot& screen) {
    return classifier_.Pages().IsStarLine(screen);
  };
  // A page that does not change has been told once; who wants to go on regardless repeats the key.
  Connect(PlayTurns({{"", Menu() + StarLine(22)}}));
  EXPECT_TRUE(Await([&](ScreenWaits& waits) {
    return waits.WaitUntil(showing) && waits.ResendWhileInterrupted(Until::kOnlyPending) &&
           !waits.ResendWhileInterrupted(Until::kOnlyPending);
  }));
  EXPECT_EQ(Typed(), "\n");
  EXPECT_TRUE(Follow({{"", Menu() + StarLine(22)}, {"\n\n", Menu()}}, [&](ScreenWaits& waits) {
    return waits.WaitUntil(showing) && waits.ResendWhileInterrupted(Until::kUntilGone) &&
           (waits.Flags() & PF_STAR_LINE) == 0;
  }));
  EXPECT_FALSE(Follow({{"", Menu()}}, [](ScreenWaits& waits) {
    return waits.WaitForListCursor() && waits.ResendWhileInterrupted(Until::kUntilGone);
  }));
}

}  // namespace
}  // namespace quillet
