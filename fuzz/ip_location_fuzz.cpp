// Any bytes as each of the files of places, and what is found in them beside what plain readers and searches
// find. The first byte of an input says which file the rest is, or all of them.
#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ascii.h"
#include "platform/utf8.h"
#include "render/places/ip_location_db.h"
#include "render/places/parse_ipv4.h"
#include "render/places/place_lines.h"

#include "fuzz/drawing.h"

namespace quillet {
namespace {

constexpr std::uint32_t kLastAddress = std::numeric_limits<std::uint32_t>::max();

std::vector<std::u16string> Split(std::u16string_view text, std::u16string_view separators) {
  std::vector<std::u16string> parts(1);
  for (const char16_t unit : text) {
    if (separators.find(unit) == separators.npos)
      parts.back() += unit;
    else
      parts.emplace_back();
  }
  return parts;
}

// ---- addresses

std::uint32_t PlainParse(std::u16string_view text) {
  const std::size_t length = std::min(text.find_first_not_of(u".0123456789"), text.size());
  std::vector<std::u16string> groups = Split(text.substr(0, length), u".");
  if (length == text.size() && groups.back().empty()) groups.pop_back();
  if (groups.size() != 4) return 0;
  std::uint32_t address = 0;
  for (const std::u16string& group : groups) {
    std::uint32_t number = 0;
    for (const char16_t digit : group)
      number = number * 10 + digit - u'0';
    address = address * 256 + number;
  }
  return address;
}

void CheckAddress(std::string_view bytes) {
  std::u16string wide;
  for (const char byte : bytes)
    wide += static_cast<unsigned char>(byte);
  const std::uint32_t address = ParseIPv4(bytes);
  Require(address == PlainParse(wide) && address == ParseIPv4(wide));
}

// ---- texts

// As the reader takes them, but from the whole text in UTF-16. Nothing when some of it is no text.
std::optional<std::vector<std::u16string>> PlainLines(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  const std::optional<std::u16string> text = Utf16FromUtf8(bytes);
  if (!text) return std::nullopt;
  std::vector<std::u16string> lines;
  for (std::u16string_view rest : Split(*text, u"\n")) {
    while (!rest.empty()) {
      std::u16string_view piece = rest.substr(0, kLongestPlaceLine);
      const bool cutsPair = piece.size() < rest.size() && (piece.back() & 0xFC00) == 0xD800;
      if (cutsPair) piece.remove_suffix(1);
      if (!Trimmed(piece).empty()) lines.emplace_back(Trimmed(piece));
      rest.remove_prefix(piece.size());
    }
  }
  return lines;
}

std::vector<std::u16string> Tokens(std::u16string_view line, std::u16string_view separators) {
  std::vector<std::u16string> tokens = Split(line, separators);
  std::erase(tokens, std::u16string());
  tokens.resize(std::max<std::size_t>(tokens.size(), 3));
  return tokens;
}

std::u16string Shown(std::u16string name) {
  std::erase_if(name, [](char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); });
  return name;
}

std::vector<DetailRange> PlainDetail(const std::vector<std::u16string>& lines) {
  std::vector<DetailRange> ranges;
  for (const std::u16string& line : lines) {
    const std::vector<std::u16string> tokens = Tokens(line, u",-\t");
    const DetailRange now{PlainParse(tokens[0]), PlainParse(tokens[1]),
                          std::u16string(Trimmed(Shown(tokens[2])))};
    if (!ranges.empty() && ranges.back().name == now.name) {
      if (ranges.back() == now) continue;
      if (std::uint64_t{ranges.back().last} + 1 == now.first) {
        ranges.back().last = now.last;
        continue;
      }
    }
    ranges.push_back(now);
  }
  std::stable_sort(ranges.begin(), ranges.end(), [](auto& a, auto& b) { return a.first < b.first; });
  return ranges;
}

std::map<std::int32_t, std::u16string> PlainNames(const std::vector<std::u16string>& lines) {
  std::map<std::int32_t, std::u16string> names;
  for (const std::u16string& line : lines) {
    const std::vector<std::u16string> tokens = Tokens(line, u",");
    if (tokens[1].empty()) continue;
    const bool isNegative = tokens[0][0] == u'-';
    std::int64_t number = 0;
    for (std::size_t at = isNegative; at < tokens[0].size() && IsAsciiDigit(tokens[0][at]); ++at)
      number = std::min<std::int64_t>(number * 10 + tokens[0][at] - u'0', std::int64_t{1} << 40);
    if (isNegative) number = -number;
    if (number != static_cast<std::int32_t>(number)) number = std::numeric_limits<std::int32_t>::max();
    names[static_cast<std::int32_t>(number)] = Shown(tokens[1]);
  }
  return names;
}

// ---- searches

// The record that a plain search ends at; null when it ends at none.
template <typename Range>
const Range* PlainSearch(const std::vector<Range>& ranges, std::uint32_t address) {
  std::int32_t low = 0, high = static_cast<std::int32_t>(ranges.size()) - 1;
  while (low <= high) {
    const std::int32_t middle = low + (high - low) / 2;
    const Range& range = ranges[static_cast<std::size_t>(middle)];
    if (address < range.first)
      high = middle - 1;
    else if (address <= range.last)
      return &range;
    else
      low = middle + 1;
  }
  return nullptr;
}

// All at which an answer may change.
template <typename Range>
void AddBounds(const std::vector<Range>& ranges, std::vector<std::uint32_t>& addresses) {
  for (const Range& range : ranges)
    addresses.insert(addresses.end(), {range.first - 1, range.first, range.last, range.last + 1});
}

void CheckDetail(std::string_view bytes) {
  const DetailRangesRead read = ReadDetailRanges(bytes);
  if (const auto lines = PlainLines(bytes))
    Require(read.firstBadLine == 0 && read.ranges == PlainDetail(*lines));
  const RangeTable table = TableOfDetailRanges(read.ranges);
  std::vector<std::uint32_t> addresses{0, kLastAddress};
  AddBounds(read.ranges, addresses);
  for (const std::uint32_t address : addresses) {
    const DetailRange* const found = PlainSearch(read.ranges, address);
    const std::uint32_t number = table.Find(address);
    Require(number <= read.ranges.size());
    Require(found == (number == 0 ? nullptr : &read.ranges[number - 1]));
  }
}

void CheckNames(std::string_view bytes) {
  const PlaceNamesRead read = ReadPlaceNames(bytes);
  for (const auto& [number, name] : read.names)
    Require(name == Shown(name));
  if (const auto lines = PlainLines(bytes)) {
    Require(read.firstBadLine == 0);
    const auto names = PlainNames(*lines);
    Require(names == std::map<std::int32_t, std::u16string>(read.names.begin(), read.names.end()));
  }
}

std::vector<IpRange> PlainRecords(std::string_view bytes) {
  std::vector<IpRange> ranges;
  for (; bytes.size() >= kIpRangeBytes; bytes.remove_prefix(kIpRangeBytes)) {
    const auto number = [bytes](std::size_t at) {
      std::uint32_t value = 0;
      for (std::size_t i = 4; i-- > 0;)
        value = value * 256 + static_cast<unsigned char>(bytes[at + i]);
      return value;
    };
    ranges.push_back({number(0), number(4), number(8)});
  }
  return ranges;
}

void CheckTable(std::string_view bytes) {
  const std::vector<IpRange> ranges = PlainRecords(bytes);
  std::size_t firstBad = 0;
  for (std::size_t i = ranges.size(); i-- > 0;)
    if (ranges[i].first > ranges[i].last || (i > 0 && ranges[i].first <= ranges[i - 1].last))
      firstBad = i + 1;
  const RangeTableMade made = MakeRangeTable(std::string(bytes));
  Require(made.firstBad == firstBad && made.table.Size() == (firstBad == 0 ? ranges.size() : 0));
  std::vector<std::uint32_t> addresses{0, kLastAddress};
  AddBounds(ranges, addresses);
  for (const std::uint32_t address : addresses) {
    const IpRange* const found = firstBad == 0 ? PlainSearch(ranges, address) : nullptr;
    Require(made.table.Find(address) == (found == nullptr ? 0 : found->value));
  }
}

// ---- all of them

// In order, whatever the bytes are.
std::vector<IpRange> DrawnRanges(Input& input) {
  std::vector<IpRange> ranges;
  std::uint64_t first = 0;
  for (int count = input.Byte() % 32; count > 0; --count) {
    first += input.Word();
    const std::uint64_t last = first + input.Word();
    if (last > kLastAddress) break;
    const std::uint32_t value = input.Word() << 8 | input.Byte();
    ranges.push_back({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(last), value});
    first = last + 1;
  }
  return ranges;
}

struct Drawn {
  std::vector<IpRange> vpn, proxy, world;
  std::vector<DetailRange> detail;
  PlaceNames names;
};

std::u16string PlainMark(const Drawn& drawn, std::uint32_t address) {
  const IpRange* found = PlainSearch(drawn.vpn, address);
  if (found != nullptr && found->value != 0) return u"*VPN";
  found = PlainSearch(drawn.proxy, address);
  if (found == nullptr) return u"";
  if ((found->value >> 30 & 1) != 0) return u"*pxy";
  if ((found->value >> 29 & 1) != 0) return u"*VPN";
  return (found->value >> 28 & 1) != 0 ? u"*pxy" : u"";
}

std::u16string PlainLookup(const Drawn& drawn, std::uint32_t address, bool detects) {
  std::u16string mark = detects ? PlainMark(drawn, address) : u"";
  if (const DetailRange* const detail = PlainSearch(drawn.detail, address)) return mark + detail->name;
  const IpRange* const world = PlainSearch(drawn.world, address);
  if (world == nullptr || world->value == 0) return mark + u"#未知網域";
  if (detects && mark.empty() && (world->value >> 30 & 1) != 0) mark = u"*pxy";
  if ((world->value >> 31 & 1) != 0) mark += u"#";
  const auto place = static_cast<std::int32_t>(world->value & 0xFFFFFF);
  if (drawn.names.contains(place)) return mark + drawn.names.at(place);
  if (place == 0) return mark + u"不要問";
  const std::string digits = std::to_string(place);
  return mark + u"GN=" + std::u16string(digits.begin(), digits.end());
}

void CheckLookups(std::string_view bytes) {
  const std::size_t length = std::min<std::size_t>(bytes.find('\x1E'), bytes.size());
  Drawn drawn;
  drawn.detail = ReadDetailRanges(bytes.substr(0, length)).ranges;
  drawn.names = ReadPlaceNames(bytes.substr(0, length)).names;
  Input input(bytes.substr(length));
  drawn.vpn = DrawnRanges(input);
  drawn.proxy = DrawnRanges(input);
  drawn.world = DrawnRanges(input);
  const IpLocationDb places({.detail = drawn.detail,
                             .names = drawn.names,
                             .vpn = MakeRangeTable(drawn.vpn).table,
                             .proxy = MakeRangeTable(drawn.proxy).table,
                             .world = MakeRangeTable(drawn.world).table});
  std::vector<std::uint32_t> addresses{0, kLastAddress};
  AddBounds(drawn.detail, addresses);
  for (const auto* ranges : {&drawn.vpn, &drawn.proxy, &drawn.world})
    AddBounds(*ranges, addresses);
  for (const std::uint32_t address : addresses) {
    Require(places.LookupIpLocation(address, ProxyDetection::kOn) == PlainLookup(drawn, address, true));
    Require(places.LookupIpLocation(address, ProxyDetection::kOff) == PlainLookup(drawn, address, false));
  }
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  switch (data[0] % 5) {
    case 0:
      quillet::CheckAddress(bytes);
      break;
    case 1:
      quillet::CheckDetail(bytes);
      break;
    case 2:
      quillet::CheckNames(bytes);
      break;
    case 3:
      quillet::CheckTable(bytes);
      break;
    default:
      quillet::CheckLookups(bytes);
  }
  return 0;
}
