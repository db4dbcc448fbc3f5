// Makes the transport for a site address: the one place that knows which transport a kind has. Called by the
// session on the thread that connects.
#pragma once

#include <memory>

#include "core/site_address.h"
#include "core/transport/host_key.h"
#include "core/transport/transport.h"

namespace quillet {

// Never null. Throws std::system_error when the system has no handles left. `hostKey` is asked where the way
// to the site knows such keys.
std::unique_ptr<Transport> MakeTransport(const SiteAddress& address, HostKeyQuestion hostKey = {});

}  // namespace quillet
