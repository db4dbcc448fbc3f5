#include "core/transport_factory.h"

#include <utility>

#include "core/transport/ssh_transport.h"
#include "core/transport/telnet_transport.h"
#include "core/transport/websocket_transport.h"

namespace quillet {

std::unique_ptr<Transport> MakeTransport(const SiteAddress& address, HostKeyQuestion hostKey) {
  switch (address.kind) {
    case TransportKind::kTelnet:
      return std::make_unique<TelnetTransport>(std::string(HostForLookup(address.host)), address.port);
    case TransportKind::kSsh:
      // Always to the protocol's own port: an address without a port has telnet's.
      return std::make_unique<SshTransport>(std::string(HostForLookup(address.host)),
                                            SshOptions{.hostKey = std::move(hostKey)});
    case TransportKind::kWebSocket:
      return std::make_unique<WebSocketTransport>(address.host);
  }
  return nullptr;
}

}  // namespace quillet
