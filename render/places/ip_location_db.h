// Which place an IPv4 address belongs to, and whether it is a VPN's or a proxy's: five files of the data
// folder, read once, then asked for each address that a page shows. Const once made; any thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "render/places/detail_ranges.h"
#include "render/places/place_names.h"
#include "render/places/range_table.h"

namespace quillet {

// In the order in which they are read.
inline constexpr std::string_view kDetailFile = "taiwan_ip_detail.txt";
inline constexpr std::string_view kPlaceNamesFile = "geoname_translation.txt";
inline constexpr std::string_view kVpnFile = "vpn_ip.bin";
inline constexpr std::string_view kProxyFile = "proxy_ip.bin";
inline constexpr std::string_view kWorldFile = "geo_ip.bin";

// The setting "IpDetectProxy": whether VPNs and proxies are looked for.
enum class ProxyDetection { kOff, kOn };

// What the files hold.
struct PlaceTables {
  std::vector<DetailRange> detail;  // ascending by `first`
  PlaceNames names;
  RangeTable vpn;    // any value: the address is a VPN's
  RangeTable proxy;  // bit 30: a proxy's; else bit 29: a VPN's; else bit 28: a proxy's
  RangeTable world;  // bits 0 to 23: the place's number; bit 30: a proxy's; bit 31: the place is uncertain
};

class IpLocationDb {
 public:
  IpLocationDb() = default;
  explicit IpLocationDb(PlaceTables tables);

  // The mark ("*VPN", "*pxy") if there is one, then the place: its name, "GN=" and its number where it has no
  // name, "#未知網域" where nothing is known; an uncertain one behind "#". Takes memory for the result only.
  std::u16string LookupIpLocation(std::uint32_t address, ProxyDetection detection) const;

 private:
  std::u16string_view MarkOf(std::uint32_t address) const;

  PlaceTables tables_;
  RangeTable detail_;
};

struct IpLocationLoad {
  IpLocationDb places;
  std::vector<std::string>
      remarks;  // for the developer's eyes, one line for each file that is not used whole
};

// Reads each file from the last of the folders that has one: a user's own takes the place of the program's,
// whole, also where it cannot be used. A file that is missing, cannot be read or is far too large leaves its
// table empty, and so does one with records out of order. Ends early, with what it has, when told to stop.
IpLocationLoad LoadIpLocationDb(std::span<const std::filesystem::path> folders,
                                const std::stop_token& stop = {});

}  // namespace quillet
