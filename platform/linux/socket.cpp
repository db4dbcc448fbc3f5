#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

#include "platform/socket_steps.h"

namespace quillet {
namespace {

SocketStep StepOf(int fault) {
  switch (fault) {
    case EAGAIN:
    case EINTR:
      return SocketStep::kAgain;
    case EPIPE:
      return SocketStep::kEnded;
    case EMFILE:
    case ENFILE:
    case ENOBUFS:
    case ENOMEM:
      return SocketStep::kShortage;
    default:
      return SocketStep::kFailed;
  }
}

}  // namespace

void NeedSockets() {}

int LastSocketFault() {
  return errno;
}

std::string SocketFaultText(int fault) {
  return std::generic_category().message(fault);
}

std::string ResolverFaultText(int fault) {
  return fault == EAI_SYSTEM ? SocketFaultText(errno) : gai_strerror(fault);
}

SocketHandle NewStream(ResolvedAddress::Family family) {
  const int domain = family == ResolvedAddress::Family::kIpv6 ? AF_INET6 : AF_INET;
  return socket(domain, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, IPPROTO_TCP);
}

void CloseSocket(SocketHandle handle) {
  close(handle);
}

void ClaimPort(SocketHandle handle) {
  const int on = 1;
  setsockopt(handle, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

SocketStep BeginConnect(SocketHandle handle, std::span<const std::uint8_t> address) {
  const auto* raw = reinterpret_cast<const sockaddr*>(address.data());
  if (connect(handle, raw, static_cast<socklen_t>(address.size())) == 0) return SocketStep::kDone;
  return errno == EINPROGRESS || errno == EINTR ? SocketStep::kAgain : SocketStep::kFailed;
}

SocketStep ReceiveSome(SocketHandle handle, std::span<std::uint8_t> buffer, std::size_t& count) {
  const ssize_t got = recv(handle, buffer.data(), buffer.size(), 0);
  if (got == 0) return SocketStep::kEnded;
  if (got < 0) return StepOf(errno);
  count = static_cast<std::size_t>(got);
  return SocketStep::kDone;
}

SocketStep SendSome(SocketHandle handle, std::span<const std::uint8_t> bytes, std::size_t& count) {
  const ssize_t sent = send(handle, bytes.data(), bytes.size(), MSG_NOSIGNAL);
  if (sent < 0) return StepOf(errno);
  count = static_cast<std::size_t>(sent);
  return SocketStep::kDone;
}

SocketStep TakeClient(SocketHandle listener, SocketHandle& client) {
  client = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (client != kNoSocket) return SocketStep::kDone;
  // A client that has gone again before it was taken is none of the server's errors.
  return errno == ECONNABORTED ? SocketStep::kAgain : StepOf(errno);
}

SocketHandle NewBell() {
  return eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
}

void RingBell(SocketHandle bell) {
  eventfd_write(bell, 1);
}

void WaitForBell(SocketHandle bell, int milliseconds) {
  pollfd wait{bell, POLLIN, 0};
  poll(&wait, 1, milliseconds);
}

void WaitForBellOrInput(SocketHandle bell, SocketHandle stream, int milliseconds) {
  pollfd waits[2] = {{bell, POLLIN, 0}, {stream, POLLIN, 0}};
  poll(waits, 2, milliseconds);
}

Ready WaitReady(SocketHandle handle, Direction direction, SocketHandle bell) {
  const short events = direction == Direction::kRead ? POLLIN : POLLOUT;
  pollfd waits[2] = {{handle, events, 0}, {bell, POLLIN, 0}};
  while (true) {
    const int count = poll(waits, 2, -1);
    if (count < 0 && errno != EINTR) return Ready::kYes;
    if (count <= 0) continue;
    return waits[1].revents ? Ready::kStopped : Ready::kYes;
  }
}

}  // namespace quillet
