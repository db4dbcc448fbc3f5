// The demo BBS by the ways that lead to it beside telnet, which all the other tests take.
#include "core/transport/websocket_transport.h"
#include "tests/demo/demo_fixture.h"

namespace quillet {
namespace {

class DemoRoadsTest : public WithTables {
 protected:
  void Serve() {
    DemoOptions options;
    options.contentFolder = QUILLET_SOURCE_DIR "/tests/demo/data";
    options.webSocketPort = 0;
    server = std::make_unique<DemoServer>(options);
    ASSERT_EQ(server->Error(), "");
  }
  std::unique_ptr<DemoServer> server;
};

// Logs in, reads an article, and says goodbye.
void WalkThrough(TestClient& client) {
  ASSERT_TRUE(client.LogIn("alice", "wonder")) << client.Dump();
  ASSERT_TRUE(client.EnterBoard("Quiet")) << client.Dump();
  client.Send("\r");
  ASSERT_TRUE(client.WaitForFlags(PF_READING)) << client.Dump();
  client.Send("$");
  ASSERT_TRUE(client.WaitForFlags(PF_READ_END)) << client.Dump();
  client.Send("q");
  ASSERT_TRUE(client.WaitForFlags(PF_ARTICLE_LIST_CURSOR)) << client.Dump();
  client.Send("\x1b[D");
  ASSERT_TRUE(client.WaitForText(0, 2, u"主")) << client.Dump();
  client.Send("g\r");
  ASSERT_TRUE(client.WaitForText(22, 0, u"您確定要離開")) << client.Dump();
  client.Send("y\r");
  EXPECT_TRUE(client.WaitUntilClosed()) << client.Dump();
}

TEST_F(DemoRoadsTest, WebSocketLeadsThroughTheBbsAndOut) {
  Serve();
  const std::string address = server->WebSocketAddress();
  ASSERT_EQ(address, "wss://127.0.0.1:" + std::to_string(server->WebSocketPort()) + "/bbs");
  TestClient client(std::make_unique<WebSocketTransport>(address.substr(std::string("wss://").size()),
                                                         server->CertificateAuthority()));
  WalkThrough(client);
}

}  // namespace
}  // namespace quillet
