// A BBS behind a WebSocket gateway: the terminal's bytes in messages, over TLS. Made by the transport
// factory, or by who has more to say of the gateway than an address does; threads as Transport says.
#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <string>

#include "core/transport/host_lookup.h"
#include "core/transport/transport.h"
#include "core/transport/websocket_exchange.h"

namespace quillet {

class WebSocketLine;

struct WebSocketPatience {
  // From the address being known to the WebSocket being there. The library has limits of its own for the
  // steps between, but does not keep all of them.
  std::chrono::milliseconds opening = std::chrono::seconds(12);
  // After so much silence the peer is asked whether it is there. One that has answered such a question, and
  // leaves two of them in a row without an answer, is gone.
  std::chrono::milliseconds silence = std::chrono::seconds(35);
};

class WebSocketTransport : public Transport {
 public:
  // `target` is what follows "wss://": host, port if it is not 443, path. `authority` is the PEM text of one
  // certificate authority that this connection alone trusts beside those that the system does.
  explicit WebSocketTransport(std::string target, std::string authority = {}, Resolver resolver = ResolveHost,
                              WebSocketPatience patience = {});
  ~WebSocketTransport() override;

  TransportEnd Run(TransportEvents& events) override;
  // Counts what the library has taken; it does not tell how much of that the peer has.
  std::size_t Write(std::span<const std::uint8_t> bytes) override;
  void Stop() override;

 private:
  TransportEnd Follow(WebSocketLine& line, TransportEvents& events, const Resolution& resolution,
                      bool& connected);
  std::shared_ptr<WebSocketLine> Line();

  const std::string uri_;
  const std::string authority_;
  const WebSocketPatience patience_;
  HostLookup lookup_;
  const std::shared_ptr<WebSocketExchange> exchange_ = std::make_shared<WebSocketExchange>();
  bool asked_ = false;  // the sender's
  std::mutex lineLock_;
  std::shared_ptr<WebSocketLine> line_;  // guarded by lineLock_
};

}  // namespace quillet
