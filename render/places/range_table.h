// Ranges of addresses in order, and the search in them: one routine for all tables of places. Const once
// made; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "render/places/ip_range.h"

namespace quillet {

struct RangeTableMade;

class RangeTable {
 public:
  RangeTable() = default;

  // The value of the range that holds the address; 0 when none does.
  std::uint32_t Find(std::uint32_t address) const;
  std::size_t Size() const { return records_.size() / kIpRangeBytes; }

 private:
  friend RangeTableMade MakeRangeTable(std::string records);
  // Number `field` of a record: first, last or value.
  std::uint32_t NumberAt(std::size_t record, std::size_t field) const;
  // Gives what RangeTableMade::firstBad is.
  std::size_t MakeStarts();

  // As a file holds them, so that reading one is all the work.
  std::string records_;
  // By the highest bits of an address: the index of the last range that begins before all addresses of these
  // bits, or of the first of all. One more at the end.
  std::vector<std::uint32_t> starts_;
  unsigned shift_ = 0;
};

struct RangeTableMade {
  RangeTable table;
  // The first record, from 1, that ends before it begins or does not lie behind the record before it; the
  // table is empty then. 0 when there is none.
  std::size_t firstBad = 0;
};

// Of a file's bytes; what is behind the last whole record is not used.
RangeTableMade MakeRangeTable(std::string records);
RangeTableMade MakeRangeTable(std::span<const IpRange> ranges);

}  // namespace quillet
