#include "bbs/automation/page_walk.h"

#include "bbs/automation/log_out.h"
#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

class PageWalkTest : public AutomationTest {
 protected:
  PageWalk::Step Walk(const Turns& turns) {
    constexpr std::chrono::milliseconds kReaction{300};
    return Follow(
        turns, [&](ScreenWaits& waits) { return PageWalk(waits, kReaction).ReachList(); }, 20);
  }
};

TEST_F(PageWalkTest, EachPageIsLeftByItsKey) {
  const struct {
    std::string page, key;
  } cases[] = {
      {Reader(), "q"},
      {DisputedNotice(), "q"},
      {kClearScreen + At(23, 0, u" ★ 這份文件是可播放的文字動畫，要開始播放嗎？ [Y/n]"), "q"},
      {kClearScreen + At(23, 0, u" >>> 動畫播放中... 可按 q, Ctrl-C 或其它任意鍵停止 "), "\n"},
      {kClearScreen + Banner(), "\n"},
      {ArticleList() + ArticleBox(u"1aBc-_42"), "\n"},
      {ArticleList() + Message(u"文章沒有送出"), "\n"},
      {MainMenu() + StarLine(22), "\n"},
      {MainMenu(), ""},
  };
  for (const auto& each : cases)
    EXPECT_EQ(Walk({{"", each.page}, {each.key, ArticleList()}}), PageWalk::Step::kDone) << &each - cases;
  EXPECT_EQ(Walk({{"", DisputedNotice()}, {"q", Message(u"x")}, {"\n", Reader()}, {"q", ArticleList()}}),
            PageWalk::Step::kDone);
}

TEST_F(PageWalkTest, NothingIsTypedWhereTheUserTypesOrNothingIsKnown) {
  const std::string pages[] = {
      At(0, 0, u"檔案處理：[S]儲存 (A)放棄 (E)繼續編輯? [S] ") + FieldAt(0, 46),
      Editor(),
      Reader() + Bottom(u"推 me: ") + At(23, 79),
      Reader() + HalfDrawnList(),
  };
  for (const std::string& page : pages)
    EXPECT_EQ(Walk({{"", page}}), PageWalk::Step::kBusy) << &page - pages;
  const auto walk = [](ScreenWaits& waits) { return PageWalk(waits).ReachList(); };
  EXPECT_EQ(FollowUntil({{"", pages[3]}}, walk, [this] { End(Ending::kCancelled); }), PageWalk::Step::kEnded);
}

TEST_F(PageWalkTest, FromWhereverTheUserIsGoodbyeIsSaid) {
  const std::string question = At(22, 0, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] ") + FieldAt(22, 48);
  EXPECT_EQ(Follow({{"", kClearScreen + Message(u"文章沒有送出")},
                    {"\n", ArticleList()},
                    {kLeft, BoardList()},
                    {kLeft, MainMenu()},
                    {"g\r", question},
                    {"y\r", kClearScreen + At(5, 0, u"下次再見")}},
                   LogOut),
            LogOutResult::kSaidGoodbye);
  EXPECT_EQ(Follow({{"", BoardPrompt()}}, LogOut), LogOutResult::kNoWay);
}

}  // namespace
}  // namespace quillet
