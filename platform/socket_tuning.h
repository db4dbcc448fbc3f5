// How a TCP stream that carries a terminal is set up, whoever has opened it: the sockets of socket.h and
// those of libraries alike. Any thread.
#pragma once

#include <cstdint>

namespace quillet {

// The system's own handle of a socket.
#ifdef _WIN32
using NativeSocket = std::uintptr_t;
#else
using NativeSocket = int;
#endif

// A key is sent as soon as it is pressed. What the system refuses is left as it was.
void TuneStream(NativeSocket stream);

}  // namespace quillet
