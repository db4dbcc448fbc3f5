// The sites of the user's: those that he has given a name or an account, and the last eight others that he
// has been to. A section of the settings in which each site is a key, so that what two programs note in it
// comes together; of passwords it knows nothing. Pure; called by the document and by whoever offers the
// sites.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings_map.h"

namespace quillet {

inline constexpr std::size_t kMostRecentSites = 8;
inline constexpr std::size_t kMostNamedSites = 40;

struct RecentSite {
  std::u16string address;  // a PlainAddress; its scheme is the way there
  std::u16string account;  // who logs in there; empty: whoever is remembered for the site
  std::u16string name;     // empty: none was given
  std::int64_t usedAt = 0;

  // Stays however long ago it was used.
  bool IsNamed() const { return !name.empty() || !account.empty(); }
  bool operator==(const RecentSite&) const = default;
};

// The one spelling of an address by which the list knows it: in lower case, with its scheme, without the port
// that telnet has anyway.
std::u16string PlainAddress(std::u16string_view address);

// The named ones first, by their names; then the others, the one used last first, but for those that are
// among the named ones.
std::vector<RecentSite> RecentSitesIn(const SettingsMap& map);
// Of the one without an account. Empty for a site that is not listed or has no name.
std::u16string NameOfSite(const SettingsMap& map, std::u16string_view address);

// Puts the site at the head of the others, or notes when a named one was used; what was used longest ago
// goes. `seconds` since 1970. An address that no line of the settings can hold is not listed.
void NoteSiteUsed(SettingsMap& map, std::u16string_view address, std::int64_t seconds);
// Lists `site`, in any spelling, in place of `before`, which may be empty or one that is not listed. False
// where no line of the settings can hold it, or there are kMostNamedSites already; then nothing is changed.
bool KeepSite(SettingsMap& map, const RecentSite& before, const RecentSite& site);
// Where its address is the `setUp` one and no other entry has it, the next one's is set up instead.
void ForgetSite(SettingsMap& map, const RecentSite& site, std::u16string_view setUp);

}  // namespace quillet
