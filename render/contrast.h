// How well one colour can be seen on another, and the nearest colour that can be read. Used wherever the
// client puts text on a ground of its own. Pure.
#pragma once

#include <cstdint>

namespace quillet {

// What text needs at least on its ground (WCAG 2, level AA).
inline constexpr double kReadableContrast = 4.5;

// Relative luminance of 0xRRGGBB, 0 to 1 (WCAG 2).
double Luminance(std::uint32_t colour);

// Contrast ratio, 1 to 21 (WCAG 2).
double Contrast(std::uint32_t one, std::uint32_t other);

// `share` of 256 of `to`, the rest of `from`, in each channel.
std::uint32_t MixColours(std::uint32_t from, std::uint32_t to, unsigned share);

// `colour` where it can be read on `ground`; otherwise mixed with as much white, on a light ground black, as
// it needs.
std::uint32_t ReadableOn(std::uint32_t ground, std::uint32_t colour);

}  // namespace quillet
