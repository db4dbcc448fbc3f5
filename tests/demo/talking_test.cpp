#include "core/charset.h"
#include "tests/demo/demo_fixture.h"

namespace quillet {
namespace {

using DemoTalkingTest = DemoTest;

TEST_F(DemoTalkingTest, AnArticleWrittenInTheEditorAppearsInTheList) {
  const auto alice = Client("alice", "wonder", "Quiet");
  alice->Send("\x10" + ToBig5(u"新的一篇") + "\r");
  ASSERT_TRUE(alice->WaitForFlags(PF_EDITOR));
  // Typed with a mistake of a wide character, and a line that is joined again.
  alice->Send(ToBig5(u"今天錯") + "\x7f" + ToBig5(u"好") + "\rA\x1b[D\x7f\x1b[4~B");
  ASSERT_TRUE(alice->WaitForText(0, 0, u"今天好AB")) << alice->Dump();
  alice->Send("\x18s\r ");
  ASSERT_TRUE(alice->WaitForFlags(PF_ARTICLE_LIST_CURSOR));

  const auto bob = Client("bob", "builder", "Quiet");
  ASSERT_TRUE(bob->Has(8, 30, u"□ 新的一篇")) << bob->Dump();
  bob->Send("l");
  ASSERT_TRUE(bob->WaitForFlags(PF_READING));
  EXPECT_TRUE(bob->Has(5, 0, u"今天好AB"));
  bob->Send("qd");
  EXPECT_TRUE(bob->WaitForText(23, 0, u" ◆ 只能刪除自己的文章"));
  bob->Send(" y\r\rn\r");
  ASSERT_TRUE(bob->WaitForFlags(PF_EDITOR)) << bob->Dump();
  bob->Send("+1\x18\r ");
  EXPECT_TRUE(bob->WaitForText(9, 30, u"R: 新的一篇")) << bob->Dump();
}

TEST_F(DemoTalkingTest, AnInstantMessageLiesOverThePageAndIsCounted) {
  const auto alice = Client("alice", "wonder");
  const auto bob = Client("bob", "builder", "SandBox");
  alice->Send("\x15");
  ASSERT_TRUE(alice->WaitForText(0, 0, u"【使用者名單】"));
  alice->Send("\x1b[B\r");
  ASSERT_TRUE(alice->WaitForFlags(PF_INPUT_FIELD)) << alice->Dump();
  alice->Send(ToBig5(u"在嗎") + "\r");
  ASSERT_TRUE(bob->WaitForFlags(PF_STAR_LINE | PF_ARTICLE_LIST)) << bob->Dump();
  EXPECT_TRUE(bob->Has(22, 0, u"★alice 在嗎 "));
  // The form by which the parser counts them.
  EXPECT_TRUE(bob->GotInOneRead("\x1b[23;1H\x1b[1;33;46m\xA1"));
  bob->Send("\n");  // only clears the message
  EXPECT_TRUE(bob->WaitFor([&](const ScreenSnapshot& screen) {
    return bob->Pages().IsArticleListStrict(screen) && screen.TextAt(22, 0) == ' ';
  }));

  // While something is typed on that row the message takes the other one.
  bob->Send("2\rl");
  ASSERT_TRUE(bob->WaitForFlags(PF_READING));
  bob->Send("/");
  ASSERT_TRUE(bob->WaitForText(22, 0, u"[搜尋]關鍵字:"));
  alice->Send("\r");
  alice->Send(ToBig5(u"還在嗎") + "\r");
  ASSERT_TRUE(bob->WaitForText(23, 0, u"★alice 還在嗎 ")) << bob->Dump();
  ASSERT_TRUE(bob->WaitForFlags(PF_STAR_LINE));
  EXPECT_TRUE(bob->GotInOneRead("\x1b[24;1H\x1b[1;33;46m\xA1"));

  const auto greeted = Client("greeted", "g");
  EXPECT_TRUE(greeted->WaitForFlags(PF_STAR_LINE));
}

TEST_F(DemoTalkingTest, ALetterRingsAndIsRead) {
  const auto alice = Client("alice", "wonder");
  const auto bob = Client("bob", "builder");
  alice->Send("m\rw\r");
  ASSERT_TRUE(alice->WaitForFlags(PF_INPUT_FIELD));
  EXPECT_TRUE(alice->Has(0, 0, u"【郵件選單】"));
  alice->Send("bob\r" + ToBig5(u"晚餐") + "\r" + ToBig5(u"吃麵") + "\x18\r");
  ASSERT_TRUE(alice->WaitForText(23, 0, u" ◆ 信件已經寄出"));
  ASSERT_TRUE(bob->WaitForBell());
  bob->Send("m\r\r");
  ASSERT_TRUE(bob->WaitForText(3, 30, u"◇ 晚餐")) << bob->Dump();
  bob->Send("\r");
  ASSERT_TRUE(bob->WaitForFlags(PF_READING));
  EXPECT_TRUE(bob->Pages().IsReaderWithHelpFooter(bob->Screen()));
  EXPECT_TRUE(bob->Has(4, 0, u"吃麵"));
}

}  // namespace
}  // namespace quillet
