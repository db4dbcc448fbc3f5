#include <atomic>
#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

#include "core/term_session.h"
#include "core/transport/telnet_transport.h"
#include "tests/support/fake_watcher.h"
#include "tests/support/loopback_server.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

using Family = ResolvedAddress::Family;

constexpr std::size_t kOpeningSize = 40;  // ten Delete keys

std::string Opening() {
  std::string keys;
  for (int i = 0; i < 10; ++i)
    keys += "\x1b[3~";
  return keys;
}

// What a server has heard, for the test to look at while it runs.
class Heard {
 public:
  void Set(const std::string& text) {
    std::lock_guard lock(lock_);
    text_ = text;
  }
  std::string Get() const {
    std::lock_guard lock(lock_);
    return text_;
  }

 private:
  mutable std::mutex lock_;
  std::string text_;
};

class TelnetFamilyTest : public testing::TestWithParam<Family> {};
INSTANTIATE_TEST_SUITE_P(Families, TelnetFamilyTest, testing::Values(Family::kIpv4, Family::kIpv6),
                         [](const auto& instance) {
                           return instance.param == Family::kIpv4 ? "IPv4" : "IPv6";
                         });

TEST_P(TelnetFamilyTest, OpensWithDeletesAndSurvivesAPeerThatLeavesMidSequence) {
  Heard heard;
  LoopbackServer server(
      [&](Socket& client, const StopSignal& stop) {
        std::string text;
        ReceiveText(client, text, kOpeningSize + 4, stop);
        heard.Set(text);
        SendText(client, "\xFF\xFD\x18\x1b[2;3Hbye\x1b[1;3", stop);
        client.Shutdown();
      },
      GetParam());
  if (!server.IsOpen()) GTEST_SKIP() << "no such family here";
  FakeWatcher watcher;
  Heard debug;
  SessionOptions options;
  options.watcher = &watcher;
  options.debugLine = [&debug](std::string_view line) { debug.Set(std::string(line)); };
  TermSession session(options);
  session.Connect(server.SiteAddress());
  ASSERT_EQ(session.state, SessionState::kConnected) << session.LastEnd().detail;
  ASSERT_TRUE(WaitUntil([&] { return watcher.connected == 1; }));
  session.SendBytes("quit");
  ASSERT_TRUE(WaitUntil([&] { return session.state == SessionState::kClosed; }));
  session.Disconnect();

  EXPECT_EQ(heard.Get(), Opening() + "quit") << "nothing answers telnet options";
  EXPECT_EQ(session.LastEnd().reason, EndReason::kClosedByPeer);
  EXPECT_EQ(watcher.disconnected, 1);
  EXPECT_EQ(session.screen.RowText(1).substr(0, 6), "  bye ");
  EXPECT_EQ(session.screen.TextAt(0, 0), 0xFF) << "options are text to a raw transport";
  EXPECT_EQ(session.screen.escState, 91);
  EXPECT_EQ(session.UnsentBytes(), 0u);
  const bool six = GetParam() == Family::kIpv6;
  EXPECT_EQ(debug.Get(), (six ? " IPv6: ::1,port is " : " IPv4: 127.0.0.1,port is ") +
                             std::to_string(server.Port()) + "\n");
}

TEST(TelnetTest, AStalledPeerWithFiveMegabytesQueuedHoldsNothing) {
  std::atomic<bool> read{false};
  Heard heard;
  LoopbackServer server([&](Socket& client, const StopSignal& stop) {
    while (!read && !stop.WaitFor(1)) {
    }
    std::string text;
    ReceiveText(client, text, 1 << 30, stop);
    heard.Set(text + "!");
  });
  TermSession session({});
  session.Connect(server.SiteAddress());
  ASSERT_EQ(session.state, SessionState::kConnected);
  // The opening keys are sent as well, and so they must be counted.
  ASSERT_TRUE(WaitUntil([&] {
    std::lock_guard lock(session.keyLogLock);
    return session.keyLog.size() == 10;
  }));
  const std::string megabyte(1 << 20, 'm');
  for (int i = 0; i < 5; ++i)
    session.SendBytes(megabyte);
  session.SendBytes("tail");
  session.Disconnect();
  EXPECT_EQ(session.LastEnd().reason, EndReason::kClosedByUser);
  EXPECT_GT(session.UnsentBytes(), 0u);

  read = true;
  ASSERT_TRUE(WaitUntil([&] { return !heard.Get().empty(); }));
  EXPECT_EQ(heard.Get().size() - 1 + session.UnsentBytes(), kOpeningSize + 5 * megabyte.size() + 4);
}

