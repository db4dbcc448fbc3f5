#include "tools/pictures/gif_writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <string_view>

namespace quillet {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kSignature = "GIF89a";
constexpr std::string_view kPlaysForEver = "\x21\xFF\x0BNETSCAPE2.0\x03\x01\x00\x00\x00"sv;
constexpr std::string_view kFrameControl = "\x21\xF9\x04\x04"sv;  // the frame stays below the next one
constexpr char kImage = '\x2C';
constexpr char kTrailer = '\x3B';
constexpr unsigned kHasPalette = 0xF0;  // of eight bits a colour
constexpr std::size_t kLongestBlock = 255;

void AppendPair(std::string& bytes, unsigned value) {
  bytes += static_cast<char>(value & 0xFF);
  bytes += static_cast<char>(value >> 8 & 0xFF);
}

// Codes of changing width, lowest bit first.
class CodeBits {
 public:
  void Append(unsigned code, unsigned width) {
    pending_ |= code << count_;
    for (count_ += width; count_ >= 8; count_ -= 8, pending_ >>= 8)
      bytes_ += static_cast<char>(pending_ & 0xFF);
  }
  std::string Finish() {
    if (count_ > 0) bytes_ += static_cast<char>(pending_ & 0xFF);
    return std::move(bytes_);
  }

 private:
  std::string bytes_;
  unsigned pending_ = 0;
  unsigned count_ = 0;
};

// The format's LZW: a code for each string of pixels that has been seen, 12 bits at most.
class LzwCoder {
 public:
  explicit LzwCoder(unsigned pixelBits) : pixelBits_(pixelBits) {}

  std::string Code(const std::vector<std::uint8_t>& pixels) {
    Clear();
    unsigned string = pixels.front();
    for (auto pixel = pixels.begin() + 1; pixel != pixels.end(); ++pixel) {
      std::uint16_t& longer = longer_[string << 8 | *pixel];
      if (longer != kNone) {
        string = longer;
        continue;
      }
      bits_.Append(string, width_);
      longer = static_cast<std::uint16_t>(next_);
      string = *pixel;
      if (next_ == kMostCodes - 1) {
        Clear();
        continue;
      }
      if (next_++ == 1U << width_) ++width_;
    }
    bits_.Append(string, width_);
    // The reader has made a code of the last one too.
    if (next_ == 1U << width_ && width_ < kWidestCode) ++width_;
    bits_.Append(ClearCode() + 1, width_);
    return bits_.Finish();
  }

 private:
  static constexpr unsigned kWidestCode = 12;
  static constexpr unsigned kMostCodes = 1U << kWidestCode;
  static constexpr std::uint16_t kNone = 0;  // no string of several pixels has it

  unsigned ClearCode() const { return 1U << pixelBits_; }
  void Clear() {
    bits_.Append(ClearCode(), width_);
    std::fill(longer_.begin(), longer_.end(), kNone);
    next_ = ClearCode() + 2;  // behind the end's code
    width_ = pixelBits_ + 1;
  }

  const unsigned pixelBits_;
  unsigned width_ = pixelBits_ + 1;
  unsigned next_ = 0;
  std::vector<std::uint16_t> longer_ = std::vector<std::uint16_t>(std::size_t{kMostCodes} << 8);
  CodeBits bits_;
};

void AppendBlocks(std::string& bytes, std::string_view data) {
  while (!data.empty()) {
    const std::string_view block = data.substr(0, kLongestBlock);
    bytes += static_cast<char>(block.size());
    bytes += block;
    data.remove_prefix(block.size());
  }
  bytes += '\0';
}

// At least 2, as the format has it for its codes.
unsigned PixelBits(const GifPicture& picture) {
  const auto highest = static_cast<unsigned>(picture.palette.size() - 1);
  return std::max(2U, static_cast<unsigned>(std::bit_width(highest)));
}

void AppendPalette(std::string& bytes, const GifPicture& picture) {
  std::vector<GifColour> palette = picture.palette;
  palette.resize(std::size_t{1} << PixelBits(picture));
  for (const GifColour& colour : palette)
    for (const std::uint8_t part : {colour.red, colour.green, colour.blue})
      bytes += static_cast<char>(part);
}

void AppendFrame(std::string& bytes, const GifPicture& picture, const GifFrame& frame) {
  bytes += kFrameControl;
  AppendPair(bytes, frame.hundredths);
  AppendPair(bytes, 0);  // nothing is transparent; the end of the block
  bytes += kImage;
  for (const unsigned value : {0U, 0U, unsigned{picture.width}, unsigned{picture.height}})
    AppendPair(bytes, value);
  bytes += '\0';  // the file's palette, rows in their order
  const unsigned pixelBits = PixelBits(picture);
  bytes += static_cast<char>(pixelBits);
  AppendBlocks(bytes, LzwCoder(pixelBits).Code(frame.pixels));
}

}  // namespace

std::string GifFileBytes(const GifPicture& picture) {
  std::string bytes(kSignature);
  AppendPair(bytes, picture.width);
  AppendPair(bytes, picture.height);
  bytes += static_cast<char>(kHasPalette | (PixelBits(picture) - 1));
  AppendPair(bytes, 0);  // the background's colour; square pixels
  AppendPalette(bytes, picture);
  if (picture.frames.size() > 1) bytes += kPlaysForEver;
  for (const GifFrame& frame : picture.frames)
    AppendFrame(bytes, picture, frame);
  return bytes + kTrailer;
}

}  // namespace quillet
