// One record of the binary tables of places. A plain value.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quillet {

// IPv4 addresses are numbers here, the first dotted group most significant.
struct IpRange {
  std::uint32_t first = 0;
  std::uint32_t last = 0;   // inclusive
  std::uint32_t value = 0;  // what it means is the table's; 0 says nothing is known, in all of them

  bool operator==(const IpRange&) const = default;
};

// In a file: the three numbers in this order, each least significant byte first, no header.
inline constexpr std::size_t kIpRangeBytes = 12;

}  // namespace quillet
