#include "core/transport_factory.h"

#include "core/transport/telnet_transport.h"

namespace quillet {

std::unique_ptr<Transport> MakeTransport(const SiteAddress& address) {
  switch (address.kind) {
    case TransportKind::kTelnet:
      return std::make_unique<TelnetTransport>(std::string(HostForLookup(address.host)), address.port);
    case TransportKind::kSsh:
    case TransportKind::kWebSocket:
      break;
  }
  return nullptr;
}

}  // namespace quillet
