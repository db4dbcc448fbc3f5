// WebSocket over TLS, as a gateway in front of a BBS speaks it: the terminal's bytes in binary messages, on
// one path, for clients that name where they come from.
#pragma once

#include <cstdint>
#include <string>

#include "demo/wires/wire.h"

namespace quillet::demo {

struct OpenedWebSocketDoor {
  OpenedDoor opened;
  std::string authority;  // PEM: whose signature the door's certificate bears
};

// On 127.0.0.1; port 0 lets the system choose.
OpenedWebSocketDoor OpenWebSocketDoor(std::uint16_t port);

}  // namespace quillet::demo
