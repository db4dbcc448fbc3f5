#include "tools/sound/chime.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace quillet {
namespace {

constexpr double kLength = 0.62;   // seconds
constexpr double kRelease = 0.08;  // seconds at the end in which what still sounds fades away
const double kPeak = 32768 * std::pow(10.0, -12.0 / 20);

struct Tone {
  double start;  // seconds
  double pitch;  // hertz
  double loudness;
};
constexpr std::array<Tone, 2> kTones{{{0.0, 659.26, 0.85},     // E5
                                      {0.125, 987.77, 1.0}}};  // B5

constexpr double kAttack = 0.012;  // seconds; shorter ones are heard as a knock

// A struck bar's: the higher a partial, the weaker it is and the sooner it is gone.
struct Partial {
  double multiple;
  double loudness;
  double decay;  // seconds until it has fallen to 1/e
};
constexpr std::array<Partial, 3> kPartials{{{1, 1.0, 0.13}, {2, 0.16, 0.08}, {4, 0.05, 0.03}}};

// From 0 to 1 while `x` does, level at both ends.
double Eased(double x) {
  return 0.5 - 0.5 * std::cos(std::numbers::pi * std::clamp(x, 0.0, 1.0));
}

// `time` in seconds since the tone's start.
double Sound(const Tone& tone, double time) {
  if (time < 0) return 0;
  double sum = 0;
  for (const Partial& partial : kPartials)
    sum += partial.loudness * std::exp(-time / partial.decay) *
           std::sin(2 * std::numbers::pi * tone.pitch * partial.multiple * time);
  return tone.loudness * Eased(time / kAttack) * sum;
}

}  // namespace

std::vector<std::int16_t> MakeChime() {
  const auto count = static_cast<std::size_t>(kLength * kChimeRate);
  std::vector<double> wave(count);
  double loudest = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double time = static_cast<double>(i) / kChimeRate;
    for (const Tone& tone : kTones)
      wave[i] += Sound(tone, time - tone.start);
    wave[i] *= Eased(static_cast<double>(count - 1 - i) / kChimeRate / kRelease);
    loudest = std::max(loudest, std::abs(wave[i]));
  }
  std::vector<std::int16_t> samples(count);
  std::transform(wave.begin(), wave.end(), samples.begin(), [loudest](double value) {
    return static_cast<std::int16_t>(std::lround(value * kPeak / loudest));
  });
  return samples;
}

}  // namespace quillet
