// Plain TCP: the terminal's bytes and nothing else.
#pragma once

#include <cstdint>

#include "demo/wires/wire.h"

namespace quillet::demo {

// On 127.0.0.1; port 0 lets the system choose.
OpenedDoor OpenTelnetDoor(std::uint16_t port);

}  // namespace quillet::demo
