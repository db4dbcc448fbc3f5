#include <cstdlib>

#include "core/charset.h"
#include "core/transport/ssh_transport.h"
#include "platform/utf8.h"
#include "tests/demo/demo_fixture.h"

namespace quillet {
namespace {

class DemoSshTest : public DemoTest {
 protected:
  DemoSshTest() { sshPort = 0; }
  const SshLibrary library_;
};

std::unique_ptr<TestClient> Over(std::uint16_t port) {
  return std::make_unique<TestClient>(std::make_unique<SshTransport>("127.0.0.1", SshOptions{.port = port}));
}

void ReadPushAndLeave(TestClient& client) {
  constexpr std::u16string_view push = u"從另一條路來";
  ASSERT_TRUE(client.LogIn("bob", "builder")) << client.Dump();
  ASSERT_TRUE(client.EnterBoard("Quiet")) << client.Dump();
  client.Send("44\rl");
  ASSERT_TRUE(client.WaitForFlags(PF_READING)) << client.Dump();
  client.Send("X1");
  ASSERT_TRUE(client.WaitForFlags(PF_PUSH_LINE)) << client.Dump();
  client.Send(ToBig5(push) + "\ry\rq");
  ASSERT_TRUE(client.WaitForFlags(PF_ARTICLE_LIST_CURSOR)) << client.Dump();
  client.Send("l$");
  EXPECT_TRUE(client.WaitFor([&](const ScreenSnapshot&) {
    return client.Dump().find("bob: " + Utf8FromUtf16(push)) != std::string::npos;
  })) << client.Dump();
  client.Send("q\x1b[D");
  ASSERT_TRUE(client.WaitForText(0, 0, u"【主功能表】")) << client.Dump();
  client.Send("g\ry\r");
  EXPECT_TRUE(client.WaitUntilClosed());
  EXPECT_NE(client.Dump().find("下次再見"), std::string::npos) << client.Dump();
}

TEST_F(DemoSshTest, TheWholeTourGoesOverSshToo) {
  ReadPushAndLeave(*Over(server->SshPort()));
}

// For script/try-ssh, whose servers lead to a demo_bbs with this test's content.
TEST_F(DemoSshTest, DISABLED_ASystemsServerLeadsToTheDemoToo) {
  const char* const port = std::getenv("QUILLET_TRY_SSH_PORT");
  ASSERT_NE(port, nullptr);
  ReadPushAndLeave(*Over(static_cast<std::uint16_t>(std::atoi(port))));
}

}  // namespace
}  // namespace quillet
