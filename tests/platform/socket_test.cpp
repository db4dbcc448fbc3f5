#include "platform/socket.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

#include "tests/support/loopback_server.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

using Family = ResolvedAddress::Family;
using Result = Socket::Result;

ResolvedAddress OnlyAddress(const std::string& host, std::uint16_t port) {
  const Resolution resolution = ResolveHost(host, std::to_string(port));
  EXPECT_FALSE(resolution.addresses.empty()) << resolution.error;
  return resolution.addresses.empty() ? ResolvedAddress{} : resolution.addresses.front();
}

TEST(ResolveTest, LiteralsKeepFamilyTextAndPort) {
  const ResolvedAddress four = OnlyAddress("127.0.0.1", 23);
  EXPECT_EQ(four.family, Family::kIpv4);
  EXPECT_EQ(four.text, "127.0.0.1");
  EXPECT_EQ(four.port, 23);
  const ResolvedAddress six = OnlyAddress("::1", 65535);
  EXPECT_EQ(six.family, Family::kIpv6);
  EXPECT_EQ(six.text, "::1");
  EXPECT_EQ(six.port, 65535);
}

TEST(ResolveTest, WhatSystemsDisagreeAboutIsRefusedWithAReason) {
  struct Case {
    std::string host, port;
  };
  using namespace std::string_literals;
  for (const Case& wrong :
       {Case{"", "23"}, Case{"127.0.0.1", ""}, Case{"127.0.0.1", "0"}, Case{"127.0.0.1", "65536"},
        Case{"127.0.0.1", "99999999999"}, Case{"127.0.0.1", "-1"}, Case{"127.0.0.1", "23x"},
        Case{"127.0.0.1", "443/bbs"}, Case{"127.0.0.1\0.example"s, "23"}, Case{"127.0.0.1", "23\0"s}}) {
    const Resolution resolution = ResolveHost(wrong.host, wrong.port);
    EXPECT_TRUE(resolution.addresses.empty()) << wrong.host << " " << wrong.port;
    EXPECT_FALSE(resolution.error.empty()) << wrong.host << " " << wrong.port;
  }
}

class SocketTest : public testing::TestWithParam<Family> {};
INSTANTIATE_TEST_SUITE_P(Families, SocketTest, testing::Values(Family::kIpv4, Family::kIpv6),
                         [](const auto& instance) {
                           return instance.param == Family::kIpv4 ? "IPv4" : "IPv6";
                         });

TEST_P(SocketTest, BytesGoBothWaysAndTheEndIsSeen) {
  std::string heard;
  LoopbackServer server(
      [&heard](Socket& client, const StopSignal& stop) {
        ReceiveText(client, heard, 5, stop);
        SendText(client, "world", stop);
        client.Close();
      },
      GetParam());
  if (!server.IsOpen()) GTEST_SKIP() << "no such family here";

  const std::string host = GetParam() == Family::kIpv6 ? "::1" : "127.0.0.1";
  StopSignal stop;
  Socket socket;
  ASSERT_EQ(socket.Connect(OnlyAddress(host, server.Port()), stop), Result::kOk) << socket.LastError();
  Socket moved = std::move(socket);
  EXPECT_FALSE(socket.IsOpen());
  ASSERT_TRUE(SendText(moved, "hello", stop));
  std::string answer;
  ReceiveText(moved, answer, 1000, stop);
  EXPECT_EQ(answer, "world");
  EXPECT_EQ(heard, "hello");
}

TEST_P(SocketTest, ARefusedConnectSaysSo) {
  std::uint16_t port = 0;
  {
    Listener listener;
    if (!listener.Open(GetParam(), 0)) GTEST_SKIP() << "no such family here";
    port = listener.Port();
  }
  StopSignal stop;
  Socket socket;
  const std::string host = GetParam() == Family::kIpv6 ? "::1" : "127.0.0.1";
  EXPECT_EQ(socket.Connect(OnlyAddress(host, port), stop), Result::kError);
  EXPECT_FALSE(socket.LastError().empty());
  EXPECT_FALSE(socket.IsOpen());
}

TEST(SocketStopTest, TheSignalWakesEveryWait) {
  LoopbackServer server([](Socket&, const StopSignal& stop) {
    while (!stop.WaitFor(1000)) {
    }
  });
  StopSignal never;
  Socket socket;
  ASSERT_EQ(socket.Connect(OnlyAddress("127.0.0.1", server.Port()), never), Result::kOk);
  Listener idle;
  ASSERT_TRUE(idle.Open(Family::kIpv4, 0));

  StopSignal stop;
  std::atomic<int> ended{0};
  std::thread receiver([&] {
    std::vector<std::uint8_t> buffer(10);
    std::size_t count = 1;
    EXPECT_EQ(socket.Receive(buffer, count, stop), Result::kStopped);
    EXPECT_EQ(count, 0u);
    ++ended;
  });
  std::size_t sent = 0;
  const std::vector<std::uint8_t> much(64 << 20, 'x');
  std::thread sender([&] {
    EXPECT_EQ(socket.Send(much, sent, stop), Result::kStopped);
    ++ended;
  });
  std::thread acceptor([&] {
    EXPECT_EQ(idle.Accept(stop), nullptr);
    ++ended;
  });
  EXPECT_FALSE(stop.WaitFor(20));
  EXPECT_EQ(ended, 0);
  stop.Set();
  receiver.join();
  sender.join();
  acceptor.join();
  EXPECT_GT(sent, 0u);
  EXPECT_LT(sent, much.size());
  EXPECT_TRUE(stop.WaitFor(1000000));
}

TEST(SocketStopTest, ShutdownEndsAWaitingReceiveAndTellsThePeer) {
  std::atomic<bool> peerSawTheEnd{false};
  LoopbackServer server([&](Socket& client, const StopSignal& stop) {
    std::string nothing;
    ReceiveText(client, nothing, 1, stop);
    peerSawTheEnd = !stop.IsSet() && nothing.empty();
  });
  StopSignal never;
  Socket socket;
  ASSERT_EQ(socket.Connect(OnlyAddress("127.0.0.1", server.Port()), never), Result::kOk);
  std::thread receiver([&] {
    std::vector<std::uint8_t> buffer(10);
    std::size_t count = 0;
    EXPECT_NE(socket.Receive(buffer, count, never), Result::kOk);
  });
  socket.Shutdown();
  receiver.join();
  EXPECT_TRUE(WaitUntil([&] { return peerSawTheEnd.load(); }));
}

}  // namespace
}  // namespace quillet
