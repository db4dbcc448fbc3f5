#include "bbs/farewell_watch.h"

#include <gtest/gtest.h>

#include "bbs/idle_key.h"
#include "tests/support/pages.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

ScreenSnapshot Notice(std::u16string_view words) {
  return Classified(ScreenBuilder().Put(10, 10, words).Cursor(23, 0));
}
ScreenSnapshot Leaving(std::u16string_view answer = {}) {
  const std::u16string question = u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] " + std::u16string(answer);
  return Classified(ScreenBuilder().Put(22, 0, question).Fill(22, 45, 48, kAttrInputField).Cursor(22, 45));
}

using FarewellWatchTest = WithTables;

TEST_F(FarewellWatchTest, OnlyAPageOfTheBbssOwnTellsOfAnotherLogin) {
  const FarewellWatch watch;
  EXPECT_EQ(watch.Read(Notice(u"這個代號已在別處登入，本連線到此結束。")), Farewell::kReplaced);
  EXPECT_EQ(watch.Read(Notice(u"注意: 您有其它連線已登入此帳號")), Farewell::kReplaced);
  EXPECT_EQ(watch.Read(Notice(u"謝謝光臨，下次再見！")), Farewell::kNone);
  ScreenBuilder quoted;
  quoted.Put(5, 0, u"它說「這個代號已在別處登入」，是什麼意思？");
  EXPECT_EQ(watch.Read(ReaderMiddle(quoted)), Farewell::kNone) << "somebody has written of it";
  ScreenBuilder asked;
  asked.Put(21, 0, u"注意: 您有其它連線已登入此帳號").Put(22, 0, u"您想刪除其他重複登入的連線嗎？[Y/n] ", 2);
  EXPECT_EQ(watch.Read(Classified(asked.Fill(22, 38, 40, kAttrInputField).Cursor(22, 38))), Farewell::kNone)
      << "this one is asked about the others";
}

TEST_F(FarewellWatchTest, WhoWasAskedWhetherHeLeavesHasLeftUnlessHeIsSeenInside) {
  FarewellWatch watch;
  watch.Look(MenuPage(12));
  EXPECT_EQ(watch.Last(), Farewell::kNone);
  watch.Look(Leaving(u"y"));
  watch.Look(Notice(u"謝謝光臨，下次再見！"));
  EXPECT_EQ(watch.Last(), Farewell::kLoggedOut);
  watch.Look(MenuPage(12));
  EXPECT_EQ(watch.Last(), Farewell::kNone) << "he has stayed";
  watch.Look(Leaving());
  watch.Forget();
  EXPECT_EQ(watch.Last(), Farewell::kNone);
}

TEST_F(FarewellWatchTest, TheIdleKeyGoesOnlyToPagesThatDrawThemselvesAnew) {
  const auto keyOn = [](const ScreenSnapshot& screen) { return IdleKey(Understand(screen)); };
  for (const ScreenSnapshot& page : {ArticleList(5, 22), BoardList(5, 22), MenuPage(12), ReaderMiddle()}) {
    EXPECT_EQ(keyOn(page), "\x0C");
    EXPECT_EQ(keyOn(StarLine(page)), "") << "a message would be gone";
  }
  ScreenSnapshot pushing = ReaderMiddle();
  pushing.pageFlags |= PF_PUSH_OVER_READER;
  const ScreenBuilder password = ScreenBuilder().Put(21, 0, u"請輸入您的密碼: ").Cursor(21, 16);
  ScreenBuilder playing;
  playing.Put(23, 0, u" >>> 動畫播放中... 可按 q, Ctrl-C 或其它任意鍵停止 ");
  const ScreenBuilder waiting =
      ScreenBuilder().Put(23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄  ");
  for (const ScreenSnapshot& page :
       {EditorPage(), TypingPage(), MessagePage(), pushing, Leaving(), Classified(password),
        Classified(playing), Classified(waiting), Classified(ScreenBuilder())})
    EXPECT_EQ(keyOn(page), "") << page.RowText(23);
}

}  // namespace
}  // namespace quillet
