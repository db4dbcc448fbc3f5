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
