#include <atomic>
#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "core/term_session.h"
#include "core/transport/websocket_transport.h"
#include "tests/core/transport/websocket_peer.h"
#include "tests/support/fake_watcher.h"
#include "tests/support/loopback_server.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

using namespace std::chrono_literals;
using demo::CertificateAuthority;
using demo::CertificateWish;

const CertificateAuthority& Authority() {
  static const CertificateAuthority authority;
  return authority;
}

using Script = std::function<void(WebSocketPeer& peer, const StopSignal& stop)>;

void WaitForStop(WebSocketPeer&, const StopSignal& stop) {
  while (!stop.WaitFor(1000)) {
  }
}

// A gateway that does what the script says with every client, and a session that is one.
class Gateway {
 public:
  explicit Gateway(Script script, CertificateWish wish = {})
      : certificate_(Authority().Issue(wish)),
        script_(std::move(script)),
        server_([this](Socket& client, const StopSignal& stop) {
          WebSocketPeer peer(client, stop, certificate_);
          script_(peer, stop);
        }) {
    SessionOptions options;
    options.watcher = &watcher;
    session = std::make_unique<TermSession>(options);
  }
  ~Gateway() { session.reset(); }

  std::unique_ptr<Transport> Way(WebSocketPatience patience = {}) const {
    return std::make_unique<WebSocketTransport>(Target(), trusted, ResolveHost, patience);
  }
  std::string Target() const { return "127.0.0.1:" + std::to_string(server_.Port()) + "/bbs"; }
  bool HasEnded() {
    return WaitUntil([this] { return session->state == SessionState::kClosed && watcher.disconnected > 0; });
  }

  std::string trusted = Authority().Certificate();
  FakeWatcher watcher;
  std::unique_ptr<TermSession> session;

 private:
  demo::ServerCertificate certificate_;
  Script script_;
  LoopbackServer server_;
};

std::string Row(const TermSession& session, int row, std::size_t size) {
  return std::string(session.screen.RowText(row).substr(0, size));
}

TEST(WebSocketTest, EveryKindOfMessageReachesTheScreenAndNoPingDoes) {
  std::string request;
  std::string typed;
  std::string ponged;
  Gateway gateway([&](WebSocketPeer& peer, const StopSignal&) {
    if (!peer.Open()) return;
    request = peer.Request();
    peer.Write(MakeFrame(FrameKind::kBinary, "\x1b[2;3Hbi"));
    peer.Write(MakeFrame(FrameKind::kText, "text"));
    peer.Write(MakeFrame(FrameKind::kBinary, ""));
    peer.Write(MakeFrame(FrameKind::kBinary, "fr", false));
    peer.Write(MakeFrame(FrameKind::kPing, "ping"));
    peer.Write(MakeFrame(FrameKind::kContinuation, "ag", true));
    while (typed.size() < 4 || ponged.empty()) {
      const auto frame = peer.ReadMessage();
      if (!frame) return;
      (frame->kind == FrameKind::kPong ? ponged : typed) += frame->payload;
    }
    peer.Write(MakeFrame(FrameKind::kClose, "\x03\xe8"));
    peer.ReadMessage();
    peer.EndTls();
  });
  gateway.session->ConnectWith(gateway.Way());
  ASSERT_EQ(gateway.session->state, SessionState::kConnected) << gateway.session->LastEnd().detail;
  gateway.session->SendBytes("qu");
  gateway.session->SendBytes("it");
  ASSERT_TRUE(gateway.HasEnded());
  gateway.session->Disconnect();
  EXPECT_EQ(gateway.session->LastEnd().reason, EndReason::kClosedByPeer) << gateway.session->LastEnd().detail;
  EXPECT_THAT(request, testing::StartsWith("GET /bbs HTTP/1.1\r\n"));
  EXPECT_THAT(request, testing::HasSubstr("\r\nOrigin: app://quillet\r\n"));
  EXPECT_EQ(typed, "quit") << "and no Delete keys before it";
  EXPECT_EQ(ponged, "ping");
  EXPECT_EQ(Row(*gateway.session, 1, 13), "  bitextfrag ");
  EXPECT_EQ(gateway.watcher.connected, 1);
  EXPECT_EQ(gateway.watcher.disconnected, 1);
  EXPECT_EQ(gateway.session->UnsentBytes(), 0u);
}

