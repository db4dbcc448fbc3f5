#include "platform/stream_tuning.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <optional>
#include <sys/socket.h>
#include <system_error>

namespace quillet {
namespace {

// Silence of a minute is asked about; the third question without an answer is the last.
constexpr int kSilenceSeconds = 60;
constexpr int kAskAgainSeconds = 15;
constexpr int kQuestions = 3;
// For bytes that are not acknowledged. While it is set, it is what ends the questions as well: with the first
// that would be asked after it.
constexpr unsigned kUnansweredMs = 100'000;

template <typename Value>
void Set(int handle, int level, int name, Value value) {
  setsockopt(handle, level, name, &value, sizeof value);
}

constexpr const char* kOwnHandles = "/proc/self/fd";

// Empty for what is no connected stream.
std::optional<sockaddr_storage> PeerOf(int handle) {
  sockaddr_storage peer{};
  socklen_t size = sizeof peer;
  int type = 0;
  socklen_t typeSize = sizeof type;
  if (getsockopt(handle, SOL_SOCKET, SO_TYPE, &type, &typeSize) != 0 || type != SOCK_STREAM) return {};
  if (getpeername(handle, reinterpret_cast<sockaddr*>(&peer), &size) != 0) return {};
  return peer;
}

template <typename Address>
Address As(const void* raw) {
  Address address;
  std::memcpy(&address, raw, sizeof address);
  return address;
}

bool IsAt(const sockaddr_storage& peer, const ResolvedAddress& address) {
  const void* const raw = address.raw.data();
  if (peer.ss_family == AF_INET && address.raw.size() == sizeof(sockaddr_in)) {
    const auto one = As<sockaddr_in>(&peer), other = As<sockaddr_in>(raw);
    return one.sin_port == other.sin_port && one.sin_addr.s_addr == other.sin_addr.s_addr;
  }
  if (peer.ss_family == AF_INET6 && address.raw.size() == sizeof(sockaddr_in6)) {
    const auto one = As<sockaddr_in6>(&peer), other = As<sockaddr_in6>(raw);
    return one.sin6_port == other.sin6_port && std::memcmp(&one.sin6_addr, &other.sin6_addr, 16) == 0;
  }
  return false;
}

}  // namespace

void TuneStream(NativeSocket stream) {
  Set(stream, IPPROTO_TCP, TCP_NODELAY, 1);
  Set(stream, IPPROTO_TCP, TCP_KEEPIDLE, kSilenceSeconds);
  Set(stream, IPPROTO_TCP, TCP_KEEPINTVL, kAskAgainSeconds);
  Set(stream, IPPROTO_TCP, TCP_KEEPCNT, kQuestions);
  Set(stream, IPPROTO_TCP, TCP_USER_TIMEOUT, kUnansweredMs);
  Set(stream, SOL_SOCKET, SO_KEEPALIVE, 1);
}

int TuneStreamsTo(std::span<const ResolvedAddress> peers) {
  int found = 0;
  std::error_code fault;
  // One that is closed meanwhile, and whose number is another's by then, is one more that sends at once.
  for (std::filesystem::directory_iterator entry(kOwnHandles, fault), end; !fault && entry != end;
       entry.increment(fault)) {
    const int handle = std::atoi(entry->path().filename().c_str());
    const std::optional<sockaddr_storage> peer = PeerOf(handle);
    if (!peer || std::none_of(peers.begin(), peers.end(), [&](const auto& at) { return IsAt(*peer, at); }))
      continue;
    TuneStream(handle);
    ++found;
  }
  return found;
}

}  // namespace quillet
