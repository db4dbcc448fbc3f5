#include "core/charset.h"
#include "demo/article_code.h"
#include "tests/demo/demo_fixture.h"

namespace quillet {
namespace {

using DemoReadingTest = DemoTest;

bool CursorAt(TestClient& client, int row) {
  return client.WaitFor([&](const ScreenSnapshot& screen) {
    return screen.cursorRow == row && client.Pages().IsArticleListStrict(screen);
  });
}

TEST_F(DemoReadingTest, TheListHasItsFieldsInTheirColumns) {
  const auto client = Client("alice", "wonder", "SandBox");
  EXPECT_TRUE(client->Has(0, 0, u"【板主:alice/bob】"));
  EXPECT_NE(client->Screen().RowText(0).find(ToBig5(u"看板《SandBox》")), std::string_view::npos);
  EXPECT_EQ(client->Screen().cursorRow, 9);  // the newest of seven
  EXPECT_TRUE(client->Has(3, 6, u"1 m"));
  EXPECT_TRUE(client->Has(3, 11, u"10/03 alice        □ [閒聊] 一百行"));
  EXPECT_TRUE(client->Has(4, 30, u"R: [閒聊] 一百行"));
  EXPECT_TRUE(client->Has(9, 30, u"轉 顏色"));
  EXPECT_TRUE(client->Has(7, 17, u"-            (本文已被刪除) [bob]"));
}

TEST_F(DemoReadingTest, TheListMovesPagesAndJumpsByNumber) {
  const auto client = Client("alice", "wonder", "Quiet");
  EXPECT_TRUE(CursorAt(*client, 3 + 4));  // 45th article on the third page
  client->Send("\x1b[1~");
  EXPECT_TRUE(CursorAt(*client, 3));
  client->Send("\x1b[B\x1b[B\x1b[6~");
  EXPECT_TRUE(CursorAt(*client, 5));
  EXPECT_TRUE(client->Has(5, 5, u"23"));
  client->Send("4");
  ASSERT_TRUE(client->WaitForText(23, 73, u"4"));
  client->Send("1");
  ASSERT_TRUE(client->WaitForText(23, 72, u"41"));
  EXPECT_TRUE(client->Pages().IsInputField(client->Screen()));
  client->Send("\r");
  EXPECT_TRUE(CursorAt(*client, 3));
  EXPECT_TRUE(client->Has(3, 5, u"41"));
  client->Send("999999999\r");
  EXPECT_TRUE(CursorAt(*client, 7));
  client->Send("/");
  ASSERT_TRUE(client->WaitForFlags(PF_INPUT_FIELD));
  client->Send(ToBig5(u"第 7 篇") + "\r");
  EXPECT_TRUE(CursorAt(*client, 3 + 6));
  client->Send("\x03\x03");  // harmless
  client->Send("\x1b[A");
  EXPECT_TRUE(CursorAt(*client, 3 + 5));
}

TEST_F(DemoReadingTest, DisputedAnimatedAndEmptyArticlesHaveTheirOwnPages) {
  const auto client = Client("alice", "wonder", "SandBox");
  client->Send("3\rl");
  ASSERT_TRUE(client->WaitForFlags(PF_DISPUTED_NOTICE)) << client->Dump();
  EXPECT_EQ(client->Seen().pageFlags & PF_READING, 0u);
  EXPECT_GE(client->Screen().cursorCol, 69);
  client->Send("\rN");
  ASSERT_TRUE(client->WaitForFlags(PF_READING | PF_READ_TOP)) << client->Dump();
  EXPECT_TRUE(client->Has(5, 0, u"內文在此。"));
  client->Send("q");
  ASSERT_TRUE(CursorAt(*client, 5));

  client->Send("4\rl");
  ASSERT_TRUE(client->WaitForFlags(PF_ANIMATION_PROMPT)) << client->Dump();
  client->Send("y");
  ASSERT_TRUE(client->WaitForFlags(PF_PAUSE)) << client->Dump();
  EXPECT_TRUE(client->WaitForText(0, 0, u"第二格"));
  EXPECT_TRUE(client->WaitForFlags(PF_READING));  // ends by itself
  client->Send("q");
  ASSERT_TRUE(CursorAt(*client, 6));

  client->Send("6\rl");
  ASSERT_TRUE(client->WaitForText(23, 0, u" ◆ 此文章無內容 "));
  ASSERT_TRUE(client->WaitFor(
      [](const ScreenSnapshot& screen) { return screen.cursorRow == 23 && screen.cursorCol >= 69; }));
  client->Send(" ");
  EXPECT_TRUE(CursorAt(*client, 8));
  client->Send("5\rl");  // a deleted one does not open
  EXPECT_TRUE(CursorAt(*client, 7));
}

TEST_F(DemoReadingTest, TheDigestHoldsTheMarkedArticles) {
  const auto client = Client("alice", "wonder", "SandBox");
  client->Send("z");
  ASSERT_TRUE(client->WaitForText(3, 10, u"◇ [閒聊] 一百行")) << client->Dump();
  EXPECT_EQ(client->Screen().RowText(4).find_first_not_of(' '), std::string_view::npos);
  client->Send("l");
  ASSERT_TRUE(client->WaitForFlags(PF_READING));
  client->Send("qq");
  EXPECT_TRUE(CursorAt(*client, 9));
}

TEST_F(DemoReadingTest, TheBoardPromptCompletesNamesAndLeavesTheBoardListsTitle) {
  const auto client = Client("alice", "wonder");
  client->Send("\r");
  ASSERT_TRUE(client->WaitForText(0, 0, u"【看板列表】"));
  client->Send("s");
  ASSERT_TRUE(client->WaitForText(1, 0, u"請輸入看板名稱(按空白鍵自動搜尋):"));
  EXPECT_FALSE(client->Has(0, 0, u"【看板列表】"));
  client->Send("q ");
  ASSERT_TRUE(client->WaitForText(1, 34, u"Quiet"));
  client->Send("\r");
  ASSERT_TRUE(client->WaitForText(0, 0, u"【看板列表】"));
  ASSERT_TRUE(client->WaitFor([](const ScreenSnapshot& screen) { return screen.cursorRow == 4; }));
  client->Send("\r");
  EXPECT_TRUE(client->WaitForFlags(PF_ARTICLE_LIST_CURSOR));
}

TEST(DemoArticleCodeTest, CodesAndTimesAreThoseOfTheFormat) {
  EXPECT_EQ(demo::ArticleFileName(1700000000, 0x11F3), "M.1700000000.A.1F3");
  EXPECT_EQ(demo::ArticleCode(0, 0x041), "00000011");
  EXPECT_EQ(demo::ArticleCode(1, 0xFFF), "000001__");
  demo::BbsTime time;
  ASSERT_TRUE(demo::ParseBbsTime("2026-02-28 23:59:09", time));
  EXPECT_EQ(demo::HeaderTime(demo::SecondsOf(time)), "Sat Feb 28 23:59:09 2026");
  EXPECT_EQ(demo::SecondsOf({1970, 1, 1, 8, 0, 0}), 0);
  EXPECT_FALSE(demo::ParseBbsTime("2026-02-30 00:00:00", time));
  EXPECT_FALSE(demo::ParseBbsTime("soon", time));
}

}  // namespace
}  // namespace quillet
