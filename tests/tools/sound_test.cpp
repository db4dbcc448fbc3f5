#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

namespace quillet {
namespace {

// The file as it is shipped, read by hand: a player knows nothing of the maker.
class SoundTest : public testing::Test {
 protected:
  void SetUp() override {
    std::ifstream stream("Data/PushUpdated.wav", std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(stream), {});
    ASSERT_GT(bytes_.size(), kHeader);
    for (std::size_t at = kHeader; at + 1 < bytes_.size(); at += 2)
      samples_.push_back(static_cast<std::int16_t>(Number(at, 2)));
  }

  std::uint32_t Number(std::size_t at, int size) const {
    std::uint32_t value = 0;
    for (int i = size - 1; i >= 0; --i)
      value = value << 8 | static_cast<unsigned char>(bytes_[at + static_cast<std::size_t>(i)]);
    return value;
  }

  // Of samples `first` up to `end`.
  int Loudest(std::size_t first, std::size_t end) const {
    int loudest = 0;
    for (std::size_t i = first; i < end; ++i)
      loudest = std::max(loudest, std::abs(int{samples_[i]}));
    return loudest;
  }

  static constexpr std::size_t kHeader = 44;
  static constexpr std::size_t kRate = 44100;
  std::string bytes_;
  std::vector<std::int16_t> samples_;
};

TEST_F(SoundTest, TheFileIsAWaveOfOneChannelAnd16Bits) {
  EXPECT_EQ(bytes_.substr(0, 4), "RIFF");
  EXPECT_EQ(Number(4, 4), bytes_.size() - 8);
  EXPECT_EQ(bytes_.substr(8, 8), "WAVEfmt ");
  EXPECT_EQ(Number(16, 4), 16u);
  EXPECT_EQ(Number(20, 2), 1u) << "plain samples";
  EXPECT_EQ(Number(22, 2), 1u) << "channels";
  EXPECT_EQ(Number(24, 4), kRate);
  EXPECT_EQ(Number(28, 4), kRate * 2) << "bytes per second";
  EXPECT_EQ(Number(32, 2), 2u) << "bytes per sample of all channels";
  EXPECT_EQ(Number(34, 2), 16u);
  EXPECT_EQ(bytes_.substr(36, 4), "data");
  EXPECT_EQ(Number(40, 4), bytes_.size() - kHeader);
}

TEST_F(SoundTest, ItBeginsAndEndsInSilenceWithoutAClick) {
  const std::size_t millisecond = kRate / 1000;
  const std::size_t count = samples_.size();
  const int peak = Loudest(0, count);
  EXPECT_EQ(samples_.front(), 0);
  EXPECT_EQ(samples_.back(), 0);
  EXPECT_LT(Loudest(0, millisecond), peak / 20);
  EXPECT_LT(Loudest(count - 5 * millisecond, count), peak / 100);
  // The steepest step of the highest loud tone (988 Hz) is a seventh of its peak; a click is a step beyond.
  for (std::size_t i = 1; i < count; ++i)
    ASSERT_LT(std::abs(samples_[i] - samples_[i - 1]), peak / 4) << "at sample " << i;
}

}  // namespace
}  // namespace quillet
