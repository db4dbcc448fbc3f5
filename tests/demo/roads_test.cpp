// The same walk through the BBS by each way that leads there.
#include <cstdlib>

#include "core/charset.h"
#include "core/transport/ssh_transport.h"
#include "core/transport/telnet_transport.h"
#include "core/transport/websocket_transport.h"
#include "platform/utf8.h"
#include "tests/demo/demo_fixture.h"

namespace quillet {
namespace {

class RoadsTest : public DemoTest {
 protected:
  RoadsTest() { otherPorts = 0; }
  const SshLibrary library_;
};

std::unique_ptr<Transport> OverSsh(std::uint16_t port) {
  return std::make_unique<SshTransport>("127.0.0.1", SshOptions{.port = port});
}

void ReadPushAndLeave(std::unique_ptr<Transport> transport, std::u16string_view push) {
  TestClient client(std::move(transport));
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

TEST_F(RoadsTest, EachLeadsThroughTheBbsAndOut) {
  ReadPushAndLeave(std::make_unique<TelnetTransport>("127.0.0.1", std::to_string(server->Port())), u"平路");
  ReadPushAndLeave(OverSsh(server->SshPort()), u"從另一條路來");
  const std::string target = server->WebSocketAddress().substr(std::string("wss://").size());
  EXPECT_EQ(target, "127.0.0.1:" + std::to_string(server->WebSocketPort()) + "/bbs");
  ReadPushAndLeave(std::make_unique<WebSocketTransport>(target, server->CertificateAuthority()), u"穿過閘道");
}

// For script/try-ssh, whose servers lead to a demo_bbs with this test's content.
TEST_F(RoadsTest, DISABLED_ASystemsServerLeadsToTheDemoToo) {
  const char* const port = std::getenv("QUILLET_TRY_SSH_PORT");
  ASSERT_NE(port, nullptr);
  ReadPushAndLeave(OverSsh(static_cast<std::uint16_t>(std::atoi(port))), u"從別人的伺服器來");
}

}  // namespace
}  // namespace quillet
