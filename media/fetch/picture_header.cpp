#include "media/fetch/picture_header.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <optional>
#include <utility>

namespace quillet {
namespace {

using Size = std::pair<std::int64_t, std::int64_t>;

// Numbers of `count` bytes, 4 at most; 0 where the bytes do not reach so far.
std::uint32_t BigEndian(std::string_view bytes, std::size_t at, std::size_t count) {
  if (at > bytes.size() || bytes.size() - at < count) return 0;
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < count; ++i)
    number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

std::uint32_t LittleEndian(std::string_view bytes, std::size_t at, std::size_t count) {
  if (at > bytes.size() || bytes.size() - at < count) return 0;
  std::uint32_t number = 0;
  for (std::size_t i = count; i > 0; --i)
    number = number << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
  return number;
}

bool HasAt(std::string_view bytes, std::size_t at, std::string_view mark) {
  return at <= bytes.size() && bytes.substr(at).starts_with(mark);
}

Size SizeOfPng(std::string_view bytes) {
  if (!HasAt(bytes, 12, "IHDR")) return {};
  return {BigEndian(bytes, 16, 4), BigEndian(bytes, 20, 4)};
}

Size SizeOfGif(std::string_view bytes) {
  return {LittleEndian(bytes, 6, 2), LittleEndian(bytes, 8, 2)};
}

Size SizeOfBmp(std::string_view bytes) {
  constexpr std::uint32_t kOldHeader = 12;
  const std::uint32_t headerSize = LittleEndian(bytes, 14, 4);
  if (headerSize == kOldHeader) return {LittleEndian(bytes, 18, 2), LittleEndian(bytes, 20, 2)};
  const auto width = static_cast<std::int32_t>(LittleEndian(bytes, 18, 4));
  const auto height = static_cast<std::int32_t>(LittleEndian(bytes, 22, 4));
  // A negative height is that of rows from top to bottom.
  return {width, std::abs(std::int64_t{height})};
}

Size SizeOfWebp(std::string_view bytes) {
  if (HasAt(bytes, 12, "VP8X")) {
    if (bytes.size() < 30) return {};
    return {LittleEndian(bytes, 24, 3) + 1, LittleEndian(bytes, 27, 3) + 1};
  }
  if (HasAt(bytes, 12, "VP8 ") && HasAt(bytes, 23, "\x9D\x01\x2A"))
    return {LittleEndian(bytes, 26, 2) & 0x3FFF, LittleEndian(bytes, 28, 2) & 0x3FFF};
  if (HasAt(bytes, 12, "VP8L") && HasAt(bytes, 20, "\x2F") && bytes.size() >= 25) {
    const std::uint32_t bits = LittleEndian(bytes, 21, 4);
    return {(bits & 0x3FFF) + 1, (bits >> 14 & 0x3FFF) + 1};
  }
  return {};
}

// Whether a camera's note says that the picture lies on its side. `exif` is the segment's content.
bool LiesOnItsSide(std::string_view exif) {
  using std::string_view_literals::operator""sv;
  constexpr std::uint32_t kOrientation = 0x0112;
  constexpr std::size_t kEntry = 12;
  if (!exif.starts_with("Exif\0\0"sv)) return false;
  const std::string_view tiff = exif.substr(6);
  const bool isBig = tiff.starts_with("MM");
  const auto number = [&](std::size_t at, std::size_t count) {
    return isBig ? BigEndian(tiff, at, count) : LittleEndian(tiff, at, count);
  };
  const std::size_t directory = number(4, 4);
  const std::uint32_t entries = number(directory, 2);
  for (std::uint32_t i = 0; i < entries; ++i) {
    const std::size_t entry = directory + 2 + i * kEntry;
    if (entry >= tiff.size()) break;
    if (number(entry, 2) == kOrientation) return number(entry + 8, 2) >= 5 && number(entry + 8, 2) <= 8;
  }
  return false;
}

// Of a frame's beginning: all but the four among them that are tables and such.
bool BeginsFrame(unsigned marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// `frame` begins with its marker: the height, the width and the count of components stand in it, and for each
// of those how finely it divides the picture, in two numbers of four bits. Each takes two bytes a place.
std::int64_t WorkBytesOf(std::string_view frame) {
  constexpr std::size_t kCountAt = 9, kFirstAt = 10, kComponent = 3, kMostComponents = 4;
  const std::size_t count = std::min<std::size_t>(BigEndian(frame, kCountAt, 1), kMostComponents);
  std::int64_t places = 0, most = 1;
  for (std::size_t i = 0; i < count; ++i) {
    const std::int64_t sampling = BigEndian(frame, kFirstAt + i * kComponent + 1, 1);
    const std::int64_t share = (sampling >> 4) * (sampling & 0xF);
    places += share;
    most = std::max(most, share);
  }
  return std::int64_t{BigEndian(frame, 5, 2)} * BigEndian(frame, 7, 2) * 2 * places / most;
}

// Of a frame's marker: the picture comes in several passes over all of it.
bool IsInPasses(unsigned marker) {
  return (marker & 0x3) == 2;
}

// Between the picture's beginning and its size stand segments, each with its length. Of files that have
// millions of them decoders make work for hours.
Size SizeOfJpeg(std::string_view bytes, std::int64_t& workBytes) {
  constexpr int kMostSteps = 10'000;
  constexpr unsigned kCameraNote = 0xE1, kScan = 0xDA, kFill = 0xFF;
  bool isTurned = false;
  std::size_t at = 2;
  for (int step = 0; step < kMostSteps && at + 4 <= bytes.size(); ++step) {
    if (bytes[at] != '\xFF') return {};
    const auto marker = static_cast<unsigned char>(bytes[at + 1]);
    if (marker == kFill) {
      ++at;
      continue;
    }
    const std::size_t length = BigEndian(bytes, at + 2, 2);
    if (marker == kScan || length < 2) return {};
    if (BeginsFrame(marker)) {
      const Size size{BigEndian(bytes, at + 7, 2), BigEndian(bytes, at + 5, 2)};
      if (IsInPasses(marker)) workBytes = WorkBytesOf(bytes.substr(at));
      return isTurned ? Size{size.second, size.first} : size;
    }
    if (marker == kCameraNote) isTurned = isTurned || LiesOnItsSide(bytes.substr(at + 4, length - 2));
    at += 2 + length;
  }
  return {};
}

PictureFormat FormatOf(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xD8\xFF")) return PictureFormat::kJpeg;
  if (bytes.starts_with("\x89PNG\r\n\x1A\n")) return PictureFormat::kPng;
  if (bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a")) return PictureFormat::kGif;
  if (bytes.starts_with("BM")) return PictureFormat::kBmp;
  if (bytes.starts_with("RIFF") && HasAt(bytes, 8, "WEBP")) return PictureFormat::kWebp;
  return PictureFormat::kUnknown;
}

Size SizeOf(PictureFormat format, std::string_view bytes, std::int64_t& workBytes) {
  switch (format) {
    case PictureFormat::kJpeg:
      return SizeOfJpeg(bytes, workBytes);
    case PictureFormat::kPng:
      return SizeOfPng(bytes);
    case PictureFormat::kGif:
      return SizeOfGif(bytes);
    case PictureFormat::kBmp:
      return SizeOfBmp(bytes);
    case PictureFormat::kWebp:
      return SizeOfWebp(bytes);
    case PictureFormat::kUnknown:
      break;
  }
  return {};
}

bool IsSide(std::int64_t pixels) {
  return pixels > 0 && pixels <= std::numeric_limits<std::int32_t>::max();
}

}  // namespace

PictureHeader ReadPictureHeader(std::string_view bytes) {
  PictureHeader header;
  header.format = FormatOf(bytes);
  const Size size = SizeOf(header.format, bytes, header.workBytes);
  if (!IsSide(size.first) || !IsSide(size.second)) return header;
  header.width = static_cast<std::int32_t>(size.first);
  header.height = static_cast<std::int32_t>(size.second);
  return header;
}

std::string_view NameOf(PictureFormat format) {
  constexpr std::string_view kNames[] = {"", "jpeg", "png", "gif", "bmp", "webp"};
  return kNames[static_cast<std::size_t>(format)];
}

std::string_view EndingOf(PictureFormat format) {
  constexpr std::string_view kEndings[] = {"", ".jpg", ".png", ".gif", ".bmp", ".webp"};
  return kEndings[static_cast<std::size_t>(format)];
}

}  // namespace quillet
