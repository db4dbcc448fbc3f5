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

// As the BBS's own are; there is room for others'.
constexpr std::size_t kLongestAccount = 40;
constexpr std::size_t kLongestName = 60;

// "telnet://bbs.example account".
std::u16string KeyOf(const RecentSite& site) {
  return site.account.empty() ? site.address : site.address + u" " + site.account;
}

// "1790000000 name"; a value that is none was used at no known time.
RecentSite Parse(std::u16string_view key, std::u16string_view value) {
  const std::size_t blank = std::min(key.find(u' '), key.size());
  RecentSite site{.address = std::u16string(key.substr(0, blank)),
                  .account = std::u16string(Trimmed(key.substr(blank))),
                  .name = {}};
  const std::size_t digits = std::min(value.find_first_not_of(u"0123456789"), value.size());
  if (digits > kMostDigits) return site;
  for (const char16_t digit : value.substr(0, digits))
    site.usedAt = site.usedAt * 10 + (digit - u'0');
  site.name = Trimmed(value.substr(digits));
  return site;
}

void Write(SettingsMap& map, const RecentSite& site) {
  const std::string time = std::to_string(site.usedAt);
  map.Set(kSection, KeyOf(site), std::u16string(time.begin(), time.end()) + u" " + site.name);
}

bool CanBeKept(const RecentSite& site) {
  const auto isOneWord = [](std::u16string_view text) {
    return text.find_first_of(u"= \t\r\n") == std::u16string_view::npos;
  };
  return site.address.size() <= kLongestAddress && isOneWord(site.address) &&
         site.account.size() <= kLongestAccount && isOneWord(site.account);
}

std::vector<RecentSite> AllSites(const SettingsMap& map) {
  std::vector<RecentSite> sites;
  const auto section = map.All().find(kSection);
  if (section == map.All().end()) return sites;
  for (const auto& [key, value] : section->second)
    sites.push_back(Parse(key, value));
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
  const auto others = std::stable_partition(sites.begin(), sites.end(),
                                            [](const RecentSite& site) { return site.IsNamed(); });
  std::stable_sort(sites.begin(), others,
                   [](const RecentSite& a, const RecentSite& b) { return a.name < b.name; });
  const auto isNamedToo = [&](const RecentSite& site) {
    return std::any_of(sites.begin(), others,
                       [&](const RecentSite& named) { return named.address == site.address; });
  };
  const auto named = static_cast<std::size_t>(others - sites.begin());
  sites.erase(std::remove_if(others, sites.end(), isNamedToo), sites.end());
  sites.resize(std::min(sites.size(), named + kMostRecentSites));
  return sites;
}

std::u16string NameOfSite(const SettingsMap& map, std::u16string_view address) {
  const std::u16string plain = PlainAddress(address);
  const std::u16string* const value = map.Find(kSection, plain);
  return value == nullptr ? std::u16string() : Parse(plain, *value).name;
}

void NoteSiteUsed(SettingsMap& map, std::u16string_view address, std::int64_t seconds) {
  RecentSite used{.address = PlainAddress(address), .account = {}, .name = {}};
  if (!CanBeKept(used)) return;
  const std::vector<RecentSite> before = AllSites(map);
  // The last one stays the last one when the clock has been put back.
  if (!before.empty()) seconds = std::max(seconds, before.front().usedAt + 1);
  used.usedAt = seconds;
  used.name = NameOfSite(map, used.address);
  Write(map, used);
  std::size_t others = 0;
  for (const RecentSite& site : AllSites(map))
    if (!site.IsNamed() && ++others > kMostRecentSites) map.Remove(kSection, KeyOf(site));
}

bool KeepSite(SettingsMap& map, const RecentSite& before, const RecentSite& site) {
  RecentSite kept = site;
  kept.address = PlainAddress(site.address);
  kept.account = Trimmed(site.account);
  kept.name = Trimmed(site.name.substr(0, kLongestName));
  if (!CanBeKept(kept)) return false;
  const std::vector<RecentSite> all = AllSites(map);
  const auto named = std::count_if(all.begin(), all.end(), [](const auto& one) { return one.IsNamed(); });
  if (!before.IsNamed() && static_cast<std::size_t>(named) >= kMostNamedSites) return false;
  map.Remove(kSection, KeyOf(before));
  Write(map, kept);
  return true;
}

void ForgetSite(SettingsMap& map, const RecentSite& site, std::u16string_view setUp) {
  map.Remove(kSection, KeyOf(site));
  // It is not proposed any more either, where there is another one to propose.
  const std::vector<RecentSite> left = AllSites(map);
  const bool isLeft = std::any_of(left.begin(), left.end(),
                                  [&](const RecentSite& one) { return one.address == site.address; });
  if (!left.empty() && !isLeft && PlainAddress(setUp) == site.address)
    Put(map, {&Settings::site, left.front().address});
}

}  // namespace quillet
