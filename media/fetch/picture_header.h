// What the first bytes of a file tell of the picture in it, long before the rest has come, and without giving
// them to a decoder. Pure; any thread. The time taken does not grow beyond the bytes given.
#pragma once

#include <cstdint>
#include <string_view>

namespace quillet {

// The formats that are shown, by what the content says and never by a name. Drawings in a language of their
// own are none: they can read other files and take for ever.
enum class PictureFormat : std::uint8_t { kUnknown, kJpeg, kPng, kGif, kBmp, kWebp };

struct PictureHeader {
  PictureFormat format = PictureFormat::kUnknown;
  // In pixels, as the picture is shown: a photograph that has to be turned upright is turned already. 0: the
  // bytes do not reach so far, or are damaged.
  std::int32_t width = 0;
  std::int32_t height = 0;
  // What decoders hold beside the image while they work, however small it is scaled: of a photograph that
  // comes in several passes, all of it. Known with the size.
  std::int64_t workBytes = 0;

  bool IsSized() const { return width > 0 && height > 0; }
};

PictureHeader ReadPictureHeader(std::string_view bytes);

// The picture's area, and a limit for each side that no reader of these formats goes beyond.
inline constexpr std::int64_t kMostPicturePixels = std::int64_t{12'000} * 9'000;
inline constexpr std::int32_t kLongestSide = 65'535;

inline bool IsTooLarge(const PictureHeader& header) {
  return header.width > kLongestSide || header.height > kLongestSide ||
         std::int64_t{header.width} * header.height > kMostPicturePixels;
}

// "jpeg", as the toolkit names it; empty: kUnknown.
std::string_view NameOf(PictureFormat format);
// ".jpg", as files end; empty: kUnknown.
std::string_view EndingOf(PictureFormat format);

}  // namespace quillet
