// A demo server over the small content of the tests, on a port of the system's choice.
#pragma once

#include <atomic>
#include <memory>
#include <optional>

#include "demo/demo_server.h"
#include "tests/demo/test_client.h"
#include "tests/support/tables.h"

namespace quillet {

class DemoTest : public WithTables {
 protected:
  void SetUp() override {
    WithTables::SetUp();
    Start(DemoOptions::Writes::kAsBbs);
  }
  void Start(DemoOptions::Writes writes) {
    DemoOptions options;
    options.contentFolder = content;
    options.writes = writes;
    options.sshPort = options.webSocketPort = otherPorts;
    options.log = [this](std::string_view line) { closed += line == "closed"; };
    server = std::make_unique<DemoServer>(options);
    ASSERT_EQ(server->Error(), "");
  }
  // Logged in and, when a board is named, in its list.
  std::unique_ptr<TestClient> Client(const std::string& id, const std::string& password,
                                     const std::string& board = {}) {
    auto client = std::make_unique<TestClient>(server->Port());
    EXPECT_TRUE(client->LogIn(id, password)) << client->Dump();
    if (!board.empty()) {
      EXPECT_TRUE(client->EnterBoard(board)) << client->Dump();
    }
    return client;
  }
  std::filesystem::path content = QUILLET_SOURCE_DIR "/tests/demo/data";
  std::optional<std::uint16_t> otherPorts;  // than telnet's; set by whoever needs them before SetUp
  std::atomic<int> closed{0};               // connections that the server has done with
  std::unique_ptr<DemoServer> server;
};

}  // namespace quillet
