#include "bbs/automation/screen_waits.h"

#include "bbs/automation/board_entry.h"
#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

using ScreenWaitsTest = AutomationTest;
using Milliseconds = std::chrono::milliseconds;

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
      // These end by themselves.
      [](ScreenWaits& w) { return w.Disconnect(), w.WaitForListCursor(); },
      [](ScreenWaits& w) { return w.EndAfter(Milliseconds(10)), w.WaitForListCursor(); },
  };
  const std::function<void()> ends[] = {[] {}, [this] { cancelled_ = true; },
                                        [this] { session_.Disconnect(); }, [this] { Connect({}); }};
  for (const auto& end : ends)
    for (const auto& wait : waits) {
      if (&end == ends && std::end(waits) - &wait > 2) continue;
      SCOPED_TRACE(testing::Message() << &end - ends << "," << &wait - waits);
      Connect({});
      const auto run = [&](ScreenWaits& own) {
        const bool result = wait(own);
        own.Send("x");
        own.SendText(u"x");
        return result;
      };
      EXPECT_FALSE(Await(run, end));
      EXPECT_EQ(Typed().find('x'), std::string::npos);
    }
}

TEST_F(ScreenWaitsTest, OnlyTheConnectionAskedForIsEnded) {
  Connect({{"x", MainMenu()}});
  session_.RequestDisconnect(session_.connectionNumber - 1);
  session_.RequestDisconnect(session_.connectionNumber + 1);
  session_.SendBytes("x");
  EXPECT_TRUE(Await([](ScreenWaits& waits) { return waits.WaitForListCursor(); })) << "it goes on";
  session_.RequestDisconnect(session_.connectionNumber);
  EXPECT_TRUE(WaitUntil([&] { return session_.state == SessionState::kClosed; }));
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kClosedByUser);
}

TEST_F(ScreenWaitsTest, ProbesAreTestedInOrder) {
  const auto probe = [this](Want want, const std::vector<ScreenProbe>& probes) {
    const auto wait = [&](ScreenWaits& waits) {
      return waits.WaitForListCursor() ? waits.WaitForProbes(want, probes) : 0;
    };
    return Follow({{"", MainMenu() + At(5, 10, u"第一") + At(12, 25)}}, wait);
  };
  EXPECT_EQ(probe(Want::kMatch, {{5, 10, u"第二"}, {5, 10, u"第一"}, {0, 0, u"【"}}), 2);
  EXPECT_EQ(probe(Want::kMatch, {{5, 9, u"第一"}, {0, 2, u"主"}}), 2);
  EXPECT_EQ(probe(Want::kNoMatch, {{5, 10, u"第一"}, {0, 0, u"【"}, {12, 24, u"○"}}), 3);
}

// A page with a bracketed title whose cursor is on the bottom row is still being drawn, unless something
// there waits for the user.
TEST_F(ScreenWaitsTest, ProbesCountOnAFinishedPageOnly) {
  const std::string title = kClearScreen + At(0, 0, u"【板主:someone】");
  const std::string ready[] = {
      title + At(5, 0),
      kClearScreen + At(0, 0, u"主功能表") + At(23, 40),
      title + Banner(),
      title + Message(u"沒有這個看板"),
      title + At(23, 0, u"跳至第幾項: ") + FieldAt(23, 12),
      title + At(23, 0, u"您覺得這篇文章") + At(23, 40),
      title + StarLine(23),
      Reader() + At(0, 0, u"【板主:someone】") + At(23, 79),
  };
  const std::string unready[] = {
      title + At(23, 40),
      title + At(23, 79),
      title + Banner() + At(23, 78),
      title + Message(u"沒有這個看板") + At(23, 60),
      title + At(23, 0) + "\x1b[30;47m" + std::string(40, ' ') + "\x1b[m" + At(23, 30),
  };
  const auto find = [this](const std::string& page, Milliseconds limit) {
    return Follow({{"", page}}, [&](ScreenWaits& waits) {
      waits.WaitUntil([](const ScreenSnapshot& screen) { return screen.cursorRow != 0; });
      waits.EndAfter(limit);
      return waits.WaitForProbes(Want::kMatch, {{0, 0, u"【"}, {0, 0, u"主功能表"}});
    });
  };
  for (const std::string& page : ready)
    EXPECT_NE(find(page, std::chrono::seconds(20)), 0) << &page - ready;
  for (const std::string& page : unready)
    EXPECT_EQ(find(page, Milliseconds(40)), 0) << &page - unready;  // several looks
}

TEST_F(ScreenWaitsTest, ANumberIsWaitedForUntilTheListHasTakenIt) {
  const auto type = [](ScreenWaits& waits) {
    waits.Send("12");
    return waits.WaitForNumberEcho(12) && waits.Seen().cursorRow == 3;
  };
  EXPECT_TRUE(Follow({{"", kClearScreen + At(23, 71, u"12")}, {"12", At(23, 72, u"12")}, {"", ArticleList()}},
                     type, 20));
}

TEST_F(ScreenWaitsTest, AnArticleIsOpenedAtTheTopOrTheEnd) {
  const struct {
    ArticlePart part;
    std::string first, keys, then;  // no keys: it is not opened
  } cases[] = {
      {ArticlePart::kTop, Reader("46"), "N", Reader("45")},
      {ArticlePart::kEnd, Reader("45"), "N$$", Reader("44")},
      {ArticlePart::kTop, DisputedNotice(), "\rN", Reader("45")},
      {ArticlePart::kEnd, DisputedNotice(), "\rN$$", Reader("44")},
      {ArticlePart::kTop, Message(u"此文章無內容 "), "", ""},
  };
  for (const auto& each : cases) {
    const auto open = [&](ScreenWaits& waits) {
      if (!waits.WaitForListCursor()) return false;
      // Nor does it matter that the session's own classification is suspended.
      session_.frozen = &each - cases == 1;
      return waits.OpenArticleUnderCursor(each.part);
    };
    EXPECT_EQ(Follow({{"", ArticleList()}, {"l", each.first}, {each.keys, each.then}}, open),
              !each.keys.empty())
        << &each - cases;
  }
}

// Extra keys would choose and confirm things on the page beneath.
TEST_F(ScreenWaitsTest, EachMessageGetsOneKeyHoweverSlowTheLine) {
  using Until = ScreenWaits::StarLine;
  const auto isShown = [this](const ScreenSnapshot& screen) { return pages_.IsStarLine(screen); };
  const std::string page = MainMenu() + StarLine(22);
  const auto dismiss = [&](ScreenWaits& waits) {
    return waits.WaitUntil(isShown) && waits.ResendWhileInterrupted(Until::kOnlyPending) &&
           waits.DismissMessages();
  };
  for (const int thinking : {120, 900})
    EXPECT_TRUE(Follow({{"", page}, {"\n", StarLine(22)}, {"\n", MainMenu()}}, dismiss, thinking));
  // Who wants to go on regardless repeats it until none is left.
  for (const Until until : {Until::kOnlyPending, Until::kUntilGone}) {
    const auto resend = [&](ScreenWaits& waits) {
      return waits.WaitUntil(isShown) && waits.ResendWhileInterrupted(until) &&
             !waits.ResendWhileInterrupted(Until::kOnlyPending);
    };
    const bool repeats = until == Until::kUntilGone;
    EXPECT_TRUE(Follow({{"", page}, {repeats ? "\n\n" : "\n", repeats ? MainMenu() : ""}}, resend));
  }
}

}  // namespace
}  // namespace quillet
