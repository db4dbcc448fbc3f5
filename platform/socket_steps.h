// The steps that socket.cpp is made of, as each system takes them (in its own socket.cpp). Platform folder
// only; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "platform/socket.h"

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

namespace quillet {

using SocketHandle = NativeSocket;
#ifdef _WIN32
inline constexpr SocketHandle kNoSocket = INVALID_SOCKET;
inline constexpr int kBothDirections = SD_BOTH;
#else
inline constexpr SocketHandle kNoSocket = -1;
inline constexpr int kBothDirections = SHUT_RDWR;
#endif

// Before the first call of the system's resolver. The steps below do it themselves.
void NeedSockets();

// Why the last call of this thread failed, and the system's text for such a number or for one of its
// resolver's. UTF-8.
int LastSocketFault();
std::string SocketFaultText(int fault);
std::string ResolverFaultText(int fault);

// A stream that never blocks and that no child process inherits, or kNoSocket.
SocketHandle NewStream(ResolvedAddress::Family family);
void CloseSocket(SocketHandle handle);

// So that a listener gets the port of one that has just ended, and nobody else gets it meanwhile.
void ClaimPort(SocketHandle handle);

enum class SocketStep {
  kDone,
  kAgain,     // once the handle is ready
  kEnded,     // the connection, in good order
  kShortage,  // of handles or memory: over when somebody else closes something
  kFailed     // LastSocketFault tells why
};

// kAgain: under way; SO_ERROR tells how it went once the handle can be written.
SocketStep BeginConnect(SocketHandle handle, std::span<const std::uint8_t> address);
// At least one byte into `buffer`, or from `bytes`; `count` tells how many once it is done.
SocketStep ReceiveSome(SocketHandle handle, std::span<std::uint8_t> buffer, std::size_t& count);
SocketStep SendSome(SocketHandle handle, std::span<const std::uint8_t> bytes, std::size_t& count);
// A client of `listener`, which never blocks and is not inherited either.
SocketStep TakeClient(SocketHandle listener, SocketHandle& client);

// Something that can be read for good once it was rung, or kNoSocket.
SocketHandle NewBell();
void RingBell(SocketHandle bell);
// Waits up to `milliseconds` for the bell alone.
void WaitForBell(SocketHandle bell, int milliseconds);
// The same, but bytes to read from `stream` end it too.
void WaitForBellOrInput(SocketHandle bell, SocketHandle stream, int milliseconds);

enum class Direction { kRead, kWrite };
enum class Ready { kYes, kStopped };

// Waits until `handle` is ready (an error or a hang-up counts as ready: the next call tells which) or the
// bell rings.
Ready WaitReady(SocketHandle handle, Direction direction, SocketHandle bell);

}  // namespace quillet
