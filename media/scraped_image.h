// Which of the images on a web page may be its picture, told by their addresses. Pure; any thread. The time
// taken grows with the address's length only.
#pragma once

#include <string_view>

namespace quillet {

// False for PNG and GIF images, inline data, and what looks like a part of the page itself: icons, buttons,
// advertisements, images whose name tells a size below 10,000 pixels, names without any digit or upper-case
// letter.
bool AcceptScrapedImage(std::u16string_view address);

}  // namespace quillet
