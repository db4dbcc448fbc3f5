// Makes the transport for a site address: the one place that knows which kinds this build has. Called by the
// session on the thread that connects.
#pragma once

#include <memory>

#include "core/site_address.h"
#include "core/transport/transport.h"

namespace quillet {

// Null for a kind that is not part of this build. Throws std::system_error when the system has no handles
// left.
std::unique_ptr<Transport> MakeTransport(const SiteAddress& address);

}  // namespace quillet
