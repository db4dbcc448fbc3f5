#include <atomic>
#include <thread>

#include "core/charset.h"
#include "tests/demo/demo_fixture.h"

namespace quillet {
namespace {

using DemoLoginTest = DemoTest;

// What stands on the screen behind the welcome of a user, and the keys that lead on to the main menu.
struct Arrival {
  std::string id, password;
  int row, col;
  std::u16string text;
  std::string keys;
};

TEST_F(DemoLoginTest, EveryKindOfArrivalIsReachedByAnAccountAndLeadsToTheMainMenu) {
  const Arrival arrivals[] = {
      {"bottom", "b", 23, 0, u"您", "n\r"}, {"top", "t", 1, 0, u"您", "q\r"},
      {"mail", "m", 0, 2, u"郵", "q"},      {"notice", "n", 23, 2, u"瀏覽", "qqqqqqqqqq"},
      {"found", "f", 23, 0, u"找到", "\r"}, {"alice", "wonder", 0, 2, u"主", ""},
  };
  for (const Arrival& arrival : arrivals) {
    TestClient client(server->Port());
    ASSERT_TRUE(client.WaitForText(20, 0, u"請輸入代號，或以 guest 參觀，或以 new 註冊:"));
    client.Send(arrival.id + "\r");
    ASSERT_TRUE(client.WaitForText(21, 0, u"請輸入您的密碼"));
    client.Send(arrival.password + "\r");
    ASSERT_TRUE(client.WaitForFlags(PF_ANYKEY_BANNER)) << client.Dump();
    EXPECT_TRUE(client.Has(0, 0, u" 奧拉拉文藝坊 "));
    EXPECT_FALSE(client.Pages().IsPause(client.Screen()));
    // As programs do it: what is not needed must do no harm on the page behind.
    client.Send("\n\x1b[3~");
    EXPECT_TRUE(client.WaitForText(arrival.row, arrival.col, arrival.text)) << client.Dump();
    client.Send(arrival.keys);
    EXPECT_TRUE(client.WaitForText(0, 0, u"【主功能表】")) << client.Dump();
    EXPECT_TRUE(client.WaitForFlags(PF_LIST_CURSOR | PF_BROWSABLE));
  }
}

// A program that answers each page once, in a fixed order, must get through all of them.
TEST_F(DemoLoginTest, AllArrivalsTogetherComeInTheOrderInWhichTheyAreAnswered) {
  TestClient client(server->Port());
  ASSERT_TRUE(client.WaitForText(20, 0, u"請輸入代號"));
  client.Send("parade\rp\r");
  ASSERT_TRUE(client.WaitForText(22, 0, u"您"));
  client.Send("\r\n\x1b[3~\n\x1b[3~");
  const Arrival arrivals[] = {{"", "", 23, 0, u"您", "n\r\n\x1b[3~"},  {"", "", 1, 0, u"您", "q\r\n\x1b[3~"},
                              {"", "", 23, 0, u"找到", "\r\n\x1b[3~"}, {"", "", 0, 2, u"郵", "q"},
                              {"", "", 23, 2, u"瀏覽", "qqqqqqqqqq"},  {"", "", 0, 2, u"主", ""}};
  for (const Arrival& arrival : arrivals) {
    ASSERT_TRUE(client.WaitForText(arrival.row, arrival.col, arrival.text)) << client.Dump();
    client.Send(arrival.keys);
  }
}

TEST_F(DemoLoginTest, PromptsAreInputFields) {
  TestClient client(server->Port());
  ASSERT_TRUE(client.WaitForFlags(PF_INPUT_FIELD));
  client.Send("ali");
  ASSERT_TRUE(client.WaitForText(20, 44, u"ali"));
  EXPECT_TRUE(client.Pages().IsInputField(client.Screen()));
  client.Send("ce\r");
  ASSERT_TRUE(client.WaitForText(21, 0, u"請輸入您的密碼"));
  client.Send("won");  // must not be echoed
  client.Send("\x0c");
  ASSERT_TRUE(client.WaitFor([](const ScreenSnapshot& screen) { return screen.cursorRow == 21; }));
  EXPECT_EQ(client.Screen().RowText(21).find("won"), std::string_view::npos);
  EXPECT_TRUE(client.Pages().IsInputField(client.Screen()));
}

TEST_F(DemoLoginTest, RefusalsSayWhyAndTheThirdEndsTheConnection) {
  TestClient client(server->Port());
  ASSERT_TRUE(client.WaitForText(20, 0, u"請輸入代號"));
  client.Send("new\r");
  EXPECT_TRUE(client.WaitForText(21, 0, u"本站目前不開放"));
  client.Send("nobody\r");
  EXPECT_TRUE(client.WaitForText(21, 0, u"這裡沒有"));
  client.Send("alice\rwrong\r");
  EXPECT_TRUE(client.WaitForText(21, 0, u"密碼不對"));
  client.Send("again\ra\r");
  EXPECT_TRUE(client.WaitUntilClosed());
  EXPECT_NE(client.Dump().find("錯誤太多次"), std::string::npos);

  TestClient second(server->Port());
  second.Send("again\ra\r");
  EXPECT_TRUE(second.WaitForText(21, 0, u"請重新"));
}

TEST_F(DemoLoginTest, GuestsNeedNoPasswordAndMayBeMany) {
  const auto first = Client("guest", "");
  const auto second = Client("GUEST", "");
  EXPECT_TRUE(second->Has(0, 2, u"主"));
}

TEST_F(DemoLoginTest, ASecondLoginMayEndTheFirst) {
  const auto first = Client("alice", "wonder");
  const auto login = [&](const std::string& answer) {
    auto client = std::make_unique<TestClient>(server->Port());
    client->WaitForText(20, 0, u"請輸入代號");
    client->Send("alice\rwonder\r");
    EXPECT_TRUE(client->WaitForText(22, 0, u"您想刪除其他重複登入的連線嗎？[Y/n] "));
    EXPECT_TRUE(client->Pages().IsInputField(client->Screen()));
    client->Send(answer);
    EXPECT_TRUE(client->WaitForFlags(PF_ANYKEY_BANNER));
    return client;
  };
  const auto beside = login("n\r");
  first->Send("\x1b[B");  // still alive
  EXPECT_TRUE(first->WaitFor([](const ScreenSnapshot& screen) { return screen.cursorRow == 13; }));
  const auto instead = login("\r");
  EXPECT_TRUE(first->WaitUntilClosed());
  EXPECT_TRUE(beside->WaitUntilClosed());
  instead->Send("\n");
  EXPECT_TRUE(instead->WaitForText(0, 2, u"主"));
}

TEST_F(DemoLoginTest, LeavingAsksEchoesAndCloses) {
  const auto client = Client("alice", "wonder");
  client->Send("\x1b[D\r");
  ASSERT_TRUE(client->WaitForText(22, 0, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] "));
  client->Send("n\r");
  ASSERT_TRUE(client->WaitForFlags(PF_LIST_CURSOR));
  client->Send("g\r");
  ASSERT_TRUE(client->WaitForText(22, 0, u"您確定要離開"));
  client->Send("y");
  EXPECT_TRUE(client->WaitForText(22, 0, u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] y"));
  client->Send("\r");
  EXPECT_TRUE(client->WaitUntilClosed());
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

TEST_F(DemoLoginTest, StoppingTheServerEndsEveryConnection) {
  const auto reading = Client("alice", "wonder", "SandBox");
  const TestClient idle(server->Port());
  TestClient silent(server->Port());
  server.reset();
  EXPECT_TRUE(reading->WaitUntilClosed());
  EXPECT_TRUE(silent.WaitUntilClosed());
}

}  // namespace
}  // namespace quillet
