// The terminal's bytes in a shell of SSH: the user "bbs" comes in with the empty password, like the public
// account of a BBS. The host's key is made anew with every door.
#pragma once

#include <cstdint>

#include "demo/wires/wire.h"

namespace quillet::demo {

// On 127.0.0.1; port 0 lets the system choose.
OpenedDoor OpenSshDoor(std::uint16_t port);

}  // namespace quillet::demo
