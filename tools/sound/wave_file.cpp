#include "tools/sound/wave_file.h"

namespace quillet {
namespace {

constexpr std::uint16_t kPcm = 1;
constexpr std::uint16_t kChannels = 1;
constexpr std::uint16_t kSampleBytes = 2;
constexpr std::uint32_t kFormatBytes = 16;

void AppendNumber(std::string& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i)
    bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

}  // namespace

std::string WaveFileBytes(const std::vector<std::int16_t>& samples, std::uint32_t rate) {
  const auto dataBytes = static_cast<std::uint32_t>(samples.size()) * kSampleBytes;
  std::string bytes = "RIFF";
  // What follows: "WAVE", and two chunks with a name and a size each.
  AppendNumber(bytes, 4 + 8 + kFormatBytes + 8 + dataBytes, 4);
  bytes += "WAVEfmt ";
  AppendNumber(bytes, kFormatBytes, 4);
  AppendNumber(bytes, kPcm, 2);
  AppendNumber(bytes, kChannels, 2);
  AppendNumber(bytes, rate, 4);
  AppendNumber(bytes, rate * kChannels * kSampleBytes, 4);
  AppendNumber(bytes, kChannels * kSampleBytes, 2);
  AppendNumber(bytes, 8 * kSampleBytes, 2);
  bytes += "data";
  AppendNumber(bytes, dataBytes, 4);
  for (const std::int16_t sample : samples)
    AppendNumber(bytes, static_cast<std::uint16_t>(sample), kSampleBytes);
  return bytes;
}

}  // namespace quillet
