// Where a session stands with its connection, as the session knows it and as each copy of the screen carries
// it. Any thread.
#pragma once

namespace quillet {

enum class SessionState : int {
  kIdle = 0,  // never connected
  kConnecting = 1,
  kConnected = 2,
  kClosed = 8
};

}  // namespace quillet
