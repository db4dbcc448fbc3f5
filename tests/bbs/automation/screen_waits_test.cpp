#include "bbs/automation/screen_waits.h"

#include "bbs/automation/board_entry.h"
#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

using ScreenWaitsTest = AutomationTest;

TEST_F(ScreenWaitsTest, EveryWaitEndsWithItsConnectionOrWhenCancelledAndNothingMoreIsSent) {
  const std::function<bool(ScreenWaits&)> waits[] = {
      [](ScreenWaits& w) { return w.WaitUntil([](const ScreenSnapshot&) { return false; }); },
      [](ScreenWaits& w) { return w.WaitForListCursor(); },
      [](ScreenWaits& w) {
        return w.WaitForProbes(Want::kMatch, {{5, 0, u"never"}}) != 0;
      },
      [](ScreenWaits& w) { return EnterBoardFromPrompt(w, BoardName::kAtPrompt); },
      [](ScreenWaits& w) { return EnterBoardFromPrompt(w, BoardName::kAlreadyEntered); },
      [](ScreenWaits& w) { return w.OpenArticleUnderCursor(ArticlePart::kTop); },
      [](ScreenWaits& w) { return w.WaitForNumberEcho(7); },
      [](ScreenWaits& w) { return w.Sleep(std::chrono::hours(1)); },
  };
  enum class End { kCancel, kDisconnect, kReconnect, kWorkerDisconnects, kTimeIsUp };
  for (const End end :
       {End::kCancel, End::kDisconnect, End::kReconnect, End::kWorkerDisconnects, End::kTimeIsUp}) {
    for (const auto& wait : waits) {
      Connect(PlayTurns({}));
      std::atomic<bool> started{false};
      std::thread user([&] {
        EXPECT_TRUE(WaitUntil([&] { return started.load(); }));
        if (end == End::kCancel) cancelled_ = true;
        if (end == End::kDisconnect) session_.Disconnect();
        if (end == End::kReconnect) Connect(PlayTurns({}));
      });
      EXPECT_FALSE(Await([&](ScreenWaits& own) {
        started = true;
        if (end == End::kWorkerDisconnects) own.Disconnect();
        if (end == End::kTimeIsUp) own.EndAfter(std::chrono::milliseconds(10));
        const bool result = wait(own);
        own.Send("x");
        own.SendText(u"x");
        return result;
      })) << static_cast<int>(end);
      user.join();
      EXPECT_EQ(Typed().find('x'), std::string::npos) << static_cast<int>(end);
    }
  }
}

TEST_F(ScreenWaitsTest, OnlyTheConnectionAskedForIsEnded) {
  Connect(PlayTurns({{"x", MainMenu()}}, 1));
  session_.RequestDisconnect(session_.connectionNumber - 1);
  session_.RequestDisconnect(session_.connectionNumber + 1);
  session_.SendBytes("x");
  EXPECT_TRUE(Await([](ScreenWaits& waits) { return waits.WaitForListCursor(); })) << "it goes on";
  session_.RequestDisconnect(session_.connectionNumber);
  EXPECT_TRUE(WaitUntil([&] { return session_.state == SessionState::kClosed; }));
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kClosedByUser);
}

TEST_F(ScreenWaitsTest, ProbesAreTestedInOrder) {
  Show(MainMenu() + At(5, 10, u"第一") + At(12, 25));
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
  const std::string title = kClearScreen + At(0, 0, u"【板主:someone】");
  const struct {
    std::string page;
    bool ready;
  } cases[] = {
      {title + At(5, 0), true},
      {title + At(23, 40), false},
      {title + At(23, 79), false},
      {kClearScreen + At(0, 0, u"主功能表") + At(23, 40), true},
      {title + Banner(), true},
      {title + Banner() + At(23, 78), false},
      {title + At(23, 0, u" ◆ 沒有這個看板") + At(23, 79), true},
      {title + At(23, 0, u" ◆ 沒有這個看板") + At(23, 60), false},
      {title + At(23, 0, u"跳至第幾項: ") + FieldAt(23, 12), true},
      {title + At(23, 0) + "\x1b[30;47m" + std::string(40, ' ') + "\x1b[m" + At(23, 30), false},
      {title + At(23, 0, u"您覺得這篇文章") + At(23, 40), true},
      {title + StarLine(23), true},
      {Reader() + At(0, 0, u"【板主:someone】") + At(23, 79), true},
  };
  for (const auto& each : cases) {
    Show(each.page);
    const int found = Await([&](ScreenWaits& waits) {
      if (!each.ready) waits.EndAfter(std::chrono::milliseconds(40));  // several looks
      return waits.WaitForProbes(Want::kMatch, {{0, 0, u"【"}, {0, 0, u"主功能表"}});
    });
    EXPECT_EQ(found != 0, each.ready) << &each - cases;
  }
}

