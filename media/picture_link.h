// Which links are shown as pictures, and the form in which their pictures are fetched. Pure; any thread. The
// time taken grows with the link's length only.
#pragma once

#include <cstdint>
#include <string>

#include "media/media_hosts.h"

namespace quillet {

// What a link shows, as far as the link itself tells.
enum class LinkMedia : std::uint8_t {
  kNone,         // no picture
  kPicture,      // what is fetched is the picture
  kPicturePage,  // a page of an image or photo site, whose picture has to be sought in it
  kShortened,    // a shortened link, which may lead to a picture
  kVideo         // a video, whose thumbnail is fetched: see VideoId
};

// Rewrites the link into the form that is fetched; one that is no picture, or a video, stays as it is.
// Otherwise at most five units longer.
LinkMedia ClassifyLink(std::u16string& link, const MediaHosts& hosts);

// The same, told shortly: whether the link is fetched as a picture.
inline bool IsPictureLink(std::u16string& link, const MediaHosts& hosts) {
  return ClassifyLink(link, hosts) != LinkMedia::kNone;
}

}  // namespace quillet
