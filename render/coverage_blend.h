// Puts a glyph's coverage into the picture: each pixel becomes background + (foreground - background) *
// coverage, where the background is one colour or what the picture shows already. The innermost loop of
// drawing, so each has a vector form that is chosen once at run time. Called by the frame painter. Pure.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quillet {

// Bytes that a coverage tile must have readable behind its last row's last pixel.
inline constexpr std::size_t kCoverageSlack = 8;

struct BlendJob {
  std::uint32_t* target = nullptr;  // 0xFFRRGGBB pixels
  std::ptrdiff_t targetStride = 0;  // in pixels
  const std::uint8_t* coverage = nullptr;
  std::ptrdiff_t coverageStride = 0;  // in bytes
  int width = 0;
  int height = 0;
  std::uint32_t foreground = 0;  // 0xRRGGBB
  std::uint32_t background = 0;  // not used when blending over the picture
};

// Exactly round(background + (foreground - background) * coverage / 255) in each channel; alpha is 255.
void BlendCoverage(const BlendJob& job);

// The same in plain C++, what BlendCoverage uses where the processor has no better.
void BlendCoveragePortable(const BlendJob& job);

// Exactly round(pixel + (foreground - pixel) * coverage / 255) in each channel; alpha is 255.
void BlendCoverageOver(const BlendJob& job);

// The same in plain C++.
void BlendCoverageOverPortable(const BlendJob& job);

// A rectangle of one colour.
void FillPixels(std::uint32_t* target, std::ptrdiff_t targetStride, int width, int height,
                std::uint32_t colour);

}  // namespace quillet