TEST_F(ScreenWaitsTest, ANumberIsWaitedForUntilTheListHasTakenIt) {
  const std::string echo = At(23, 72, u"12") + At(23, 74);
  EXPECT_TRUE(Follow(
      {{"", BoardPrompt()}, {"12", kClearScreen + echo}, {"", ArticleList()}},
      [](ScreenWaits& waits) {
        waits.Send("12");
        return waits.WaitForNumberEcho(12) && waits.Seen().cursorRow == 3;
      },
      20));
}

TEST_F(ScreenWaitsTest, AnArticleIsOpenedAtTheTopOrTheEnd) {
  const struct {
    ArticlePart part;
    std::string first, keys, then;  // nothing typed: it is not opened
  } cases[] = {
      {ArticlePart::kTop, Reader("46"), "N", Reader("45")},
      {ArticlePart::kEnd, Reader("45"), "N$$", Reader("44")},
      {ArticlePart::kTop, DisputedNotice(), "\rN", Reader("45")},
      {ArticlePart::kEnd, DisputedNotice(), "\rN$$", Reader("44")},
      {ArticlePart::kTop, Message(u"此文章無內容 "), "", ""},
  };
  // Nor does it matter that the session's own classification is suspended.
  for (const bool frozen : {false, true})
    for (const auto& each : cases)
      EXPECT_EQ(Follow({{"", ArticleList()}, {"l", each.first}, {each.keys, each.then}},
                       [&](ScreenWaits& waits) {
                         if (!waits.WaitForListCursor()) return false;
                         session_.frozen = frozen;
                         return waits.OpenArticleUnderCursor(each.part);
                       }),
                !each.keys.empty())
          << &each - cases << frozen;
}

// The extra keys would choose and confirm things on the page beneath.
TEST_F(ScreenWaitsTest, EachMessageGetsOneKeyHoweverSlowTheLine) {
  for (const int thinking : {120, 900})
    EXPECT_TRUE(Follow(
        {{"", MainMenu() + StarLine(22)}, {"\n", StarLine(22)}, {"\n", MainMenu()}},
        [this](ScreenWaits& waits) {
          waits.WaitUntil([this](const auto& screen) { return classifier_.Pages().IsStarLine(screen); });
          waits.ResendWhileInterrupted(ScreenWaits::StarLine::kOnlyPending);
          return waits.DismissMessages();
        },
        thinking));
}

TEST_F(ScreenWaitsTest, WhoWantsToGoOnRegardlessRepeatsTheKey) {
  using Until = ScreenWaits::StarLine;
  const auto showing = [this](const ScreenSnapshot& screen) {
    return classifier_.Pages().IsStarLine(screen);
  };
  const auto resend = [&](Until first, Until second) {
    return [=](ScreenWaits& waits) {
      return waits.WaitUntil(showing) && waits.ResendWhileInterrupted(first) &&
             !waits.ResendWhileInterrupted(second);
    };
  };
  const std::string page = MainMenu() + StarLine(22);
  EXPECT_TRUE(Follow({{"", page}, {"\n", ""}}, resend(Until::kOnlyPending, Until::kOnlyPending)));
  EXPECT_TRUE(Follow({{"", page}, {"\n\n", MainMenu()}}, resend(Until::kUntilGone, Until::kOnlyPending)));
  EXPECT_FALSE(Follow({{"", MainMenu()}}, [](ScreenWaits& waits) {
    return waits.WaitForListCursor() && waits.ResendWhileInterrupted(Until::kUntilGone);
  }));
}

}  // namespace
}  // namespace quillet