enum class Leaving { kWithAGoodbye, kWithoutOne, kInTheMiddleOfTls };
struct Burst {
  const char* name;
  std::size_t messages;
  std::size_t size;
  Leaving leaving;
};
class WebSocketBurstTest : public testing::TestWithParam<Burst> {};
INSTANTIATE_TEST_SUITE_P(Bursts, WebSocketBurstTest,
                         testing::Values(Burst{"ThreeMessages", 3, 1, Leaving::kWithAGoodbye},
                                         Burst{"Many", 3000, 1, Leaving::kWithAGoodbye},
                                         Burst{"ManyWithoutAGoodbye", 3000, 1, Leaving::kWithoutOne},
                                         Burst{"ManyWithoutAnEnd", 3000, 1, Leaving::kInTheMiddleOfTls},
                                         Burst{"OneMegabyte", 1, 1 << 20, Leaving::kWithAGoodbye},
                                         Burst{"MoreThanMayWait", 200, 20000, Leaving::kWithAGoodbye}),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(WebSocketBurstTest, AllThatCameBeforeTheEndIsRead) {
  const Burst& burst = GetParam();
  Gateway gateway([&](WebSocketPeer& peer, const StopSignal&) {
    if (!peer.Open()) return;
    std::string all;
    for (std::size_t i = 1; i < burst.messages; ++i)
      all += MakeFrame(FrameKind::kBinary, std::string(burst.size, 'x'));
    all += MakeFrame(FrameKind::kBinary, std::string(burst.size, 'x') + "\x1b[2J\x1b[Hlast");
    if (burst.leaving == Leaving::kWithAGoodbye) all += MakeFrame(FrameKind::kClose, "\x03\xe8");
    peer.Write(all);
    if (burst.leaving == Leaving::kWithAGoodbye) peer.ReadMessage();
    if (burst.leaving != Leaving::kInTheMiddleOfTls) peer.EndTls();
  });
  gateway.session->ConnectWith(gateway.Way());
  ASSERT_TRUE(gateway.HasEnded());
  EXPECT_EQ(gateway.session->receivedCount, burst.messages);
  EXPECT_EQ(Row(*gateway.session, 0, 5), "last ");
  const bool inOrder = burst.leaving != Leaving::kInTheMiddleOfTls;
  EXPECT_EQ(gateway.session->LastEnd().reason, inOrder ? EndReason::kClosedByPeer : EndReason::kReadFailed);
  EXPECT_EQ(gateway.watcher.disconnected, 1);
}

Script Replying(const std::string& answer) {
  return [answer](WebSocketPeer& peer, const StopSignal&) {
    if (peer.Secure() && peer.ReadRequest() && !answer.empty()) peer.Write(answer);
  };
}

struct Refusal {
  const char* name;
  EndReason reason;
  Script script;
  CertificateWish wish = {};
  bool trusts = true;
};
class WebSocketRefusalTest : public testing::TestWithParam<Refusal> {};
INSTANTIATE_TEST_SUITE_P(
    Refusals, WebSocketRefusalTest,
    testing::Values(
        Refusal{"Untrusted", EndReason::kCertificateUntrusted, Replying(""), {}, false},
        Refusal{"WrongName", EndReason::kCertificateWrongName, Replying(""), {{"DNS:elsewhere.example"}}},
        Refusal{"Expired", EndReason::kCertificateExpired, Replying(""), {{"IP:127.0.0.1"}, -2h, -1h}},
        Refusal{"NotYet", EndReason::kCertificateExpired, Replying(""), {{"IP:127.0.0.1"}, 1h, 2h}},
        Refusal{"NoTls", EndReason::kNotSecure,
                [](WebSocketPeer& peer, const StopSignal& stop) {
                  SendText(peer.Plain(), "220 hello, this is something else\r\n", stop);
                }},
        Refusal{"Closed", EndReason::kNotSecure, [](WebSocketPeer&, const StopSignal&) {}},
        Refusal{"ClosedWithoutAnAnswer", EndReason::kGatewayRefused, Replying("")},
        Refusal{"Redirect", EndReason::kGatewayRefused,
                Replying("HTTP/1.1 302 Found\r\nLocation: https://www.bbs.example/\r\n\r\n")},
        Refusal{"Forbidden", EndReason::kGatewayRefused,
                Replying("HTTP/1.1 403 Forbidden\r\nContent-Length: 0\r\n\r\n")},
        Refusal{"Html", EndReason::kGatewayRefused,
                Replying("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n<html>hello</html>")},
        Refusal{"WrongKey", EndReason::kGatewayRefused,
                Replying("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                         "Sec-WebSocket-Accept: bm90IHRoaXMgb25l\r\n\r\n")},
        Refusal{"Rubbish", EndReason::kGatewayRefused, Replying(std::string(100000, '\x07'))}),
    [](const auto& instance) { return instance.param.name; });

TEST_P(WebSocketRefusalTest, IsToldApartAndEndsInOneEvent) {
  const Refusal& refusal = GetParam();
  Gateway gateway(refusal.script, refusal.wish);
  if (!refusal.trusts) gateway.trusted.clear();
  gateway.session->ConnectWith(gateway.Way());
  EXPECT_EQ(gateway.session->LastEnd().reason, refusal.reason) << gateway.session->LastEnd().detail;
  gateway.session->Disconnect();
  EXPECT_EQ(gateway.watcher.connected, 0);
  EXPECT_EQ(gateway.watcher.disconnected, 1);
}

TEST(WebSocketTest, AnAuthorityThatOneConnectionTrustsIsNoneForTheNext) {
  Gateway gateway([](WebSocketPeer& peer, const StopSignal&) {
    if (peer.Open()) peer.ReadMessage();
  });
  gateway.session->ConnectWith(gateway.Way());
  EXPECT_EQ(gateway.session->state, SessionState::kConnected);
  gateway.trusted.clear();
  gateway.session->ConnectWith(gateway.Way());
  EXPECT_EQ(gateway.session->LastEnd().reason, EndReason::kCertificateUntrusted);
}

TEST(WebSocketTest, WhereNobodyListensIsToldAtOnce) {
  std::uint16_t free = 0;
  {
    Listener listener;
    ASSERT_TRUE(listener.Open(ResolvedAddress::Family::kIpv4, 0));
    free = listener.Port();
  }
  TermSession session({});
  session.ConnectWith(std::make_unique<WebSocketTransport>("127.0.0.1:" + std::to_string(free)));
  EXPECT_EQ(session.LastEnd().reason, EndReason::kGatewayUnreachable);
}

// ---- Peers that fall silent

struct Phase {
  const char* name;
  std::function<bool(WebSocketPeer& peer)> reach;
  EndReason whenStopped;
};
const Phase kPhases[] = {
    {"TcpAccepted", [](WebSocketPeer&) { return true; }, EndReason::kCancelled},
    {"HelloUnanswered",
     [](WebSocketPeer& peer) {
       std::string hello;
       StopSignal never;
       ReceiveText(peer.Plain(), hello, 1, never);
       return !hello.empty();
     },
     EndReason::kCancelled},
    {"UpgradeUnanswered", [](WebSocketPeer& peer) { return peer.Secure() && peer.ReadRequest(); },
     EndReason::kCancelled},
    {"Connected", [](WebSocketPeer& peer) { return peer.Open(); }, EndReason::kClosedByUser},
};

class WebSocketSilenceTest : public testing::TestWithParam<Phase> {};
INSTANTIATE_TEST_SUITE_P(Phases, WebSocketSilenceTest, testing::ValuesIn(kPhases),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(WebSocketSilenceTest, IsEndedByTheUserWithinTwoSeconds) {
  const Phase& phase = GetParam();
  std::atomic<bool> reached{false};
  Gateway gateway([&](WebSocketPeer& peer, const StopSignal& stop) {
    reached = phase.reach(peer);
    WaitForStop(peer, stop);
  });
  gateway.session->StartConnectWith(gateway.Way());
  ASSERT_TRUE(WaitUntil([&] { return reached.load(); }));
  if (phase.whenStopped == EndReason::kClosedByUser) {
    ASSERT_TRUE(WaitUntil([&] { return gateway.session->state == SessionState::kConnected; }));
  }
  const auto started = std::chrono::steady_clock::now();
  gateway.session->Disconnect();
  const auto took = std::chrono::steady_clock::now() - started;
  RecordProperty("milliseconds", static_cast<int>(took / 1ms));
  EXPECT_LT(took, 2s);
  EXPECT_EQ(gateway.session->LastEnd().reason, phase.whenStopped);
  EXPECT_EQ(gateway.watcher.disconnected, 1);
}

TEST(WebSocketTest, AGatewayThatFallsSilentWhileOneConnectsIsGivenUpAndNamed) {
  std::vector<std::unique_ptr<Gateway>> gateways;
  for (const Phase& phase : kPhases) {
    if (phase.whenStopped != EndReason::kCancelled) continue;
    gateways.push_back(std::make_unique<Gateway>([&phase](WebSocketPeer& peer, const StopSignal& stop) {
      phase.reach(peer);
      WaitForStop(peer, stop);
    }));
    gateways.back()->session->StartConnectWith(gateways.back()->Way({.opening = 300ms}));
  }
  for (const auto& gateway : gateways) {
    ASSERT_TRUE(gateway->HasEnded());
    EXPECT_EQ(gateway->session->LastEnd().reason, EndReason::kGatewaySilent);
    EXPECT_EQ(gateway->watcher.disconnected, 1);
  }
}

TEST(WebSocketTest, APeerThatAnsweredPingsAndStopsDoingSoIsGone) {
  Gateway gateway([](WebSocketPeer& peer, const StopSignal& stop) {
    if (!peer.Open()) return;
    while (const auto frame = peer.ReadFrame()) {
      if (frame->kind != FrameKind::kPing) continue;
      peer.Write(MakeFrame(FrameKind::kPong, frame->payload));
      break;
    }
    WaitForStop(peer, stop);
  });
  gateway.session->ConnectWith(gateway.Way({.silence = 50ms}));
  gateway.session->SendBytes("typed");
  ASSERT_TRUE(gateway.HasEnded());
  EXPECT_EQ(gateway.session->LastEnd().reason, EndReason::kReadFailed);
}

TEST(WebSocketTest, APeerThatNeverAnsweredAPingMayBeSilent) {
  std::atomic<int> pings{0};
  Gateway gateway([&](WebSocketPeer& peer, const StopSignal&) {
    if (!peer.Open()) return;
    while (peer.ReadFrame())
      ++pings;
  });
  gateway.session->ConnectWith(gateway.Way({.silence = 20ms}));
  ASSERT_TRUE(WaitUntil([&] { return pings >= 8; }));
  EXPECT_EQ(gateway.session->state, SessionState::kConnected);
}

// ---- Peers that do not read, and peers that are gone

TEST(WebSocketTest, TypingToAPeerThatIsGoneEndsInOneEvent) {
  Gateway gateway([](WebSocketPeer& peer, const StopSignal&) {
    if (peer.Open()) peer.Plain().Close();  // no goodbye of any kind
  });
  gateway.session->ConnectWith(gateway.Way());
  EXPECT_TRUE(WaitUntil([&] {
    gateway.session->SendBytes("typed");
    return gateway.session->state == SessionState::kClosed;
  }));
  gateway.session->SendBytes("more");
  gateway.session->Disconnect();
  EXPECT_THAT(gateway.session->LastEnd().reason,
              testing::AnyOf(EndReason::kClosedByPeer, EndReason::kReadFailed));
  EXPECT_EQ(gateway.watcher.disconnected, 1);
}

TEST(WebSocketTest, APeerThatNeverReadsHoldsNeitherTypingNorTheEnd) {
  Gateway gateway([](WebSocketPeer& peer, const StopSignal& stop) {
    if (peer.Open()) WaitForStop(peer, stop);
  });
  gateway.session->ConnectWith(gateway.Way());
  const auto started = std::chrono::steady_clock::now();
  for (int i = 0; i < 8; ++i)
    gateway.session->SendBytes(std::string(1 << 20, 'm'));
  EXPECT_LT(std::chrono::steady_clock::now() - started, 2s);
  const auto ended = std::chrono::steady_clock::now();
  gateway.session->Disconnect();
  EXPECT_LT(std::chrono::steady_clock::now() - ended, 2s);
}

TEST(WebSocketTest, AFloodIsEndedWithinTwoSeconds) {
  Gateway gateway([](WebSocketPeer& peer, const StopSignal&) {
    if (!peer.Open()) return;
    const std::string flood = MakeFrame(FrameKind::kBinary, std::string(60000, 'f'));
    while (peer.Write(flood)) {
    }
  });
  gateway.session->ConnectWith(gateway.Way());
  ASSERT_TRUE(WaitUntil([&] { return gateway.session->receivedCount > 100; }));
  const auto ended = std::chrono::steady_clock::now();
  gateway.session->Disconnect();
  EXPECT_LT(std::chrono::steady_clock::now() - ended, 2s);
  EXPECT_EQ(gateway.session->LastEnd().reason, EndReason::kClosedByUser);
}

}  // namespace
}  // namespace quillet
