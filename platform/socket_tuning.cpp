#include "platform/socket_tuning.h"

#include <type_traits>

#include "platform/socket_steps.h"

namespace quillet {

static_assert(std::is_same_v<NativeSocket, SocketHandle>);

void TuneStream(NativeSocket stream) {
  const int on = 1;
  setsockopt(stream, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
}

}  // namespace quillet
