// The colours of drawn frames cut down to the 256 that a GIF has. Called by the maker; pure.
#pragma once

#include <vector>

#include <QImage>

#include "tools/pictures/gif_writer.h"

namespace quillet {

// `frames`: at least one, all of one size. Each is shown for `hundredths` of a second. Colours beyond the
// most frequent ones become the nearest of those.
GifPicture GifOf(const std::vector<QImage>& frames, std::uint16_t hundredths);

}  // namespace quillet
