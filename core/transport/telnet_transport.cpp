#include "core/transport/telnet_transport.h"

#include <array>
#include <utility>

namespace quillet {
namespace {

std::string AttemptLine(const ResolvedAddress& address) {
  const char* family = address.family == ResolvedAddress::Family::kIpv6 ? "IPv6" : "IPv4";
  return std::string(" ") + family + ": " + address.text + ",port is " + std::to_string(address.port) + "\n";
}

}  // namespace

TelnetTransport::TelnetTransport(std::string host, std::string port, Resolver resolver)
    : host_(std::move(host)), port_(std::move(port)), lookup_(std::move(resolver)) {}

TransportEnd TelnetTransport::Run(TransportEvents& events) {
  const std::optional<Resolution> resolution = lookup_.Run(host_, port_);
  if (!resolution) return {EndReason::kCancelled, {}};
  if (resolution->addresses.empty()) return {EndReason::kResolveFailed, resolution->error};

  std::string peer;
  TransportEnd end = ConnectToAny(*resolution, events, peer);
  if (end.reason != EndReason::kNone) return end;
  events.OnConnected(peer);
  return ReceiveUntilEnd(events);
}

TransportEnd TelnetTransport::ConnectToAny(const Resolution& resolution, TransportEvents& events,
                                           std::string& peer) {
  for (const ResolvedAddress& address : resolution.addresses) {
    events.OnDebugLine(AttemptLine(address));
    const Socket::Result result = socket_.Connect(address, stop_);
    if (result == Socket::Result::kStopped) return {EndReason::kCancelled, {}};
    if (result != Socket::Result::kOk) continue;
    peer = address.text;
    return {};
  }
  return {EndReason::kConnectFailed, socket_.LastError()};
}

TransportEnd TelnetTransport::ReceiveUntilEnd(TransportEvents& events) {
  std::array<std::uint8_t, kReadSize> buffer;
  while (true) {
    std::size_t count = 0;
    const Socket::Result result = socket_.Receive(buffer, count, stop_);
    if (result == Socket::Result::kOk) {
      events.OnReceived(std::span(buffer).first(count));
      continue;
    }
    if (result == Socket::Result::kStopped) return {EndReason::kClosedByUser, {}};
    if (auto fault = WriteFault()) return {EndReason::kReadFailed, *std::move(fault)};
    if (result == Socket::Result::kError) return {EndReason::kReadFailed, socket_.LastError()};
    return {EndReason::kClosedByPeer, {}};
  }
}

std::size_t TelnetTransport::Write(std::span<const std::uint8_t> bytes) {
  std::size_t count = 0;
  const Socket::Result result = socket_.Send(bytes, count, stop_);
  if (result == Socket::Result::kError) {
    {
      std::lock_guard lock(faultLock_);
      if (!writeFault_) writeFault_ = socket_.LastError();
    }
    // What the peer said last is still read; then Run sees the end.
    socket_.Shutdown();
  }
  return count;
}

std::optional<std::string> TelnetTransport::WriteFault() {
  std::lock_guard lock(faultLock_);
  return writeFault_;
}

void TelnetTransport::Stop() {
  lookup_.Abandon();
  stop_.Set();
}

}  // namespace quillet
