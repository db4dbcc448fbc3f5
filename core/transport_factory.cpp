#include "core/transport_factory.h"

#include "core/transport/telnet_transport.h"
#include "core/transport/websocket_transport.h"

namespace quillet {

std::unique_ptr<Transport> MakeTransport(const SiteAddress& address) {
  switch (address.kind) {
    case TransportKind::kTelnet:
      return std::make_unique<TelnetTransport>(std::string(HostForLookup(address.host)), address.port);
    case TransportKind::kWebSocket:
      return std::make_unique<WebSocketTransport>(address.host);
    case TransportKind::kSsh:
      break;
  }
  return nullptr;
}

}  // namespace quillet
