// The sound that tells of news: two soft tones, the second a fifth above the first. Made of numbers alone,
// the same on every machine. Any thread.
#pragma once

#include <cstdint>
#include <vector>

namespace quillet {

inline constexpr std::uint32_t kChimeRate = 44100;  // samples per second

// One channel, 16 bits. Begins and ends with a sample of 0; its loudest sample lies 12 dB below full scale.
std::vector<std::int16_t> MakeChime();

}  // namespace quillet
