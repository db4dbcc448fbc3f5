#include "render/coverage_blend.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace quillet {
namespace {

constexpr std::uint32_t kGuard = 0x12345678;

TEST(CoverageBlendTest, PortableFormRoundsExactly) {
  for (std::uint32_t from = 0; from < 256; from += 5)
    for (std::uint32_t to = 0; to < 256; to += 5)
      for (std::uint32_t coverage = 0; coverage < 256; ++coverage) {
        const auto byte = static_cast<std::uint8_t>(coverage);
        std::uint32_t pixel = kGuard;
        BlendCoveragePortable({&pixel, 1, &byte, 1, 1, 1, to << 8, from << 8});
        const double exact = from + (static_cast<double>(to) - from) * coverage / 255.0;
        ASSERT_EQ(pixel, 0xFF000000u | static_cast<std::uint32_t>(std::lround(exact)) << 8);
      }
}

TEST(CoverageBlendTest, ChosenFormEqualsThePortableOne) {
  std::minstd_rand random(11);
  const auto colour = [&] { return static_cast<std::uint32_t>(random() >> 4 & 0xFFFFFF); };
  for (int round = 0; round < 700; ++round) {
    const int width = 1 + round % 70, height = 1 + round / 70;
    const std::ptrdiff_t targetStride = width + round % 9, coverageStride = width + round % 7;
    std::vector<std::uint8_t> coverage(static_cast<std::size_t>(coverageStride * height) + kCoverageSlack);
    for (auto& byte : coverage)
      byte = static_cast<std::uint8_t>(random() >> 8);
    std::vector<std::uint32_t> chosen(static_cast<std::size_t>(targetStride * height) + 16, kGuard);
    std::vector<std::uint32_t> portable = chosen;
    BlendJob job{chosen.data() + 8, targetStride, coverage.data(), coverageStride, width, height,
                 colour(),          colour()};
    BlendCoverage(job);
    job.target = portable.data() + 8;
    BlendCoveragePortable(job);
    // Equal where it draws, untouched everywhere else.
    ASSERT_EQ(chosen, portable) << width << "x" << height;

    for (std::size_t i = 0; i < chosen.size(); ++i)
      chosen[i] = portable[i] = static_cast<std::uint32_t>(random()) << 3;
    job.target = chosen.data() + 8;
    BlendCoverageOver(job);
    job.target = portable.data() + 8;
    BlendCoverageOverPortable(job);
    ASSERT_EQ(chosen, portable) << "over a picture, " << width << "x" << height;
  }
}

// Every coverage against every difference of colours, so that no product wraps unnoticed. Over a picture of
// one colour the forms that blend with a picture come to the same.
TEST(CoverageBlendTest, EveryFormEqualsThePortableOneForEveryChannelValue) {
  std::vector<std::uint8_t> coverage(256 + kCoverageSlack);
  for (std::size_t i = 0; i < 256; ++i)
    coverage[i] = static_cast<std::uint8_t>(i);
  std::vector<std::uint32_t> with(256), over(256);
  for (std::uint32_t from = 0; from < 256; ++from)
    for (std::uint32_t to = 0; to < 256; ++to) {
      const std::uint32_t background = from | to << 8;
      BlendJob job{with.data(), 256, coverage.data(), 256, 256, 1, to | from << 8, background};
      BlendCoveragePortable(job);
      job.target = over.data();
      for (const auto form : {BlendCoverage, BlendCoverageOver, BlendCoverageOverPortable}) {
        std::fill(over.begin(), over.end(), background);
        form(job);
        ASSERT_EQ(over, with) << from << " " << to;
      }
    }
}

}  // namespace
}  // namespace quillet
