// The sites whose links show pictures and videos, as "endpoints.ini" names them. Used by whoever asks media/
// about a link. Pure; any thread.
#pragma once

#include "core/endpoints.h"
#include "media/media_hosts.h"

namespace quillet {

// The values under [pictures] and [video]; empty for one that is no plain ASCII, or no pattern of an address
// where one is needed.
MediaHosts MediaHostsOf(const Endpoints& endpoints);

}  // namespace quillet
