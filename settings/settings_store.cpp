#include "settings/settings_store.h"

#include <algorithm>
#include <type_traits>
#include <utility>
#include <variant>

#include "settings/old_settings.h"
#include "settings/setting_table.h"

namespace quillet {
namespace {

constexpr std::u16string_view kBasic = u"Basic";

// Older versions kept them here in the open; they belong in the registry.
constexpr std::u16string_view kAccountKeys[] = {u"Account", u"AutoLogin"};

int InRange(const SettingRow& row, int number) {
  if (row.kind == SettingKind::kNumber) return std::clamp(number, row.least, row.most);
  return number >= row.least && number <= row.most ? number : ToNumber(row.initial);
}

void ApplyRow(const SettingRow& row, const std::u16string& value, Settings& fields) {
  std::visit(
      [&](auto field) {
        auto& target = fields.*field;
        using Target = std::remove_reference_t<decltype(target)>;
        if constexpr (std::is_same_v<Target, bool>)
          target = ToNumber(value) != 0;
        else if constexpr (std::is_same_v<Target, int>)
          target = InRange(row, ToNumber(value));
        else
          target = value;
      },
      row.field);
}

}  // namespace

SettingsStore::SettingsStore(DataFiles& files, std::string_view mainHost)
    : files_(files), map_(DefaultSettings(mainHost)) {
  Apply();
}

// Everything is read before anything is written. What the map keeps of older versions' lists leaves it, and
// so the disk, only after "black.txt" has it.
void SettingsStore::Load() {
  if (ready_) return;
  map_.TakeLines(files_.Read(kSettingsFile).lines);
  const bool hasOldLists = TakeOldLists(map_, names_);
  ConvertOldSite(map_);
  ConvertOldKeys(map_);
  names_.TakeLines(files_.Read(kNamesFile).lines);
  titleWords_ = files_.Read(kTitleWordsFile).lines;

  ready_ = true;
  if (hasOldLists) SaveNames();
  SaveMap();
  Apply();
}

void SettingsStore::Apply() {
  ApplySettings(map_, fields_);
}

bool SettingsStore::Save() {
  if (!ready_) return false;
  const bool mapIsSaved = SaveMap();
  return SaveTitleWords() && mapIsSaved;
}

bool SettingsStore::SaveNames() {
  if (!ready_ || !files_.Write(kNamesFile, names_.AsText())) return false;
  if (DropOldLists(map_)) SaveMap();
  return true;
}

bool SettingsStore::SaveMap() {
  for (const std::u16string_view key : kAccountKeys)
    map_.Remove(kBasic, key);
  return files_.Write(kSettingsFile, map_.AsText());
}

bool SettingsStore::SaveTitleWords() {
  return files_.Write(kTitleWordsFile, TitleWordsAsText(titleWords_));
}

void SettingsStore::Change(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
  map_.Set(section, key, value);
  Apply();
  Save();
}

SettingsMap DefaultSettings(std::string_view mainHost) {
  SettingsMap map;
  for (const SettingRow& row : SettingTable())
    if (row.inMap) map.Set(row.section, row.key, row.initial);
  if (!mainHost.empty())
    map.Set(kBasic, u"Site", std::u16string(u"ssh://").append(mainHost.begin(), mainHost.end()));
  return map;
}

void ApplySettings(const SettingsMap& map, Settings& fields) {
  for (const SettingRow& row : SettingTable())
    if (const std::u16string* value = map.Find(row.section, row.key)) ApplyRow(row, *value, fields);
}

}  // namespace quillet
