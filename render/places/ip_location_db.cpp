#include "render/places/ip_location_db.h"

#include <array>
#include <charconv>
#include <iterator>
#include <optional>
#include <utility>

#include "platform/user_file.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kVpnMark = u"*VPN";
constexpr std::u16string_view kProxyMark = u"*pxy";
constexpr std::u16string_view kUncertain = u"#";
constexpr std::u16string_view kNothingKnown = u"#未知網域";
constexpr std::u16string_view kNoPlace = u"不要問";
constexpr std::u16string_view kPlaceNumber = u"GN=";

constexpr std::uint32_t kProxyBit = 1U << 30;       // of the proxy table and of the world's
constexpr std::uint32_t kProxysVpnBit = 1U << 29;   // of the proxy table
constexpr std::uint32_t kOtherProxyBit = 1U << 28;  // of the proxy table
constexpr std::uint32_t kUncertainBit = 1U << 31;   // of the world table
constexpr std::uint32_t kPlaceBits = 0xFFFFFF;      // of the world table

// The world in ranges takes some 5 MB today. A table of seven times as many is still read in a blink.
constexpr std::size_t kLargestTable = 32U << 20;
// Some 200,000 lines. What a text becomes in memory may take ten times its size.
constexpr std::size_t kLargestText = 8U << 20;

std::u16string Joined(std::u16string_view mark, std::u16string_view sign, std::u16string_view name) {
  std::u16string text;
  text.reserve(mark.size() + sign.size() + name.size());
  text.append(mark).append(sign).append(name);
  return text;
}

// "GN=" and the number.
class NumberedPlace {
 public:
  explicit NumberedPlace(std::uint32_t number) {
    std::array<char, 10> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    length_ += kPlaceNumber.copy(text_.data(), kPlaceNumber.size());
    for (const char* digit = digits.data(); digit != end; ++digit)
      text_[length_++] = static_cast<char16_t>(*digit);
  }
  std::u16string_view Text() const { return {text_.data(), length_}; }

 private:
  std::array<char16_t, 16> text_;
  std::size_t length_ = 0;
};

// Reads the files one after the other and keeps the remarks on them.
class TablesReader {
 public:
  explicit TablesReader(std::span<const fs::path> folders) : folders_(folders) {}

  void ReadDetail() {
    const std::optional<std::string> bytes = Read(kDetailFile, kLargestText);
    if (!bytes) return;
    DetailRangesRead read = ReadDetailRanges(*bytes);
    tables_.detail = std::move(read.ranges);
    NoteBadLine(kDetailFile, read.firstBadLine);
  }

  void ReadNames() {
    const std::optional<std::string> bytes = Read(kPlaceNamesFile, kLargestText);
    if (!bytes) return;
    PlaceNamesRead read = ReadPlaceNames(*bytes);
    tables_.names = std::move(read.names);
    NoteBadLine(kPlaceNamesFile, read.firstBadLine);
  }

  void ReadTable(std::string_view name, RangeTable PlaceTables::*table) {
    std::optional<std::string> bytes = Read(name, kLargestTable);
    if (!bytes) return;
    const bool isCut = bytes->size() % kIpRangeBytes != 0;
    RangeTableMade made = MakeRangeTable(std::move(*bytes));
    tables_.*table = std::move(made.table);
    if (made.firstBad != 0)
      Note(name, "record " + std::to_string(made.firstBad) + " is out of order; the file is not used");
    else if (isCut)
      Note(name, "ends within a record");
  }

  IpLocationLoad Take() {
    return {.places = IpLocationDb(std::move(tables_)), .remarks = std::move(remarks_)};
  }

 private:
  std::optional<std::string> Read(std::string_view name, std::size_t limit) {
    FileBytes file;
    for (auto folder = folders_.rbegin(); folder != folders_.rend(); ++folder) {
      file = ReadUserFile(*folder / name, limit);
      if (file.state != FileBytes::State::kMissing) break;
    }
    using State = FileBytes::State;
    if (file.state == State::kTooLarge) Note(name, "is larger than any file of its kind; it is not used");
    if (file.state == State::kUnreadable) Note(name, "cannot be read: " + file.reason);
    if (file.state != State::kRead) return std::nullopt;
    return std::move(file.bytes);
  }

  void NoteBadLine(std::string_view name, std::size_t line) {
    if (line != 0) Note(name, "line " + std::to_string(line) + " is no text, and perhaps others; left out");
  }

  void Note(std::string_view name, std::string_view remark) {
    remarks_.push_back(std::string(name).append(": ").append(remark));
  }

  std::span<const fs::path> folders_;
  PlaceTables tables_;
  std::vector<std::string> remarks_;
};

}  // namespace

IpLocationDb::IpLocationDb(PlaceTables tables)
    : tables_(std::move(tables)), detail_(TableOfDetailRanges(tables_.detail)) {}

std::u16string_view IpLocationDb::MarkOf(std::uint32_t address) const {
  if (tables_.vpn.Find(address) != 0) return kVpnMark;
  const std::uint32_t flags = tables_.proxy.Find(address);
  if ((flags & kProxyBit) != 0) return kProxyMark;
  if ((flags & kProxysVpnBit) != 0) return kVpnMark;
  return (flags & kOtherProxyBit) != 0 ? kProxyMark : std::u16string_view();
}

std::u16string IpLocationDb::LookupIpLocation(std::uint32_t address, ProxyDetection detection) const {
  const bool detects = detection == ProxyDetection::kOn;
  std::u16string_view mark = detects ? MarkOf(address) : std::u16string_view();
  if (const std::uint32_t number = detail_.Find(address); number != 0)
    return Joined(mark, {}, tables_.detail[number - 1].name);
  const std::uint32_t place = tables_.world.Find(address);
  if (place == 0) return Joined(mark, {}, kNothingKnown);

  if (detects && mark.empty() && (place & kProxyBit) != 0) mark = kProxyMark;
  const std::u16string_view sign = (place & kUncertainBit) != 0 ? kUncertain : std::u16string_view();
  const std::uint32_t number = place & kPlaceBits;
  const auto named = tables_.names.find(static_cast<std::int32_t>(number));
  if (named != tables_.names.end()) return Joined(mark, sign, named->second);
  return Joined(mark, sign, number == 0 ? kNoPlace : NumberedPlace(number).Text());
}

IpLocationLoad LoadIpLocationDb(std::span<const fs::path> folders, const std::stop_token& stop) {
  TablesReader reader(folders);
  const auto goesOn = [&stop] { return !stop.stop_requested(); };
  if (goesOn()) reader.ReadDetail();
  if (goesOn()) reader.ReadNames();
  if (goesOn()) reader.ReadTable(kVpnFile, &PlaceTables::vpn);
  if (goesOn()) reader.ReadTable(kProxyFile, &PlaceTables::proxy);
  if (goesOn()) reader.ReadTable(kWorldFile, &PlaceTables::world);
  return reader.Take();
}

}  // namespace quillet
