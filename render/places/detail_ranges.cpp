#include "render/places/detail_ranges.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "core/ascii.h"
#include "render/places/parse_ipv4.h"
#include "render/places/place_lines.h"

namespace quillet {
namespace {

constexpr std::string_view kSeparators = ",-\t";
constexpr std::size_t kUsualRanges = 1024;
constexpr std::uint32_t kLastAddress = std::numeric_limits<std::uint32_t>::max();

void AddOrJoin(std::vector<DetailRange>& ranges, DetailRange range) {
  if (!ranges.empty() && ranges.back().name == range.name) {
    DetailRange& before = ranges.back();
    if (before.first == range.first && before.last == range.last) return;
    if (before.last != kLastAddress && before.last + 1 == range.first) {
      before.last = range.last;
      return;
    }
  }
  ranges.push_back(std::move(range));
}

// The number of the range that holds the address, from 1; 0 when the search meets none.
std::uint32_t PlainSearch(std::span<const DetailRange> ranges, std::uint32_t address) {
  std::size_t low = 0, end = ranges.size();
  while (low < end) {
    // The lower middle, as of two signed bounds that are both inclusive.
    const std::size_t middle = low + (end - 1 - low) / 2;
    if (address < ranges[middle].first)
      end = middle;
    else if (address <= ranges[middle].last)
      return static_cast<std::uint32_t>(middle + 1);
    else
      low = middle + 1;
  }
  return 0;
}

// Between two neighbouring bounds all addresses compare alike with every range, and so are found alike.
std::vector<IpRange> AsSearched(std::span<const DetailRange> ranges) {
  std::vector<std::uint32_t> bounds;
  bounds.reserve(2 * ranges.size());
  for (const DetailRange& range : ranges) {
    bounds.push_back(range.first);
    if (range.last != kLastAddress) bounds.push_back(range.last + 1);
  }
  std::sort(bounds.begin(), bounds.end());
  bounds.erase(std::unique(bounds.begin(), bounds.end()), bounds.end());

  std::vector<IpRange> found;
  for (std::size_t i = 0; i < bounds.size(); ++i) {
    const std::uint32_t last = i + 1 < bounds.size() ? bounds[i + 1] - 1 : kLastAddress;
    if (const std::uint32_t number = PlainSearch(ranges, bounds[i]))
      found.push_back({.first = bounds[i], .last = last, .value = number});
  }
  return found;
}

}  // namespace

DetailRangesRead ReadDetailRanges(std::string_view bytes) {
  DetailRangesRead read;
  read.ranges.reserve(kUsualRanges);
  PlaceLines lines(bytes);
  while (std::optional<std::string_view> line = lines.Next()) {
    const std::uint32_t first = ParseIPv4(TakeToken(*line, kSeparators));
    const std::uint32_t last = ParseIPv4(TakeToken(*line, kSeparators));
    if (const std::optional<std::u16string> name = ShownName(TakeToken(*line, kSeparators)))
      AddOrJoin(read.ranges, {.first = first, .last = last, .name = std::u16string(Trimmed(*name))});
    else if (read.firstBadLine == 0)
      read.firstBadLine = lines.Number();
  }
  std::stable_sort(read.ranges.begin(), read.ranges.end(),
                   [](const DetailRange& a, const DetailRange& b) { return a.first < b.first; });
  return read;
}

RangeTable TableOfDetailRanges(std::span<const DetailRange> ranges) {
  std::vector<IpRange> numbered;
  numbered.reserve(ranges.size());
  for (const DetailRange& range : ranges)
    numbered.push_back(
        {.first = range.first, .last = range.last, .value = static_cast<std::uint32_t>(numbered.size() + 1)});
  RangeTableMade made = MakeRangeTable(numbered);
  if (made.firstBad != 0) made = MakeRangeTable(AsSearched(ranges));
  return std::move(made.table);
}

}  // namespace quillet
