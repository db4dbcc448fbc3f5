#include "tests/demo/demo_fixture.h"

namespace quillet {
namespace {

using DemoLoginTest = DemoTest;

TEST_F(DemoLoginTest, RefusalsSayWhyAndTheThirdEndsTheConnection) {
  TestClient client(server->Port());
  ASSERT_TRUE(client.WaitForText(20, 0, u"請輸入代號"));
  client.Send("new\r");
  EXPECT_TRUE(client.WaitForText(21, 0, u"本站目前不開放"));
  client.Send("nobody\r");
  EXPECT_TRUE(client.WaitForText(21, 0, u"這裡沒有"));
  client.Send("alice\r");
  EXPECT_TRUE(client.WaitForText(21, 0, u"請輸入您的密碼"));
  client.Send("wro");  // is not echoed
  client.Send("\x0c");
  EXPECT_TRUE(client.WaitFor([](const ScreenSnapshot& screen) { return screen.cursorRow == 21; }));
  EXPECT_EQ(client.Dump().find("wro"), std::string::npos);
  client.Send("ng\r");
  EXPECT_TRUE(client.WaitForText(21, 0, u"密碼不對"));
  client.Send("again\ra\r");
  EXPECT_TRUE(client.WaitUntilClosed());
  EXPECT_NE(client.Dump().find("錯誤太多次"), std::string::npos);

  TestClient second(server->Port());
  second.Send("again\ra\r");
  EXPECT_TRUE(second.WaitForText(21, 0, u"請重新"));
}

}  // namespace
}  // namespace quillet
