#include "platform/socket.h"

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/host_port.h"

namespace quillet {
namespace {

constexpr int kNone = -1;
constexpr int kShortageInterval = 50;  // milliseconds

std::string ErrorText(int code) {
  return std::generic_category().message(code);
}

enum class Ready { kYes, kStopped };

// Waits until `handle` is ready for `events` (an error or a hang-up counts as ready: the next call tells
// which) or the stop handle is.
Ready WaitReady(int handle, short events, int stopHandle) {
  pollfd waits[2] = {{handle, events, 0}, {stopHandle, POLLIN, 0}};
  while (true) {
    const int count = poll(waits, 2, -1);
    if (count < 0 && errno != EINTR) return Ready::kYes;
    if (count <= 0) continue;
    return waits[1].revents ? Ready::kStopped : Ready::kYes;
  }
}

bool WouldBlock(int code) {
  return code == EAGAIN || code == EWOULDBLOCK || code == EINTR;
}

// Not the listener's fault, and over when somebody else closes something.
bool IsShortage(int code) {
  return code == EMFILE || code == ENFILE || code == ENOBUFS || code == ENOMEM;
}

// A key is sent as soon as it is pressed.
void SendAtOnce(int handle) {
  const int on = 1;
  setsockopt(handle, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

ResolvedAddress::Family FamilyOf(int family) {
  return family == AF_INET6 ? ResolvedAddress::Family::kIpv6 : ResolvedAddress::Family::kIpv4;
}

ResolvedAddress Described(const addrinfo& entry) {
  ResolvedAddress address;
  address.family = FamilyOf(entry.ai_family);
  const auto* raw = reinterpret_cast<const std::uint8_t*>(entry.ai_addr);
  address.raw.assign(raw, raw + entry.ai_addrlen);
  char text[INET6_ADDRSTRLEN] = "";
  if (entry.ai_family == AF_INET6) {
    sockaddr_in6 six{};
    std::memcpy(&six, raw, std::min<std::size_t>(sizeof six, entry.ai_addrlen));
    inet_ntop(AF_INET6, &six.sin6_addr, text, sizeof text);
    address.port = ntohs(six.sin6_port);
  } else {
    sockaddr_in four{};
    std::memcpy(&four, raw, std::min<std::size_t>(sizeof four, entry.ai_addrlen));
    inet_ntop(AF_INET, &four.sin_addr, text, sizeof text);
    address.port = ntohs(four.sin_port);
  }
  address.text = text;
  return address;
}

}  // namespace

Resolution ResolveHost(const std::string& host, const std::string& port) {
  Resolution resolution;
  resolution.error = HostPortFault(host, port);
  if (!resolution.error.empty()) return resolution;

  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* list = nullptr;
  const int code = getaddrinfo(host.c_str(), port.c_str(), &hints, &list);
  if (code != 0) {
    resolution.error = code == EAI_SYSTEM ? ErrorText(errno) : gai_strerror(code);
    return resolution;
  }
  for (const addrinfo* entry = list; entry; entry = entry->ai_next)
    if (entry->ai_family == AF_INET || entry->ai_family == AF_INET6)
      resolution.addresses.push_back(Described(*entry));
  freeaddrinfo(list);
  if (resolution.addresses.empty()) resolution.error = gai_strerror(EAI_NONAME);
  return resolution;
}

// ---- StopSignal

struct StopSignal::Impl {
  int handle = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  std::atomic<bool> set{false};
};

StopSignal::StopSignal() : impl_(std::make_unique<Impl>()) {
  if (impl_->handle < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

StopSignal::~StopSignal() {
  close(impl_->handle);
}

void StopSignal::Set() {
  if (impl_->set.exchange(true)) return;
  eventfd_write(impl_->handle, 1);
}

bool StopSignal::IsSet() const {
  return impl_->set;
}

bool StopSignal::WaitFor(int milliseconds) const {
  pollfd wait{impl_->handle, POLLIN, 0};
  poll(&wait, 1, milliseconds);
  return impl_->set;
}

// ---- Socket

struct Socket::Impl {
  int handle = kNone;
  mutable std::mutex errorLock;
  std::string error;

  Result Fail(int code) {
    std::lock_guard lock(errorLock);
    error = ErrorText(code);
    return Result::kError;
  }
};

Socket::Socket() : impl_(std::make_unique<Impl>()) {}
Socket::Socket(Socket&&) noexcept = default;

Socket& Socket::operator=(Socket&& other) noexcept {
  if (this == &other) return *this;
  Close();
  impl_ = std::move(other.impl_);
  return *this;
}

Socket::~Socket() {
  Close();
}

Socket::Result Socket::Connect(const ResolvedAddress& address, const StopSignal& stop) {
  Close();
  if (!impl_) impl_ = std::make_unique<Impl>();
  const int family = address.family == ResolvedAddress::Family::kIpv6 ? AF_INET6 : AF_INET;
  impl_->handle = socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, IPPROTO_TCP);
  if (!IsOpen()) return impl_->Fail(errno);

  const auto* raw = reinterpret_cast<const sockaddr*>(address.raw.data());
  int code = connect(impl_->handle, raw, static_cast<socklen_t>(address.raw.size())) == 0 ? 0 : errno;
  if (code == EINPROGRESS || code == EINTR) {
    if (WaitReady(impl_->handle, POLLOUT, stop.impl_->handle) == Ready::kStopped) {
      Close();
      return Result::kStopped;
    }
    socklen_t size = sizeof code;
    if (getsockopt(impl_->handle, SOL_SOCKET, SO_ERROR, &code, &size) != 0) code = errno;
  }
  if (code != 0) {
    Close();
    return impl_->Fail(code);
  }
  SendAtOnce(impl_->handle);
  return Result::kOk;
}

Socket::Result Socket::Receive(std::span<std::uint8_t> buffer, std::size_t& count, const StopSignal& stop) {
  count = 0;
  if (!IsOpen()) return Result::kClosed;
  while (true) {
    if (WaitReady(impl_->handle, POLLIN, stop.impl_->handle) == Ready::kStopped) return Result::kStopped;
    const ssize_t got = recv(impl_->handle, buffer.data(), buffer.size(), 0);
    if (got == 0) return Result::kClosed;
    if (got > 0) {
      count = static_cast<std::size_t>(got);
      return Result::kOk;
    }
    if (!WouldBlock(errno)) return impl_->Fail(errno);
  }
}

Socket::Result Socket::Send(std::span<const std::uint8_t> bytes, std::size_t& count, const StopSignal& stop) {
  count = 0;
  if (!IsOpen()) return Result::kClosed;
  while (count < bytes.size()) {
    if (WaitReady(impl_->handle, POLLOUT, stop.impl_->handle) == Ready::kStopped) return Result::kStopped;
    const auto rest = bytes.subspan(count);
    const ssize_t sent = send(impl_->handle, rest.data(), rest.size(), MSG_NOSIGNAL);
    if (sent >= 0)
      count += static_cast<std::size_t>(sent);
    else if (errno == EPIPE)
      return Result::kClosed;
    else if (!WouldBlock(errno))
      return impl_->Fail(errno);
  }
  return Result::kOk;
}

void Socket::Shutdown() {
  if (IsOpen()) shutdown(impl_->handle, SHUT_RDWR);
}

void Socket::Close() {
  if (!IsOpen()) return;
  close(impl_->handle);
  impl_->handle = kNone;
}

bool Socket::IsOpen() const {
  return impl_ && impl_->handle != kNone;
}

std::string Socket::LastError() const {
  if (!impl_) return {};
  std::lock_guard lock(impl_->errorLock);
  return impl_->error;
}

// ---- Listener

struct Listener::Impl {
  int handle = kNone;
  std::uint16_t port = 0;
  std::string error;

  bool Fail() {
    error = ErrorText(errno);
    if (handle != kNone) close(std::exchange(handle, kNone));
    return false;
  }
  bool Bind(ResolvedAddress::Family family, std::uint16_t wanted);
  bool ReadPort();
};

bool Listener::Impl::Bind(ResolvedAddress::Family family, std::uint16_t wanted) {
  const int on = 1;
  setsockopt(handle, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  if (family == ResolvedAddress::Family::kIpv6) {
    setsockopt(handle, IPPROTO_IPV6, IPV6_V6ONLY, &on, sizeof on);
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_port = htons(wanted);
    address.sin6_addr = in6addr_loopback;
    return bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(wanted);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

bool Listener::Impl::ReadPort() {
  sockaddr_storage bound{};
  socklen_t size = sizeof bound;
  if (getsockname(handle, reinterpret_cast<sockaddr*>(&bound), &size) != 0) return false;
  const void* raw = &bound;
  port = ntohs(bound.ss_family == AF_INET6 ? static_cast<const sockaddr_in6*>(raw)->sin6_port
                                           : static_cast<const sockaddr_in*>(raw)->sin_port);
  return true;
}

Listener::Listener() : impl_(std::make_unique<Impl>()) {}

Listener::~Listener() {
  if (impl_->handle != kNone) close(impl_->handle);
}

bool Listener::Open(ResolvedAddress::Family family, std::uint16_t port, int backlog) {
  if (impl_->handle != kNone) close(std::exchange(impl_->handle, kNone));
  const int domain = family == ResolvedAddress::Family::kIpv6 ? AF_INET6 : AF_INET;
  impl_->handle = socket(domain, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, IPPROTO_TCP);
  if (impl_->handle == kNone) return impl_->Fail();
  const bool listening =
      impl_->Bind(family, port) && listen(impl_->handle, backlog) == 0 && impl_->ReadPort();
  return listening || impl_->Fail();
}

std::uint16_t Listener::Port() const {
  return impl_->port;
}

std::unique_ptr<Socket> Listener::Accept(const StopSignal& stop) {
  while (impl_->handle != kNone) {
    if (WaitReady(impl_->handle, POLLIN, stop.impl_->handle) == Ready::kStopped) return nullptr;
    const int handle = accept4(impl_->handle, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (handle != kNone) {
      SendAtOnce(handle);
      auto client = std::make_unique<Socket>();
      client->impl_->handle = handle;
      return client;
    }
    // A client that has gone again before it was taken is none of the server's errors.
    if (WouldBlock(errno) || errno == ECONNABORTED) continue;
    if (IsShortage(errno)) {
      stop.WaitFor(kShortageInterval);
      continue;
    }
    impl_->error = ErrorText(errno);
    return nullptr;
  }
  return nullptr;
}

const std::string& Listener::LastError() const {
  return impl_->error;
}

}  // namespace quillet
