#include <atomic>
#include <thread>

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

TEST_F(DemoLoginTest, EightUsersAtOnceEachReadAndTalk) {
  std::vector<std::thread> users;
  std::atomic<int> done{0};
  for (const auto& [id, password] : std::vector<std::pair<std::string, std::string>>{{"alice", "wonder"},
                                                                                     {"bob", "builder"},
                                                                                     {"mail", ""},
                                                                                     {"hasty", "h"},
                                                                                     {"hush", "h"},
                                                                                     {"guest", ""},
                                                                                     {"guest", ""},
                                                                                     {"guest", ""}}) {
    users.emplace_back([&, id = id == "mail" ? "guest" : id, password = password] {
      const auto client = Client(id, password, "SandBox");
      client->Send("\x1b[1~l");
      if (!client->WaitForFlags(PF_READING | PF_READ_TOP)) return;
      client->Send("$");
      if (client->WaitForFlags(PF_READING | PF_READ_END)) ++done;
    });
  }
  for (std::thread& user : users)
    user.join();
  EXPECT_EQ(done, 8);
}

}  // namespace
}  // namespace quillet