TEST(TelnetTest, APeerThatResetsInTheMiddleOfAPasteEndsTheSessionOnce) {
  LoopbackServer server([](Socket& client, const StopSignal& stop) {
    std::string some;
    ReceiveText(client, some, kOpeningSize + 1000, stop);
    client.Close();  // with much unread, which resets the connection
  });
  FakeWatcher watcher;
  SessionOptions options;
  options.watcher = &watcher;
  TermSession session(options);
  session.Connect(server.SiteAddress());
  session.SendBytes(std::string(32 << 20, 'x'));
  ASSERT_TRUE(WaitUntil([&] { return watcher.disconnected == 1; }));
  session.Disconnect();
  EXPECT_THAT(session.LastEnd().reason, testing::AnyOf(EndReason::kReadFailed, EndReason::kClosedByPeer));
  EXPECT_EQ(watcher.disconnected, 1);
  EXPECT_GT(session.UnsentBytes(), 0u);
}

// As a BBS that is full does. The keys that open the session find nobody, and nobody typed them.
TEST(TelnetTest, APeerThatLeavesAtOnceIsReadToItsEndAndNothingTypedIsMissing) {
  LoopbackServer server([](Socket& client, const StopSignal& stop) {
    SendText(client, "full\r\n", stop);
    client.Shutdown();
  });
  TermSession session({});
  session.Connect(server.SiteAddress());
  ASSERT_TRUE(WaitUntil([&] { return session.state == SessionState::kClosed; }));
  EXPECT_EQ(session.UnsentBytes(), 0u);
  session.Disconnect();
  // A system that sees a reset in our writing to the peer throws away what was not read yet.
  if (session.LastEnd().reason != EndReason::kReadFailed) {
    EXPECT_EQ(session.LastEnd().reason, EndReason::kClosedByPeer);
    EXPECT_EQ(session.screen.RowText(0).substr(0, 5), "full ");
  }
}

TEST(TelnetTest, TheFirstAddressThatAnswersWins) {
  std::uint16_t refused = 0;
  {
    Listener listener;
    ASSERT_TRUE(listener.Open(Family::kIpv4, 0));
    refused = listener.Port();
  }
  std::atomic<int> clients{0};
  LoopbackServer server([&](Socket& client, const StopSignal& stop) {
    ++clients;
    std::string text;
    ReceiveText(client, text, 1 << 20, stop);
  });
  const auto resolver = [&](const std::string&, const std::string&) {
    Resolution all = ResolveHost("127.0.0.1", std::to_string(refused));
    for (int i = 0; i < 2; ++i)
      all.addresses.push_back(ResolveHost("127.0.0.1", std::to_string(server.Port())).addresses.at(0));
    return all;
  };
  TermSession session({});
  session.ConnectWith(std::make_unique<TelnetTransport>("h", "1", resolver));
  EXPECT_EQ(session.state, SessionState::kConnected) << session.LastEnd().detail;
  EXPECT_TRUE(WaitUntil([&] { return clients == 1; }));
  session.Disconnect();
}

TEST(TelnetTest, AHangingResolverDoesNotHoldTheCancel) {
  auto gate = std::make_shared<std::promise<void>>();
  auto answered = std::make_shared<std::atomic<bool>>(false);
  const auto resolver = [opened = gate->get_future().share(), answered](const std::string&,
                                                                        const std::string&) {
    opened.wait();
    *answered = true;
    return Resolution{};
  };
  {
    TermSession session({});
    session.ConnectWith(std::make_unique<TelnetTransport>("h", "1", resolver), [] { return false; });
    EXPECT_EQ(session.LastEnd().reason, EndReason::kCancelled);
  }
  EXPECT_FALSE(*answered) << "the attempt, and the session, ended before the resolver did";
  gate->set_value();
  EXPECT_TRUE(WaitUntil([&] { return answered->load(); }));
}

// A listener whose waiting room is full: the system drops further attempts and lets them try for minutes.
TEST(TelnetTest, AHostThatNeverAnswersCanBeGivenUp) {
  Listener listener;
  ASSERT_TRUE(listener.Open(Family::kIpv4, 0, 0));
  const std::string address = "127.0.0.1:" + std::to_string(listener.Port());
  std::vector<std::unique_ptr<TermSession>> waiting;
  for (int i = 0; i < 20; ++i) {
    waiting.push_back(std::make_unique<TermSession>(SessionOptions{}));
    int calls = 0;
    waiting.back()->Connect(address, [&calls] { return ++calls < 30; });
    if (waiting.back()->state == SessionState::kConnected) continue;
    if (waiting.back()->LastEnd().reason == EndReason::kConnectFailed)
      GTEST_SKIP() << "this system refuses: " << waiting.back()->LastEnd().detail;
    EXPECT_EQ(waiting.back()->LastEnd().reason, EndReason::kCancelled);
    return;
  }
  GTEST_SKIP() << "this system's waiting room has no end";
}

}  // namespace
}  // namespace quillet
