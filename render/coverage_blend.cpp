#include "render/coverage_blend.h"

#include <algorithm>
#include <cstring>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define QUILLET_HAS_AVX2_FORM 1
#include <immintrin.h>
#else
#define QUILLET_HAS_AVX2_FORM 0
#endif

namespace quillet {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;

// round(value / 255) for values up to 65025.
constexpr std::uint32_t DivideBy255(std::uint32_t value) {
  const std::uint32_t rounded = value + 128;
  return (rounded + (rounded >> 8)) >> 8;
}

std::uint32_t Mix(std::uint32_t foreground, std::uint32_t background, std::uint32_t coverage) {
  std::uint32_t pixel = kOpaque;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const std::uint32_t from = (background >> shift) & 0xFF;
    const std::uint32_t to = (foreground >> shift) & 0xFF;
    pixel |= DivideBy255(from * (255 - coverage) + to * coverage) << shift;
  }
  return pixel;
}

#if QUILLET_HAS_AVX2_FORM

// Eight pixels at a time. In 16 bits a channel is background * 255 + 128 + (foreground - background) *
// coverage; the product may wrap, the sum never does, so arithmetic modulo 65536 is exact. Its product with
// 257, shifted right by 16, is the rounded division by 255. The helpers are inlined whatever the optimiser
// thinks: not every system's stack is aligned for these registers.
struct Avx2Colours {
  __m256i base;
  __m256i difference;
};

__attribute__((target("avx2"), always_inline)) inline Avx2Colours PrepareAvx2(std::uint32_t foreground,
                                                                              std::uint32_t background) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i to = _mm256_unpacklo_epi8(_mm256_set1_epi32(static_cast<int>(foreground | kOpaque)), zero);
  const __m256i from = _mm256_unpacklo_epi8(_mm256_set1_epi32(static_cast<int>(background | kOpaque)), zero);
  const __m256i scaled = _mm256_mullo_epi16(from, _mm256_set1_epi16(255));
  return {_mm256_add_epi16(scaled, _mm256_set1_epi16(128)), _mm256_sub_epi16(to, from)};
}

// Eight pixels' coverage in the 16-bit channels of the pixels.
struct Avx2Shares {
  __m256i low;
  __m256i high;
};

__attribute__((target("avx2"), always_inline)) inline Avx2Shares SharesAvx2(const std::uint8_t* coverage) {
  // Each coverage byte goes to the four 16-bit channels of its pixel; -1 gives a zero byte. Two pixels to
  // each half of a register, in the order in which packing puts them together again.
  const __m256i lowSpread = _mm256_setr_epi8(0, -1, 0, -1, 0, -1, 0, -1, 1, -1, 1, -1, 1, -1, 1, -1,  //
                                             4, -1, 4, -1, 4, -1, 4, -1, 5, -1, 5, -1, 5, -1, 5, -1);
  const __m256i highSpread = _mm256_setr_epi8(2, -1, 2, -1, 2, -1, 2, -1, 3, -1, 3, -1, 3, -1, 3, -1,  //
                                              6, -1, 6, -1, 6, -1, 6, -1, 7, -1, 7, -1, 7, -1, 7, -1);
  long long bytes;
  std::memcpy(&bytes, coverage, sizeof bytes);
  const __m256i eight = _mm256_set1_epi64x(bytes);
  return {_mm256_shuffle_epi8(eight, lowSpread), _mm256_shuffle_epi8(eight, highSpread)};
}

// The rounded division of both halves by 255, and their pixels.
__attribute__((target("avx2"), always_inline)) inline __m256i PackAvx2(__m256i low, __m256i high) {
  const __m256i scale = _mm256_set1_epi16(257);
  return _mm256_packus_epi16(_mm256_mulhi_epu16(low, scale), _mm256_mulhi_epu16(high, scale));
}

__attribute__((target("avx2"), always_inline)) inline __m256i MixAvx2(const std::uint8_t* coverage,
                                                                      const Avx2Colours& colours) {
  const Avx2Shares shares = SharesAvx2(coverage);
  return PackAvx2(_mm256_add_epi16(_mm256_mullo_epi16(shares.low, colours.difference), colours.base),
                  _mm256_add_epi16(_mm256_mullo_epi16(shares.high, colours.difference), colours.base));
}

// pixel * 255 + 128 + (foreground - pixel) * coverage, each channel as above.
__attribute__((target("avx2"), always_inline)) inline __m256i OverAvx2(__m256i half, __m256i foreground,
                                                                       __m256i shares) {
  const __m256i rest = _mm256_sub_epi16(_mm256_set1_epi16(255), shares);
  return _mm256_add_epi16(
      _mm256_add_epi16(_mm256_mullo_epi16(half, rest), _mm256_mullo_epi16(foreground, shares)),
      _mm256_set1_epi16(128));
}

