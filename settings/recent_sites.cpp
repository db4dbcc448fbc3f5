#include "settings/recent_sites.h"

#include <algorithm>

#include "core/ascii.h"
#include "settings/files/text_lines.h"
#include "settings/setting_table.h"

namespace quillet {
namespace {

constexpr std::u16string_view kSection = u"RecentSites";
constexpr std::u16string_view kTelnet = u"telnet://";
constexpr std::u16string_view kTelnetPort = u":23";
// A line of the file has to hold the time and a name as well.
constexpr std::size_t kLongestAddress = 300;
// No time of this or the next thousand years has more.
constexpr std::size_t kMostDigits = 11;

// "1790000000 name"; a value that is none was used at no known time.
RecentSite Parse(const std::u16string& address, std::u16string_view value) {
  RecentSite site{.address = address, .name = {}};
  const std::size_t digits = std::min(value.find_first_not_of(u"0123456789"), value.size());
  if (digits > kMostDigits) return site;
  for (const char16_t digit : value.substr(0, digits))
    site.usedAt = site.usedAt * 10 + (digit - u'0');
  site.name = Trimmed(value.substr(digits));
  return site;
}

void Write(SettingsMap& map, const RecentSite& site) {
  const std::string time = std::to_string(site.usedAt);
  map.Set(kSection, site.address, std::u16string(time.begin(), time.end()) + u" " + site.name);
}

std::vector<RecentSite> AllSites(const SettingsMap& map) {
  std::vector<RecentSite> sites;
  const auto section = map.All().find(kSection);
  if (section == map.All().end()) return sites;
  for (const auto& [address, value] : section->second)
    sites.push_back(Parse(address, value));
  std::stable_sort(sites.begin(), sites.end(),
                   [](const RecentSite& a, const RecentSite& b) { return a.usedAt > b.usedAt; });
  return sites;
}

}  // namespace

std::u16string PlainAddress(std::u16string_view address) {
  std::u16string plain(Trimmed(address));
  for (char16_t& unit : plain)
    unit = AsciiLower(unit);
  if (plain.find(u"://") == std::u16string::npos) plain.insert(0, kTelnet);
  if (plain.starts_with(kTelnet) && plain.ends_with(kTelnetPort))
    plain.resize(plain.size() - kTelnetPort.size());
  return plain;
}

std::vector<RecentSite> RecentSitesIn(const SettingsMap& map) {
  std::vector<RecentSite> sites = AllSites(map);
  if (sites.size() > kMostRecentSites) sites.resize(kMostRecentSites);
  return sites;
}

std::u16string NameOfSite(const SettingsMap& map, std::u16string_view address) {
  const std::u16string plain = PlainAddress(address);
  const std::u16string* const value = map.Find(kSection, plain);
  return value == nullptr ? std::u16string() : Parse(plain, *value).name;
}

void NoteSiteUsed(SettingsMap& map, std::u16string_view address, std::int64_t seconds) {
  const std::u16string plain = PlainAddress(address);
  if (plain.size() > kLongestAddress || plain.find(u'=') != std::u16string::npos) return;
  const std::vector<RecentSite> before = AllSites(map);
  // The last one stays the last one when the clock has been put back.
  if (!before.empty()) seconds = std::max(seconds, before.front().usedAt + 1);
  Write(map, {.address = plain, .name = NameOfSite(map, plain), .usedAt = seconds});
  const std::vector<RecentSite> now = AllSites(map);
  for (std::size_t i = kMostRecentSites; i < now.size(); ++i)
    map.Remove(kSection, now[i].address);
}

void NameSite(SettingsMap& map, std::u16string_view address, std::u16string_view name) {
  const std::u16string plain = PlainAddress(address);
  const std::u16string* const value = map.Find(kSection, plain);
  if (value == nullptr) return;
  RecentSite site = Parse(plain, *value);
  site.name = Trimmed(name);
  Write(map, site);
}

void ForgetSite(SettingsMap& map, std::u16string_view address, std::u16string_view setUp) {
  const std::u16string plain = PlainAddress(address);
  map.Remove(kSection, plain);
  // It is not proposed any more either, where there is another one to propose.
  const std::vector<RecentSite> left = AllSites(map);
  if (!left.empty() && PlainAddress(setUp) == plain) Put(map, {&Settings::site, left.front().address});
}

}  // namespace quillet
