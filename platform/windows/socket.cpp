#include <algorithm>
#include <climits>

#include "platform/socket_steps.h"
#include "platform/windows/winsock.h"

namespace quillet {
namespace {

SocketStep StepOf(int fault) {
  switch (fault) {
    case WSAEWOULDBLOCK:
    case WSAEINTR:
      return SocketStep::kAgain;
    case WSAESHUTDOWN:
      return SocketStep::kEnded;
    case WSAEMFILE:
    case WSAENOBUFS:
      return SocketStep::kShortage;
    default:
      return SocketStep::kFailed;
  }
}

void DoNotBlock(SocketHandle handle) {
  u_long on = 1;
  ioctlsocket(handle, static_cast<long>(FIONBIO), &on);
}

void DoNotInherit(SocketHandle handle) {
  SetHandleInformation(reinterpret_cast<HANDLE>(handle), HANDLE_FLAG_INHERIT, 0);
}

// Bound and connected to itself.
bool Loop(SocketHandle handle) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* raw = reinterpret_cast<sockaddr*>(&address);
  int size = sizeof address;
  return bind(handle, raw, size) == 0 && getsockname(handle, raw, &size) == 0 &&
         connect(handle, raw, size) == 0;
}

}  // namespace

void NeedSockets() {
  NeedWinsock();
}

int LastSocketFault() {
  return WSAGetLastError();
}

std::string SocketFaultText(int fault) {
  return SystemErrorText(fault);
}

std::string ResolverFaultText(int fault) {
  return SystemErrorText(fault);
}

SocketHandle NewStream(ResolvedAddress::Family family) {
  NeedSockets();
  const int domain = family == ResolvedAddress::Family::kIpv6 ? AF_INET6 : AF_INET;
  const SocketHandle handle = socket(domain, SOCK_STREAM, IPPROTO_TCP);
  if (handle == kNoSocket) return handle;
  DoNotInherit(handle);
  DoNotBlock(handle);
  return handle;
}

void CloseSocket(SocketHandle handle) {
  closesocket(handle);
}

void ClaimPort(SocketHandle handle) {
  // The port of a listener that has ended is free at once; another program may take over that of one that
  // runs.
  const int on = 1;
  setsockopt(handle, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&on), sizeof on);
}

SocketStep BeginConnect(SocketHandle handle, std::span<const std::uint8_t> address) {
  const auto* raw = reinterpret_cast<const sockaddr*>(address.data());
  if (connect(handle, raw, static_cast<int>(address.size())) == 0) return SocketStep::kDone;
  return StepOf(WSAGetLastError()) == SocketStep::kAgain ? SocketStep::kAgain : SocketStep::kFailed;
}

SocketStep ReceiveSome(SocketHandle handle, std::span<std::uint8_t> buffer, std::size_t& count) {
  const int size = static_cast<int>(std::min<std::size_t>(buffer.size(), INT_MAX));
  const int got = recv(handle, reinterpret_cast<char*>(buffer.data()), size, 0);
  if (got == 0) return SocketStep::kEnded;
  if (got < 0) return StepOf(WSAGetLastError());  // kEnded by our own Shutdown
  count = static_cast<std::size_t>(got);
  return SocketStep::kDone;
}

SocketStep SendSome(SocketHandle handle, std::span<const std::uint8_t> bytes, std::size_t& count) {
  // One call with more than this is taken whole by the system, however little the peer reads.
  constexpr std::size_t kPiece = 16384;
  const int size = static_cast<int>(std::min(bytes.size(), kPiece));
  const int sent = send(handle, reinterpret_cast<const char*>(bytes.data()), size, 0);
  if (sent < 0) return StepOf(WSAGetLastError());
  count = static_cast<std::size_t>(sent);
  return SocketStep::kDone;
}

SocketStep TakeClient(SocketHandle listener, SocketHandle& client) {
  client = accept(listener, nullptr, nullptr);
  if (client != kNoSocket) {
    DoNotInherit(client);
    DoNotBlock(client);
    return SocketStep::kDone;
  }
  // A client that has gone again before it was taken is none of the server's errors.
  const int fault = WSAGetLastError();
  return fault == WSAECONNRESET ? SocketStep::kAgain : StepOf(fault);
}

// A datagram socket that is connected to itself: the one thing that select can wait for beside a stream.
SocketHandle NewBell() {
  NeedSockets();
  const SocketHandle bell = socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  if (bell == kNoSocket) return bell;
  DoNotInherit(bell);
  DoNotBlock(bell);
  if (Loop(bell)) return bell;
  const int fault = WSAGetLastError();
  closesocket(bell);
  WSASetLastError(fault);
  return kNoSocket;
}

void RingBell(SocketHandle bell) {
  const char byte = 1;
  send(bell, &byte, 1, 0);
}

void WaitForBell(SocketHandle bell, int milliseconds) {
  fd_set reads;
  FD_ZERO(&reads);
  FD_SET(bell, &reads);
  timeval limit{milliseconds / 1000, milliseconds % 1000 * 1000};
  select(0, &reads, nullptr, nullptr, &limit);
}

void WaitForBellOrInput(SocketHandle bell, SocketHandle stream, int milliseconds) {
  fd_set reads;
  FD_ZERO(&reads);
  FD_SET(bell, &reads);
  FD_SET(stream, &reads);
  timeval limit{milliseconds / 1000, milliseconds % 1000 * 1000};
  select(0, &reads, nullptr, nullptr, &limit);
}

Ready WaitReady(SocketHandle handle, Direction direction, SocketHandle bell) {
  while (true) {
    fd_set reads;
    fd_set writes;
    fd_set faults;  // where a failed connect shows
    FD_ZERO(&reads);
    FD_ZERO(&writes);
    FD_ZERO(&faults);
    FD_SET(bell, &reads);
    FD_SET(handle, direction == Direction::kRead ? &reads : &writes);
    FD_SET(handle, &faults);
    const int count = select(0, &reads, &writes, &faults, nullptr);
    if (count == SOCKET_ERROR) return Ready::kYes;
    if (FD_ISSET(bell, &reads)) return Ready::kStopped;
    if (count > 0) return Ready::kYes;
  }
}

}  // namespace quillet
