// What "taiwan_ip_detail.txt" says: ranges of addresses and the finer names of their places. Pure; hostile
// input is expected.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "render/places/range_table.h"

namespace quillet {

struct DetailRange {
  std::uint32_t first = 0;
  std::uint32_t last = 0;  // inclusive
  std::u16string name;

  bool operator==(const DetailRange&) const = default;
};

struct DetailRangesRead {
  std::vector<DetailRange> ranges;  // ascending by `first`; they may overlap, and end before they begin
  std::size_t firstBadLine = 0;     // the first whose name is no UTF-8, from 1; 0 when there is none
};

// A line is the first address, the last one and the name, between them any of ",", "-" and tabs. What does
// not parse is kept with the address 0; a line whose name is no UTF-8 is left out. A line that repeats the
// one before adds nothing, one of the same name that goes on where the one before ends lengthens it.
DetailRangesRead ReadDetailRanges(std::string_view bytes);

// The table that finds, for every address, what a plain binary search over `ranges` ends at, also where they
// overlap. Its values are the indices of `ranges` plus 1.
RangeTable TableOfDetailRanges(std::span<const DetailRange> ranges);

}  // namespace quillet
