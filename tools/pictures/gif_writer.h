// Pictures of at most 256 colours as the bytes of a GIF file, still or animated. Called by the maker of the
// demo's pictures and by tests; pure.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillet {

struct GifColour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
};

struct GifFrame {
  std::vector<std::uint8_t> pixels;  // places in the palette, row by row
  std::uint16_t hundredths = 0;      // of a second that it is shown
};

struct GifPicture {
  std::uint16_t width = 0;
  std::uint16_t height = 0;
  std::vector<GifColour> palette;  // 1 to 256 colours
  std::vector<GifFrame> frames;    // each has width x height pixels; more than one play for ever
};

std::string GifFileBytes(const GifPicture& picture);

}  // namespace quillet
