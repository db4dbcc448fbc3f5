#include "render/paint/warm_up.h"

#include <chrono>

#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::size_t kFirstAscii = 0x21;
constexpr std::size_t kAsciiCount = 0x7F - kFirstAscii;
// Big5 A440-C67E: the 5401 characters of everyday use, 157 to a lead byte.
constexpr std::size_t kFirstLead = 0xA4;
constexpr std::size_t kLeadCount = 0xC6 - kFirstLead;
constexpr std::size_t kTrailCount = 157;
constexpr std::size_t kFrequentCount = kLeadCount * kTrailCount + (0x7F - 0x40);

constexpr std::size_t TrailByte(std::size_t index) {
  return index < 63 ? 0x40 + index : 0xA1 + index - 63;
}

char16_t FrequentUnit(std::size_t index) {
  const std::size_t lead = kFirstLead + index / kTrailCount;
  return Charset().big5ToUnicode[lead + 256 * TrailByte(index % kTrailCount)];
}

}  // namespace

bool WarmUpRun::Continue(GlyphSheet& sheet, int milliseconds, std::size_t budget) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
  while (next_ < kAsciiCount + kFrequentCount && sheet.Bytes() < budget) {
    if (Clock::now() >= end) return true;
    const std::size_t index = next_++;
    if (index < kAsciiCount)
      sheet.Tile(static_cast<char16_t>(kFirstAscii + index), GlyphWidth::kHalf);
    else if (const char16_t unit = FrequentUnit(index - kAsciiCount); unit != 0)
      sheet.Tile(unit, GlyphWidth::kWide);
  }
  return false;
}

}  // namespace quillet
