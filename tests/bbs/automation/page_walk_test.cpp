#include "bbs/automation/page_walk.h"

#include "bbs/automation/log_out.h"
#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

class PageWalkTest : public AutomationTest {
 protected:
  PageWalk::Step Walk(const std::vector<Turn>& turns) {
    return Follow(
        turns, [](ScreenWaits& waits) { return PageWalk(waits, std::chrono::milliseconds(300)).ReachList(); },
        20);
  }
};

TEST_F(PageWalkTest, EachPageIsLeftByItsKey) {
  const std::string playing = At(23, 0, u" >>> 動畫播放中... 可按 q, Ctrl-C 或其它任意鍵停止 ");
  const struct {
    std::string page, key;
  } cases[] = {
      {Reader(), "q"},
      {DisputedNotice(), "q"},
      {kClearScreen + At(23, 0, u" ★ 這份文件是可播放的文字動畫，要開始播放嗎？ [Y/n]"), "q"},
      {kClearScreen + playing, "\n"},
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

TEST_F(PageWalkTest, NothingIsTypedWhereTheUserTypes) {
  const std::string pages[] = {
      At(0, 0, u"檔案處理：[S]儲存 (A)放棄 (E)繼續編輯? [S] ") + FieldAt(0, 46),
      kClearScreen + At(23, 0, u" 編輯文章") + At(3, 1),
      Reader() + Bottom(u"推 me: ") + FieldAt(23, 7),
      Reader() + At(22, 0, u"[搜尋]關鍵字:") + FieldAt(22, 13),
      kClearScreen + At(5, 0, u"沒有人知道的畫面") + At(9, 40),
      // The list over the old status line, which is replaced last.
      Reader() + At(0, 0, u"【板主:someone】") + At(3, 0, u"●") + At(4, 0),
  };
  for (const std::string& page : pages)
    EXPECT_EQ(Walk({{"", page}}), PageWalk::Step::kBusy) << &page - pages;
  EXPECT_EQ(FollowUntil(
                {{"", pages[4]}}, [](ScreenWaits& waits) { return PageWalk(waits).ReachList(); },
                [this] { cancelled_ = true; }),
            PageWalk::Step::kEnded);
}

TEST_F(PageWalkTest, FromWhereverTheUserIsGoodbyeIsSaid) {
  const std::string question = At(22, 0, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] ") + FieldAt(22, 48);
  const auto logOut = [](ScreenWaits& waits) { return LogOut(waits); };
  EXPECT_EQ(Follow({{"", kClearScreen + Message(u"文章沒有送出")},
                    {"\n", ArticleList()},
                    {kLeft, BoardList()},
                    {kLeft, MainMenu()},
                    {"g\r", question},
                    {"y\r", kClearScreen + At(5, 0, u"下次再見")}},
                   logOut),
            LogOutResult::kSaidGoodbye);
  EXPECT_EQ(Follow({{"", BoardPrompt()}}, logOut), LogOutResult::kNoWay);
}

}  // namespace
}  // namespace quillet
