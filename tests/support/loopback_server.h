// A server on a free loopback port, run on a thread of its own: each client in turn is given to a handler.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "platform/socket.h"

namespace quillet {

class LoopbackServer {
 public:
  using Family = ResolvedAddress::Family;
  using Handler = std::function<void(Socket& client, const StopSignal& stop)>;

  explicit LoopbackServer(Handler handler, Family family = Family::kIpv4)
      : handler_(std::move(handler)), family_(family), open_(listener_.Open(family, 0)) {
    if (open_) thread_ = std::thread([this] { Serve(); });
  }
  ~LoopbackServer() {
    stop_.Set();
    if (thread_.joinable()) thread_.join();
  }
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  // False where the machine does not speak the family.
  bool IsOpen() const { return open_; }
  std::uint16_t Port() const { return listener_.Port(); }
  std::string Host() const { return family_ == Family::kIpv6 ? "[::1]" : "127.0.0.1"; }
  std::string SiteAddress() const { return "telnet://" + Host() + ":" + std::to_string(Port()); }

 private:
  void Serve() {
    while (auto client = listener_.Accept(stop_))
      handler_(*client, stop_);
  }

  Handler handler_;
  Family family_;
  StopSignal stop_;
  Listener listener_;
  bool open_;
  std::thread thread_;
};

inline bool SendText(Socket& socket, std::string_view text, const StopSignal& stop) {
  std::size_t count = 0;
  return socket.Send({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, count, stop) ==
         Socket::Result::kOk;
}

// Appends what arrives to `out` until it holds `size` bytes or the connection ends.
inline void ReceiveText(Socket& socket, std::string& out, std::size_t size, const StopSignal& stop) {
  std::vector<std::uint8_t> buffer(65536);
  std::size_t count = 0;
  while (out.size() < size && socket.Receive(buffer, count, stop) == Socket::Result::kOk)
    out.append(reinterpret_cast<const char*>(buffer.data()), count);
}

}  // namespace quillet
