#include "platform/socket.h"

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstring>
#include <mutex>
#include <system_error>
#include <utility>
#include <winsock2.h>
#include <ws2tcpip.h>

#include "platform/host_port.h"
#include "platform/windows/winsock.h"

namespace quillet {
namespace {

constexpr int kShortageInterval = 50;  // milliseconds

enum class Ready { kYes, kStopped };
enum class Direction { kRead, kWrite };

// Waits until `handle` is ready or the stop socket can be read. A failed connect shows in the third set only.
Ready WaitReady(SOCKET handle, Direction direction, SOCKET stopHandle) {
  while (true) {
    fd_set reads;
    fd_set writes;
    fd_set faults;
    FD_ZERO(&reads);
    FD_ZERO(&writes);
    FD_ZERO(&faults);
    FD_SET(stopHandle, &reads);
    FD_SET(handle, direction == Direction::kRead ? &reads : &writes);
    FD_SET(handle, &faults);
    const int count = select(0, &reads, &writes, &faults, nullptr);
    if (count == SOCKET_ERROR) return Ready::kYes;  // the next call tells which error
    if (FD_ISSET(stopHandle, &reads)) return Ready::kStopped;
    if (count > 0) return Ready::kYes;
  }
}

bool WouldBlock(int code) {
  return code == WSAEWOULDBLOCK || code == WSAEINTR;
}

// Not the listener's fault, and over when somebody else closes something.
bool IsShortage(int code) {
  return code == WSAEMFILE || code == WSAENOBUFS;
}

void DoNotBlock(SOCKET handle) {
  u_long on = 1;
  ioctlsocket(handle, static_cast<long>(FIONBIO), &on);
}

void SetFlag(SOCKET handle, int level, int name) {
  const int on = 1;
  setsockopt(handle, level, name, reinterpret_cast<const char*>(&on), sizeof on);
}

// A key is sent as soon as it is pressed.
void SendAtOnce(SOCKET handle) {
  SetFlag(handle, IPPROTO_TCP, TCP_NODELAY);
}

SOCKET NewStream(ResolvedAddress::Family family) {
  NeedWinsock();
  const int domain = family == ResolvedAddress::Family::kIpv6 ? AF_INET6 : AF_INET;
  const SOCKET handle = socket(domain, SOCK_STREAM, IPPROTO_TCP);
  if (handle == INVALID_SOCKET) return handle;
  SetHandleInformation(reinterpret_cast<HANDLE>(handle), HANDLE_FLAG_INHERIT, 0);
  DoNotBlock(handle);
  return handle;
}

int AtMostInt(std::size_t size) {
  return static_cast<int>(std::min<std::size_t>(size, INT_MAX));
}

ResolvedAddress Described(const addrinfo& entry) {
  ResolvedAddress address;
  const auto* raw = reinterpret_cast<const std::uint8_t*>(entry.ai_addr);
  address.raw.assign(raw, raw + entry.ai_addrlen);
  char text[INET6_ADDRSTRLEN] = "";
  if (entry.ai_family == AF_INET6) {
    address.family = ResolvedAddress::Family::kIpv6;
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

  NeedWinsock();
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* list = nullptr;
  const int code = getaddrinfo(host.c_str(), port.c_str(), &hints, &list);
  if (code != 0) {
    resolution.error = SystemErrorText(code);
    return resolution;
  }
  for (const addrinfo* entry = list; entry; entry = entry->ai_next)
    if (entry->ai_family == AF_INET || entry->ai_family == AF_INET6)
      resolution.addresses.push_back(Described(*entry));
  freeaddrinfo(list);
  if (resolution.addresses.empty()) resolution.error = SystemErrorText(WSAHOST_NOT_FOUND);
  return resolution;
}

// ---- StopSignal

// A datagram socket that is connected to itself: the one thing that select can wait for beside a stream.
struct StopSignal::Impl {
  SOCKET handle = INVALID_SOCKET;
  std::atomic<bool> set{false};

  bool Open();
};

bool StopSignal::Impl::Open() {
  NeedWinsock();
  handle = socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  if (handle == INVALID_SOCKET) return false;
  DoNotBlock(handle);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* raw = reinterpret_cast<sockaddr*>(&address);
  int size = sizeof address;
  return bind(handle, raw, size) == 0 && getsockname(handle, raw, &size) == 0 &&
         connect(handle, raw, size) == 0;
}

StopSignal::StopSignal() : impl_(std::make_unique<Impl>()) {
  if (impl_->Open()) return;
  const int code = WSAGetLastError();
  if (impl_->handle != INVALID_SOCKET) closesocket(impl_->handle);
  throw std::system_error(code, std::system_category(), "stop signal");
}

StopSignal::~StopSignal() {
  closesocket(impl_->handle);
}

void StopSignal::Set() {
  if (impl_->set.exchange(true)) return;
  const char byte = 1;
  send(impl_->handle, &byte, 1, 0);
}

bool StopSignal::IsSet() const {
  return impl_->set;
}

bool StopSignal::WaitFor(int milliseconds) const {
  fd_set reads;
  FD_ZERO(&reads);
  FD_SET(impl_->handle, &reads);
  timeval limit{milliseconds / 1000, milliseconds % 1000 * 1000};
  select(0, &reads, nullptr, nullptr, &limit);
  return impl_->set;
}

// ---- Socket

struct Socket::Impl {
  SOCKET handle = INVALID_SOCKET;
  mutable std::mutex errorLock;
  std::string error;

  Result Fail(int code) {
    std::lock_guard lock(errorLock);
    error = SystemErrorText(code);
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
  impl_->handle = NewStream(address.family);
  if (!IsOpen()) return impl_->Fail(WSAGetLastError());

  const auto* raw = reinterpret_cast<const sockaddr*>(address.raw.data());
  int code = connect(impl_->handle, raw, static_cast<int>(address.raw.size())) == 0 ? 0 : WSAGetLastError();
  if (WouldBlock(code)) {
    if (WaitReady(impl_->handle, Direction::kWrite, stop.impl_->handle) == Ready::kStopped) {
      Close();
      return Result::kStopped;
    }
    int size = sizeof code;
    if (getsockopt(impl_->handle, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&code), &size) != 0)
      code = WSAGetLastError();
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
    if (WaitReady(impl_->handle, Direction::kRead, stop.impl_->handle) == Ready::kStopped)
      return Result::kStopped;
    const int got = recv(impl_->handle, reinterpret_cast<char*>(buffer.data()), AtMostInt(buffer.size()), 0);
    if (got > 0) {
      count = static_cast<std::size_t>(got);
      return Result::kOk;
    }
    const int code = got == 0 ? WSAESHUTDOWN : WSAGetLastError();
    if (code == WSAESHUTDOWN) return Result::kClosed;  // by the peer, or by our own Shutdown
    if (!WouldBlock(code)) return impl_->Fail(code);
  }
}

Socket::Result Socket::Send(std::span<const std::uint8_t> bytes, std::size_t& count, const StopSignal& stop) {
  // One call with more than this is taken whole by the system, however little the peer reads.
  constexpr std::size_t kPiece = 16384;
  count = 0;
  if (!IsOpen()) return Result::kClosed;
  while (count < bytes.size()) {
    if (WaitReady(impl_->handle, Direction::kWrite, stop.impl_->handle) == Ready::kStopped)
      return Result::kStopped;
    const auto piece = bytes.subspan(count, std::min(kPiece, bytes.size() - count));
    const int sent =
        send(impl_->handle, reinterpret_cast<const char*>(piece.data()), AtMostInt(piece.size()), 0);
    if (sent >= 0)
      count += static_cast<std::size_t>(sent);
    else if (const int code = WSAGetLastError(); code == WSAESHUTDOWN)
      return Result::kClosed;
    else if (!WouldBlock(code))
      return impl_->Fail(code);
  }
  return Result::kOk;
}

void Socket::Shutdown() {
  if (IsOpen()) shutdown(impl_->handle, SD_BOTH);
}

void Socket::Close() {
  if (!IsOpen()) return;
  closesocket(impl_->handle);
  impl_->handle = INVALID_SOCKET;
}

bool Socket::IsOpen() const {
  return impl_ && impl_->handle != INVALID_SOCKET;
}

std::string Socket::LastError() const {
  if (!impl_) return {};
  std::lock_guard lock(impl_->errorLock);
  return impl_->error;
}

// ---- Listener

struct Listener::Impl {
  SOCKET handle = INVALID_SOCKET;
  std::uint16_t port = 0;
  std::string error;

  void Close() {
    if (handle != INVALID_SOCKET) closesocket(std::exchange(handle, INVALID_SOCKET));
  }
  bool Fail() {
    error = SystemErrorText(WSAGetLastError());
    Close();
    return false;
  }
  bool Bind(ResolvedAddress::Family family, std::uint16_t wanted);
  bool ReadPort();
};

bool Listener::Impl::Bind(ResolvedAddress::Family family, std::uint16_t wanted) {
  // Another program may otherwise take the port over.
  SetFlag(handle, SOL_SOCKET, SO_EXCLUSIVEADDRUSE);
  if (family == ResolvedAddress::Family::kIpv6) {
    SetFlag(handle, IPPROTO_IPV6, IPV6_V6ONLY);
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_port = htons(wanted);
    address.sin6_addr.s6_addr[15] = 1;
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
  int size = sizeof bound;
  if (getsockname(handle, reinterpret_cast<sockaddr*>(&bound), &size) != 0) return false;
  const void* raw = &bound;
  port = ntohs(bound.ss_family == AF_INET6 ? static_cast<const sockaddr_in6*>(raw)->sin6_port
                                           : static_cast<const sockaddr_in*>(raw)->sin_port);
  return true;
}

Listener::Listener() : impl_(std::make_unique<Impl>()) {}

Listener::~Listener() {
  impl_->Close();
}

bool Listener::Open(ResolvedAddress::Family family, std::uint16_t port, int backlog) {
  impl_->Close();
  impl_->handle = NewStream(family);
  if (impl_->handle == INVALID_SOCKET) return impl_->Fail();
  const bool listening =
      impl_->Bind(family, port) && listen(impl_->handle, backlog) == 0 && impl_->ReadPort();
  return listening || impl_->Fail();
}

std::uint16_t Listener::Port() const {
  return impl_->port;
}

std::unique_ptr<Socket> Listener::Accept(const StopSignal& stop) {
  while (impl_->handle != INVALID_SOCKET) {
    if (WaitReady(impl_->handle, Direction::kRead, stop.impl_->handle) == Ready::kStopped) return nullptr;
    const SOCKET handle = accept(impl_->handle, nullptr, nullptr);
    if (handle != INVALID_SOCKET) {
      DoNotBlock(handle);
      SendAtOnce(handle);
      auto client = std::make_unique<Socket>();
      client->impl_->handle = handle;
      return client;
    }
    // A client that has gone again before it was taken is none of the server's errors.
    const int code = WSAGetLastError();
    if (WouldBlock(code) || code == WSAECONNRESET) continue;
    if (IsShortage(code)) {
      stop.WaitFor(kShortageInterval);
      continue;
    }
    impl_->error = SystemErrorText(code);
    return nullptr;
  }
  return nullptr;
}

const std::string& Listener::LastError() const {
  return impl_->error;
}

}  // namespace quillet
