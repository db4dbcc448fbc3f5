// Samples as the bytes of a WAV file. Any thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillet {

// RIFF/WAVE with PCM samples of 16 bits and one channel; `rate` in samples per second.
std::string WaveFileBytes(const std::vector<std::int16_t>& samples, std::uint32_t rate);

}  // namespace quillet
