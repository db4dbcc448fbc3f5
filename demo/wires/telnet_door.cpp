#include "demo/wires/telnet_door.h"

#include <utility>

namespace quillet::demo {
namespace {

class TelnetWire final : public Wire {
 public:
  explicit TelnetWire(std::unique_ptr<Socket> socket) : socket_(std::move(socket)) {}

  bool Open(const StopSignal& /*stop*/) override { return true; }
  std::size_t Receive(std::span<std::uint8_t> buffer, const StopSignal& stop) override {
    std::size_t count = 0;
    return socket_->Receive(buffer, count, stop) == Socket::Result::kOk ? count : 0;
  }
  bool Send(std::span<const std::uint8_t> bytes, const StopSignal& stop) override {
    std::size_t count = 0;
    return socket_->Send(bytes, count, stop) == Socket::Result::kOk;
  }
  void Close() override { socket_->Close(); }

 private:
  std::unique_ptr<Socket> socket_;
};

class TelnetDoor final : public Door {
 public:
  bool Listen(std::uint16_t port) { return listener_.Open(ResolvedAddress::Family::kIpv4, port); }
  const std::string& LastError() const { return listener_.LastError(); }

  std::unique_ptr<Wire> Accept(const StopSignal& stop) override {
    auto socket = listener_.Accept(stop);
    return socket ? std::make_unique<TelnetWire>(std::move(socket)) : nullptr;
  }
  std::uint16_t Port() const override { return listener_.Port(); }
  std::string Address() const override { return "telnet://127.0.0.1:" + std::to_string(Port()); }

 private:
  Listener listener_;
};

}  // namespace

OpenedDoor OpenTelnetDoor(std::uint16_t port) {
  auto door = std::make_unique<TelnetDoor>();
  if (!door->Listen(port))
    return {nullptr, "cannot listen on port " + std::to_string(port) + ": " + door->LastError()};
  return {std::move(door), {}};
}

}  // namespace quillet::demo
