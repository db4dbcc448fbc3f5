// The kinds of picture file that the client takes for a background, by the name of the format and the ending
// of the file's name alike. Pixel pictures only: drawings in a language of their own can read other files and
// take for ever. The loader and the options dialog read the same table. Any thread.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace quillet {

inline constexpr std::array<std::string_view, 12> kPictureFormats = {
    "png", "jpeg", "jpg", "gif", "bmp", "webp", "tiff", "tif", "ico", "ppm", "pgm", "pbm"};

inline bool IsPictureFormat(std::string_view name) {
  return std::find(kPictureFormats.begin(), kPictureFormats.end(), name) != kPictureFormats.end();
}

}  // namespace quillet
