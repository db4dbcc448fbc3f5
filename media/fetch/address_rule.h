// Which addresses of the network are everybody's, and may be asked because of what stands in a text. Pure;
// any thread.
#pragma once

#include <QHostAddress>

namespace quillet {

// False for what leads to this computer or a network around it, or to nobody: private, loopback, link-local,
// multicast, unspecified and reserved ones, carrier-grade NAT, and every form of IPv6 that carries such an
// address of IPv4 (mapped, 6to4, NAT64). Source: the special-purpose address registries of RFC 6890, as they
// have grown since.
bool IsPublicAddress(const QHostAddress& address);

}  // namespace quillet
