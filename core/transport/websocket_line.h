// One WebSocket over TLS, by the library for it: the only file that includes that library, whose exceptions
// and tasks all end here. What comes is put into an exchange on the library's threads. Used by the WebSocket
// transport, on the receive thread unless a member says otherwise.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "core/transport/websocket_exchange.h"

namespace quillet {

// A WebSocket address, as the library reads it.
struct WebSocketAddress {
  std::string host;   // without brackets
  std::string port;   //
  std::string fault;  // not empty: it is no address, and why
};
WebSocketAddress ReadWebSocketAddress(const std::string& uri);

class WebSocketLine {
 public:
  // Begins to connect and returns at once. `authority` is empty, or the PEM text of a certificate authority
  // that this line trusts beside the system's.
  WebSocketLine(const std::string& uri, const std::string& authority,
                std::shared_ptr<WebSocketExchange> exchange);
  // Does not wait: what the library still has to do is left to a thread of its own, which nobody waits for.
  ~WebSocketLine();
  WebSocketLine(const WebSocketLine&) = delete;
  WebSocketLine& operator=(const WebSocketLine&) = delete;

  // One binary message. False when the library has not taken it. Sender thread; nothing empty.
  bool Send(std::span<const std::uint8_t> bytes);
  // Asks the peer for a sign of life.
  void Ping();
  // Says goodbye, and waits so long for the peer's. Once; nothing is sent any more.
  void Close(std::chrono::milliseconds patience);

 private:
  struct Impl;
  std::shared_ptr<Impl> impl_;
};

}  // namespace quillet
