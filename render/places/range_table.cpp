#include "render/places/range_table.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace quillet {
namespace {

// No more starts than ranges, and no more than a quarter of a megabyte of them, which stays in the
// processor's own memory.
constexpr int kMostStartBits = 16;

constexpr std::size_t kNumberBytes = 4;
enum Field : std::size_t { kFirst, kLast, kValue };

void AppendNumber(std::string& bytes, std::uint32_t number) {
  for (std::size_t i = 0; i < kNumberBytes; ++i)
    bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

}  // namespace

std::uint32_t RangeTable::NumberAt(std::size_t record, std::size_t field) const {
  const char* const at = records_.data() + record * kIpRangeBytes + field * kNumberBytes;
  const auto byte = [at](std::size_t i) -> std::uint32_t { return static_cast<unsigned char>(at[i]); };
  return byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24;
}

std::uint32_t RangeTable::Find(std::uint32_t address) const {
  if (records_.empty()) return 0;
  const std::size_t top = address >> shift_;
  std::size_t found = starts_[top];
  // Halved without a branch, which nothing could predict.
  for (std::size_t count = starts_[top + 1] - found + 1; count > 1;) {
    const std::size_t half = count / 2;
    found += NumberAt(found + half, kFirst) <= address ? half : 0;
    count -= half;
  }
  // An address before the first of all ranges is found there too.
  const std::uint32_t first = NumberAt(found, kFirst);
  return address - first <= NumberAt(found, kLast) - first ? NumberAt(found, kValue) : 0;
}

std::size_t RangeTable::MakeStarts() {
  const int bits = std::clamp(static_cast<int>(std::bit_width(Size())) - 1, 1, kMostStartBits);
  shift_ = static_cast<unsigned>(32 - bits);
  starts_.reserve((std::size_t{1} << bits) + 1);
  std::uint64_t end = 0;  // of the range before
  for (std::size_t i = 0; i < Size(); ++i) {
    const std::uint32_t first = NumberAt(i, kFirst), last = NumberAt(i, kLast);
    if (first < end || last < first) return i + 1;
    end = std::uint64_t{last} + 1;
    while (starts_.size() <= first >> shift_)
      starts_.push_back(static_cast<std::uint32_t>(std::max<std::size_t>(i, 1) - 1));
  }
  starts_.resize((std::size_t{1} << bits) + 1,
                 static_cast<std::uint32_t>(std::max<std::size_t>(Size(), 1) - 1));
  return 0;
}

RangeTableMade MakeRangeTable(std::string records) {
  RangeTableMade made;
  made.table.records_ = std::move(records);
  made.table.records_.resize(made.table.Size() * kIpRangeBytes);
  made.firstBad = made.table.MakeStarts();
  if (made.firstBad != 0) made.table = {};
  return made;
}

RangeTableMade MakeRangeTable(std::span<const IpRange> ranges) {
  std::string records;
  records.reserve(ranges.size() * kIpRangeBytes);
  for (const IpRange& range : ranges)
    for (const std::uint32_t number : {range.first, range.last, range.value})
      AppendNumber(records, number);
  return MakeRangeTable(std::move(records));
}

}  // namespace quillet
