// The video that a link shows. Pure; any thread.
#pragma once

#include <string_view>

#include "media/media_hosts.h"

namespace quillet {

// Letters and digits of ASCII, "-" and "_".
inline constexpr std::size_t kVideoIdLength = 11;

// The id within `link`, from "SHORT/ID", "HOST/watch?v=ID" or "HOST/shorts/ID", where HOST is the video
// site's name as it is or with "www." or "m."; of several parameters "v" the first one counts. Empty when
// there is none, or one that is no id.
std::u16string_view VideoId(std::u16string_view link, const VideoHosts& hosts);

}  // namespace quillet
