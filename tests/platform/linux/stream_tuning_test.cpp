// What the system says that a connection of ours is set to.
#include "platform/stream_tuning.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <vector>

#include "platform/socket.h"

namespace quillet {
namespace {

int Option(int handle, int level, int name) {
  int value = -1;
  socklen_t size = sizeof value;
  getsockopt(handle, level, name, &value, &size);
  return value;
}

// The handle among this process's whose peer is that port.
std::optional<int> HandleTo(std::uint16_t port) {
  constexpr int kMostHandles = 1024;
  for (int handle = 0; handle < kMostHandles; ++handle) {
    sockaddr_in peer{};
    socklen_t size = sizeof peer;
    const bool hasPeer = getpeername(handle, reinterpret_cast<sockaddr*>(&peer), &size) == 0;
    if (hasPeer && peer.sin_family == AF_INET && ntohs(peer.sin_port) == port) return handle;
  }
  return std::nullopt;
}

TEST(StreamTuningTest, AConnectionNoticesWithinTwoMinutesThatItsPeerIsGone) {
  const StopSignal stop;
  Listener listener;
  ASSERT_TRUE(listener.Open(ResolvedAddress::Family::kIpv4, 0));
  Socket client;
  std::vector<ResolvedAddress> peers = ResolveHost("127.0.0.1", std::to_string(listener.Port())).addresses;
  ASSERT_EQ(client.Connect(peers.at(0), stop), Socket::Result::kOk);
  const std::optional<int> handle = HandleTo(listener.Port());
  ASSERT_TRUE(handle);
  EXPECT_EQ(Option(*handle, IPPROTO_TCP, TCP_NODELAY), 1);
  EXPECT_EQ(Option(*handle, SOL_SOCKET, SO_KEEPALIVE), 1);
  const int silence = Option(*handle, IPPROTO_TCP, TCP_KEEPIDLE);
  const int interval = Option(*handle, IPPROTO_TCP, TCP_KEEPINTVL);
  const int unanswered = Option(*handle, IPPROTO_TCP, TCP_USER_TIMEOUT);
  EXPECT_LT(silence + interval * Option(*handle, IPPROTO_TCP, TCP_KEEPCNT), 120);
  EXPECT_GT(unanswered, 0);
  EXPECT_LT(unanswered + interval * 1000, 120'000) << "the next question after it is the last";

  const int off = 0;
  setsockopt(*handle, IPPROTO_TCP, TCP_NODELAY, &off, sizeof off);
  EXPECT_EQ(TuneStreamsTo(ResolveHost("127.0.0.2", std::to_string(listener.Port())).addresses), 0);
  EXPECT_EQ(Option(*handle, IPPROTO_TCP, TCP_NODELAY), 0);
  EXPECT_EQ(TuneStreamsTo(peers), 1) << "as one of a library's";
  EXPECT_EQ(Option(*handle, IPPROTO_TCP, TCP_NODELAY), 1);
}

}  // namespace
}  // namespace quillet
