#include "platform/stream_tuning.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

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

}  // namespace

void TuneStream(NativeSocket stream) {
  Set(stream, IPPROTO_TCP, TCP_NODELAY, 1);
  Set(stream, IPPROTO_TCP, TCP_KEEPIDLE, kSilenceSeconds);
  Set(stream, IPPROTO_TCP, TCP_KEEPINTVL, kAskAgainSeconds);
  Set(stream, IPPROTO_TCP, TCP_KEEPCNT, kQuestions);
  Set(stream, IPPROTO_TCP, TCP_USER_TIMEOUT, kUnansweredMs);
  Set(stream, SOL_SOCKET, SO_KEEPALIVE, 1);
}

}  // namespace quillet