__attribute__((target("avx2"), always_inline)) inline __m256i MixOverAvx2(__m256i pixels,
                                                                          const std::uint8_t* coverage,
                                                                          __m256i foreground) {
  const __m256i zero = _mm256_setzero_si256();
  const __m256i opaque = _mm256_or_si256(pixels, _mm256_set1_epi32(static_cast<int>(kOpaque)));
  const Avx2Shares shares = SharesAvx2(coverage);
  return PackAvx2(OverAvx2(_mm256_unpacklo_epi8(opaque, zero), foreground, shares.low),
                  OverAvx2(_mm256_unpackhi_epi8(opaque, zero), foreground, shares.high));
}

__attribute__((target("avx2"), always_inline)) inline void StoreAvx2(std::uint32_t* target, __m256i pixels) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(target), pixels);
}

__attribute__((target("avx2"))) void BlendWideAvx2(const BlendJob& job) {
  const Avx2Colours colours = PrepareAvx2(job.foreground, job.background);
  const int last = job.width - 8;  // the last eight pixels may overlap the ones before
  for (int y = 0; y < job.height; ++y) {
    std::uint32_t* target = job.target + y * job.targetStride;
    const std::uint8_t* coverage = job.coverage + y * job.coverageStride;
    for (int x = 0; x < last; x += 8)
      StoreAvx2(target + x, MixAvx2(coverage + x, colours));
    StoreAvx2(target + last, MixAvx2(coverage + last, colours));
  }
}

// The first `count` of eight pixels.
__attribute__((target("avx2"), always_inline)) inline __m256i FirstLanesAvx2(int count) {
  return _mm256_cmpgt_epi32(_mm256_set1_epi32(count), _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7));
}

__attribute__((target("avx2"))) void BlendNarrowAvx2(const BlendJob& job) {
  const Avx2Colours colours = PrepareAvx2(job.foreground, job.background);
  const __m256i wanted = FirstLanesAvx2(job.width);
  for (int y = 0; y < job.height; ++y) {
    const __m256i pixels = MixAvx2(job.coverage + y * job.coverageStride, colours);
    _mm256_maskstore_epi32(reinterpret_cast<int*>(job.target + y * job.targetStride), wanted, pixels);
  }
}

void BlendAvx2(const BlendJob& job) {
  if (job.width >= 8)
    BlendWideAvx2(job);
  else
    BlendNarrowAvx2(job);
}

// What is left of a row after its last whole eight is masked: a pixel must not be blended twice.
__attribute__((target("avx2"))) void BlendOverAvx2(const BlendJob& job) {
  const __m256i foreground = _mm256_unpacklo_epi8(
      _mm256_set1_epi32(static_cast<int>(job.foreground | kOpaque)), _mm256_setzero_si256());
  const int whole = job.width & ~7;
  const __m256i rest = FirstLanesAvx2(job.width - whole);
  for (int y = 0; y < job.height; ++y) {
    std::uint32_t* target = job.target + y * job.targetStride;
    const std::uint8_t* coverage = job.coverage + y * job.coverageStride;
    for (int x = 0; x < whole; x += 8) {
      const __m256i pixels = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(target + x));
      StoreAvx2(target + x, MixOverAvx2(pixels, coverage + x, foreground));
    }
    if (whole == job.width) continue;
    int* last = reinterpret_cast<int*>(target + whole);
    const __m256i pixels = _mm256_maskload_epi32(last, rest);
    _mm256_maskstore_epi32(last, rest, MixOverAvx2(pixels, coverage + whole, foreground));
  }
}

#endif

using BlendForm = void (*)(const BlendJob&);

struct BlendForms {
  BlendForm plain = BlendCoveragePortable;
  BlendForm over = BlendCoverageOverPortable;
};

BlendForms BestForms() {
#if QUILLET_HAS_AVX2_FORM
  if (__builtin_cpu_supports("avx2")) return {BlendAvx2, BlendOverAvx2};
#endif
  return {};
}

const BlendForms& Forms() {
  static const BlendForms forms = BestForms();
  return forms;
}

}  // namespace

void BlendCoveragePortable(const BlendJob& job) {
  for (int y = 0; y < job.height; ++y) {
    std::uint32_t* target = job.target + y * job.targetStride;
    const std::uint8_t* coverage = job.coverage + y * job.coverageStride;
    for (int x = 0; x < job.width; ++x)
      target[x] = Mix(job.foreground, job.background, coverage[x]);
  }
}

void BlendCoverage(const BlendJob& job) {
  Forms().plain(job);
}

void BlendCoverageOverPortable(const BlendJob& job) {
  for (int y = 0; y < job.height; ++y) {
    std::uint32_t* target = job.target + y * job.targetStride;
    const std::uint8_t* coverage = job.coverage + y * job.coverageStride;
    for (int x = 0; x < job.width; ++x)
      target[x] = Mix(job.foreground, target[x], coverage[x]);
  }
}

void BlendCoverageOver(const BlendJob& job) {
  Forms().over(job);
}

void FillPixels(std::uint32_t* target, std::ptrdiff_t targetStride, int width, int height,
                std::uint32_t colour) {
  for (int y = 0; y < height; ++y)
    std::fill_n(target + y * targetStride, std::max(width, 0), colour | kOpaque);
}

}  // namespace quillet
