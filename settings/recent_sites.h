// The sites that the user has been to, the last eight of them, each with a name if he has given it one: a
// section of the settings in which each site is a key, so that what two programs note in it comes together.
// Pure; called by the document and by whoever offers the sites.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings_map.h"

namespace quillet {

inline constexpr std::size_t kMostRecentSites = 8;

struct RecentSite {
  std::u16string address;
  std::u16string name;  // empty: none was given
  std::int64_t usedAt = 0;

  bool operator==(const RecentSite&) const = default;
};

// The one spelling of an address by which the list knows it: in lower case, with its scheme, without the port
// that telnet has anyway.
std::u16string PlainAddress(std::u16string_view address);

// The one used last first.
std::vector<RecentSite> RecentSitesIn(const SettingsMap& map);
// Empty for a site that is not listed or has no name.
std::u16string NameOfSite(const SettingsMap& map, std::u16string_view address);

// Puts the site at the head of the list, where it keeps its name; what was used longest ago goes. `seconds`
// since 1970. An address that no line of the settings can hold is not listed.
void NoteSiteUsed(SettingsMap& map, std::u16string_view address, std::int64_t seconds);
// Nothing for a site that is not listed.
void NameSite(SettingsMap& map, std::u16string_view address, std::u16string_view name);
// Where it is the `setUp` one, the next one's address is set up instead.
void ForgetSite(SettingsMap& map, std::u16string_view address, std::u16string_view setUp);

}  // namespace quillet
