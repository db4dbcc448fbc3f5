#include "settings/old_settings.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "core/ascii.h"
#include "settings/files/text_lines.h"

namespace quillet {
namespace {

using Words = std::u16string_view;

constexpr Words kBasicSection = u"Basic";
constexpr Words kBlack = u"Black";
constexpr Words kWhite = u"White";

// Values were "1:text" with the flag colour, or the bare text; the section said the kind. There is no colour
// 8 or 9: such a digit is the user's own text.
std::u16string EntryTextOf(const std::u16string& value, char16_t kind) {
  const bool hasColour = value.size() >= 2 && value[0] >= u'0' && value[0] <= u'7' && value[1] == u':';
  std::u16string text(1, kind);
  if (!hasColour) text += u"0:";
  return text + value;
}

bool TakeOldList(const SettingsMap& map, NameList& names, Words section, char16_t kind) {
  const auto keys = map.All().find(section);
  if (keys == map.All().end()) return false;
  for (const auto& [id, value] : keys->second)
    names.Set(id, ParseEntryText(EntryTextOf(value, kind)));
  return true;
}

// When `key` is 1, up to four of today's keys take a value.
struct OldSwitch {
  struct Setting {
    Words key;
    int value;
  };
  Words key;
  Setting settings[4];
};

constexpr OldSwitch kOldSwitches[] = {
    {u"HideQuotePic", {{u"QuotePic", 0}}},
    {u"HideSignPic", {{u"SignPic", 0}}},
    {u"HidePushPic", {{u"PushPic", 0}}},
    {u"HideBlackTitle", {{u"BlackTitle", 1}, {u"SBlackTitle", 1}}},
    {u"HideBlackPic", {{u"BlackPush", 1}, {u"SBlackPush", 1}}},
    {u"HideBlackPush", {{u"BlackPush", 2}, {u"SBlackPush", 2}}},
    {u"HideBlackName", {{u"BlackTitle", 2}, {u"SBlackTitle", 2}, {u"BlackPush", 3}, {u"SBlackPush", 3}}},
    {u"RemoveBlackPush", {{u"BlackPush", 4}, {u"SBlackPush", 4}}},
    {u"OnlyHideSuperBlack", {{u"BlackTitle", 0}, {u"BlackPush", 0}}},
};

}  // namespace

bool ConvertOldLists(const SettingsMap& map, NameList& names) {
  const bool hadBlack = TakeOldList(map, names, kBlack, u'B');
  const bool hadWhite = TakeOldList(map, names, kWhite, u'W');
  return hadBlack || hadWhite;
}

bool DropOldLists(SettingsMap& map) {
  const std::size_t before = map.All().size();
  map.RemoveSection(kBlack);
  map.RemoveSection(kWhite);
  return map.All().size() < before;
}

void DropOldLists(SettingsMap& map, const SettingsMap& base) {
  for (const Words section : {kBlack, kWhite}) {
    const auto old = base.All().find(section);
    const auto now = map.All().find(section);
    if (old == base.All().end() || now == map.All().end()) continue;
    for (const auto& [id, value] : old->second)
      if (const std::u16string* const same = map.Find(section, id); same && *same == value)
        map.Remove(section, id);
    if (now->second.empty()) map.RemoveSection(section);
  }
}

void ConvertOldSite(SettingsMap& map) {
  std::u16string site = map.Text(kBasicSection, u"Site");
  if (site.find(u"://") != std::u16string::npos) return;
  std::transform(site.begin(), site.end(), site.begin(), AsciiLower<char16_t>);
  const std::size_t colon = site.rfind(u':');
  if (colon == std::u16string::npos || Trimmed(Words(site).substr(colon + 1)) != u"ssh") return;
  map.Set(kBasicSection, u"Site", std::u16string(u"ssh://").append(Trimmed(Words(site).substr(0, colon))));
}

void ConvertOldKeys(SettingsMap& map) {
  for (const OldSwitch& old : kOldSwitches) {
    if (map.Text(kBasicSection, old.key) == u"1")
      for (const OldSwitch::Setting& setting : old.settings)
        if (!setting.key.empty()) map.SetNumber(kBasicSection, setting.key, setting.value);
    map.Remove(kBasicSection, old.key);
  }
}

}  // namespace quillet
