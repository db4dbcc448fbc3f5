#include "render/contrast.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quillet {
namespace {

// The luminance at which black and white are equally far away.
constexpr double kMiddleLuminance = 0.179;
constexpr std::uint32_t kWhite = 0xFFFFFF;

// Of each value that a channel can have; the power is dear, and a palette asks thousands of times.
std::array<double, 256> MakeLinearChannels() {
  std::array<double, 256> channels{};
  for (std::size_t byte = 0; byte < channels.size(); ++byte) {
    const double share = static_cast<double>(byte) / 255;
    channels[byte] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  }
  return channels;
}

double LinearChannel(std::uint32_t byte) {
  static const std::array<double, 256> kChannels = MakeLinearChannels();
  return kChannels[byte];
}

}  // namespace

double Luminance(std::uint32_t colour) {
  return 0.2126 * LinearChannel(colour >> 16 & 0xFF) + 0.7152 * LinearChannel(colour >> 8 & 0xFF) +
         0.0722 * LinearChannel(colour & 0xFF);
}

double Contrast(std::uint32_t one, std::uint32_t other) {
  const double a = Luminance(one) + 0.05;
  const double b = Luminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

std::uint32_t MixColours(std::uint32_t from, std::uint32_t to, unsigned share) {
  std::uint32_t mixed = 0;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const std::uint32_t sum = (from >> shift & 0xFF) * (256 - share) + (to >> shift & 0xFF) * share;
    mixed |= ((sum + 128) >> 8) << shift;
  }
  return mixed;
}

std::uint32_t ReadableOn(std::uint32_t ground, std::uint32_t colour) {
  const std::uint32_t pole = Luminance(ground) > kMiddleLuminance ? 0 : kWhite;
  for (unsigned share = 0; share < 256; share += 4) {
    const std::uint32_t mixed = MixColours(colour, pole, share);
    if (Contrast(mixed, ground) >= kReadableContrast) return mixed;
  }
  return pole;
}

}  // namespace quillet
