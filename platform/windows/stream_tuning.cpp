#include "platform/stream_tuning.h"

// The last needs what the others declare.
// clang-format off
#include <winsock2.h>
#include <ws2tcpip.h>
#include <mstcpip.h>
// clang-format on

namespace quillet {
namespace {

// Silence of a minute is asked about, ten times: the system lets nobody change how often.
constexpr ULONG kSilenceMs = 60'000;
constexpr ULONG kAskAgainMs = 5'000;
// TCP_MAXRT, which not every toolchain's headers have: for bytes that are not acknowledged.
constexpr int kGiveUpAfter = 5;
constexpr DWORD kUnansweredSeconds = 100;

template <typename Value>
void Set(SOCKET stream, int name, Value value) {
  setsockopt(stream, IPPROTO_TCP, name, reinterpret_cast<const char*>(&value), sizeof value);
}

}  // namespace

void TuneStream(NativeSocket stream) {
  Set(stream, TCP_NODELAY, DWORD{1});
  Set(stream, kGiveUpAfter, kUnansweredSeconds);
  tcp_keepalive questions{};
  questions.onoff = 1;
  questions.keepalivetime = kSilenceMs;
  questions.keepaliveinterval = kAskAgainMs;
  DWORD size = 0;
  WSAIoctl(stream, SIO_KEEPALIVE_VALS, &questions, sizeof questions, nullptr, 0, &size, nullptr, nullptr);
}

// Asking a handle of unknown kind what it is can wait for whoever reads from it.
int TuneStreamsTo(std::span<const ResolvedAddress> /*peers*/) {
  return 0;
}

}  // namespace quillet
