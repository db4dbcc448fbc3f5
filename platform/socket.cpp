#include "platform/socket.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>
#include <system_error>
#include <utility>

#include "platform/host_port.h"
#include "platform/socket_steps.h"
#include "platform/stream_tuning.h"

namespace quillet {
namespace {

constexpr int kShortageInterval = 50;  // milliseconds

void SetFlag(SocketHandle handle, int level, int name) {
  const int on = 1;
  setsockopt(handle, level, name, reinterpret_cast<const char*>(&on), sizeof on);
}

// How a connect that was under way went; 0 when well.
int ConnectFault(SocketHandle handle) {
  int fault = 0;
  socklen_t size = sizeof fault;
  const bool isKnown = getsockopt(handle, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&fault), &size) == 0;
  return isKnown ? fault : LastSocketFault();
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

  NeedSockets();
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* list = nullptr;
  const int fault = getaddrinfo(host.c_str(), port.c_str(), &hints, &list);
  if (fault != 0) {
    resolution.error = ResolverFaultText(fault);
    return resolution;
  }
  for (const addrinfo* entry = list; entry; entry = entry->ai_next)
    if (entry->ai_family == AF_INET || entry->ai_family == AF_INET6)
      resolution.addresses.push_back(Described(*entry));
  freeaddrinfo(list);
  if (resolution.addresses.empty()) resolution.error = ResolverFaultText(EAI_NONAME);
  return resolution;
}

// ---- StopSignal

struct StopSignal::Impl {
  SocketHandle bell = NewBell();
  std::atomic<bool> set{false};
};

StopSignal::StopSignal() : impl_(std::make_unique<Impl>()) {
  if (impl_->bell == kNoSocket)
    throw std::system_error(LastSocketFault(), std::system_category(), "stop signal");
}

StopSignal::~StopSignal() {
  CloseSocket(impl_->bell);
}

void StopSignal::Set() {
  if (!impl_->set.exchange(true)) RingBell(impl_->bell);
}

bool StopSignal::IsSet() const {
  return impl_->set;
}

bool StopSignal::WaitFor(int milliseconds) const {
  WaitForBell(impl_->bell, milliseconds);
  return impl_->set;
}

bool StopSignal::WaitForInput(NativeSocket stream, int milliseconds) const {
  WaitForBellOrInput(impl_->bell, stream, milliseconds);
  return impl_->set;
}

// ---- Socket

struct Socket::Impl {
  SocketHandle handle = kNoSocket;
  mutable std::mutex errorLock;
  std::string error;

  Result Fail(int fault) {
    std::lock_guard lock(errorLock);
    error = SocketFaultText(fault);
    return Result::kError;
  }
  // What a step that is neither done nor to be taken again means.
  Result End(SocketStep step) {
    return step == SocketStep::kEnded ? Result::kClosed : Fail(LastSocketFault());
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
  if (!IsOpen()) return impl_->Fail(LastSocketFault());

  const SocketStep begun = BeginConnect(impl_->handle, address.raw);
  int fault = begun == SocketStep::kFailed ? LastSocketFault() : 0;
  if (begun == SocketStep::kAgain) {
    if (WaitReady(impl_->handle, Direction::kWrite, stop.impl_->bell) == Ready::kStopped) {
      Close();
      return Result::kStopped;
    }
    fault = ConnectFault(impl_->handle);
  }
  if (fault != 0) {
    Close();
    return impl_->Fail(fault);
  }
  TuneStream(impl_->handle);
  return Result::kOk;
}

Socket::Result Socket::Receive(std::span<std::uint8_t> buffer, std::size_t& count, const StopSignal& stop) {
  count = 0;
  if (!IsOpen()) return Result::kClosed;
  while (true) {
    if (WaitReady(impl_->handle, Direction::kRead, stop.impl_->bell) == Ready::kStopped)
      return Result::kStopped;
    const SocketStep step = ReceiveSome(impl_->handle, buffer, count);
    if (step == SocketStep::kDone) return Result::kOk;
    if (step != SocketStep::kAgain) return impl_->End(step);
  }
}

Socket::Result Socket::Send(std::span<const std::uint8_t> bytes, std::size_t& count, const StopSignal& stop) {
  count = 0;
  if (!IsOpen()) return Result::kClosed;
  while (count < bytes.size()) {
    if (WaitReady(impl_->handle, Direction::kWrite, stop.impl_->bell) == Ready::kStopped)
      return Result::kStopped;
    std::size_t sent = 0;
    const SocketStep step = SendSome(impl_->handle, bytes.subspan(count), sent);
    count += sent;
    if (step != SocketStep::kDone && step != SocketStep::kAgain) return impl_->End(step);
  }
  return Result::kOk;
}

void Socket::Shutdown() {
  if (IsOpen()) shutdown(impl_->handle, kBothDirections);
}

void Socket::Close() {
  if (IsOpen()) CloseSocket(std::exchange(impl_->handle, kNoSocket));
}

NativeSocket Socket::Release() {
  return impl_ ? std::exchange(impl_->handle, kNoSocket) : kNoSocket;
}

bool Socket::IsOpen() const {
  return impl_ && impl_->handle != kNoSocket;
}

std::string Socket::LastError() const {
  if (!impl_) return {};
  std::lock_guard lock(impl_->errorLock);
  return impl_->error;
}

// ---- Listener

struct Listener::Impl {
  SocketHandle handle = kNoSocket;
  std::uint16_t port = 0;
  std::string error;

  void Close() {
    if (handle != kNoSocket) CloseSocket(std::exchange(handle, kNoSocket));
  }
  bool Fail() {
    error = SocketFaultText(LastSocketFault());
    Close();
    return false;
  }
  bool Bind(ResolvedAddress::Family family, std::uint16_t wanted);
  bool ReadPort();
};

bool Listener::Impl::Bind(ResolvedAddress::Family family, std::uint16_t wanted) {
  ClaimPort(handle);
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
  socklen_t size = sizeof bound;
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
  if (impl_->handle == kNoSocket) return impl_->Fail();
  const bool listening =
      impl_->Bind(family, port) && listen(impl_->handle, backlog) == 0 && impl_->ReadPort();
  return listening || impl_->Fail();
}

std::uint16_t Listener::Port() const {
  return impl_->port;
}

std::unique_ptr<Socket> Listener::Accept(const StopSignal& stop) {
  while (impl_->handle != kNoSocket) {
    if (WaitReady(impl_->handle, Direction::kRead, stop.impl_->bell) == Ready::kStopped) return nullptr;
    SocketHandle handle = kNoSocket;
    switch (TakeClient(impl_->handle, handle)) {
      case SocketStep::kDone: {
        TuneStream(handle);
        auto client = std::make_unique<Socket>();
        client->impl_->handle = handle;
        return client;
      }
      case SocketStep::kAgain:
        break;
      case SocketStep::kShortage:
        stop.WaitFor(kShortageInterval);
        break;
      case SocketStep::kEnded:
      case SocketStep::kFailed:
        impl_->error = SocketFaultText(LastSocketFault());
        return nullptr;
    }
  }
  return nullptr;
}

const std::string& Listener::LastError() const {
  return impl_->error;
}

}  // namespace quillet
