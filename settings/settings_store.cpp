#include "settings/settings_store.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "settings/old_settings.h"
#include "settings/setting_table.h"

namespace quillet {
namespace {

// Older versions kept them here in the open; they belong in the registry.
constexpr std::u16string_view kAccountKeys[] = {u"Account", u"AutoLogin"};

// A map that a file of these lines is laid over, all but the lists in today's form.
struct Overlaid {
  Overlaid(const SettingsMap& below, const std::vector<std::u16string>& lines) : map(below) {
    map.ReadLines(lines);
    const SettingsMap asRead = map;
    ConvertOldSite(map);
    ConvertOldKeys(map);
    isConverted = map != asRead;
  }

  SettingsMap map;
  bool isConverted = false;
};

}  // namespace

SettingsStore::SettingsStore(DataFiles& files, std::string_view mainHost)
    : files_(files), defaults_(DefaultSettings(mainHost)), map_(defaults_) {
  Apply();
}

// Everything is read before anything is written. What the map keeps of older versions' lists leaves it, and
// so the disk, only after "black.txt" has it.
void SettingsStore::Load() {
  if (ready_) return;
  std::error_code unseen;
  isFirstStart_ = !std::filesystem::exists(files_.Locate(kSettingsFile), unseen) && !unseen;
  Overlaid read(map_, files_.Read(kSettingsFile).lines);
  map_ = std::move(read.map);
  const bool hasOldLists = ConvertOldLists(map_, names_);
  if (hasOldLists || read.isConverted) files_.KeepOlder(kSettingsFile);
  names_.ReadLines(files_.Read(kNamesFile).lines);
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
  const bool wordsAreSaved = SaveTitleWords();
  if (namesAreOwed_) SaveNames();
  return mapIsSaved && wordsAreSaved && !namesAreOwed_;
}

bool SettingsStore::SaveNames() {
  if (!ready_) return false;
  {
    const FileLock turn = files_.WaitForTurn(kNamesFile);
    MergeInNames();
    namesAreOwed_ = !files_.Write(kNamesFile, names_.AsText());
  }
  if (namesAreOwed_) return false;
  if (DropOldLists(map_)) SaveMap();
  return true;
}

bool SettingsStore::SaveMap() {
  const FileLock turn = files_.WaitForTurn(kSettingsFile);
  MergeInMap();
  for (const std::u16string_view key : kAccountKeys)
    map_.Remove(u"Basic", key);
  return files_.Write(kSettingsFile, map_.AsText());
}

bool SettingsStore::SaveTitleWords() {
  const FileLock turn = files_.WaitForTurn(kTitleWordsFile);
  MergeInTitleWords();
  return files_.Write(kTitleWordsFile, TitleWordsAsText(titleWords_));
}

void SettingsStore::Refresh() {
  if (!ready_) return;
  MergeInMap();
  MergeInNames();
  MergeInTitleWords();
}

void SettingsStore::MergeInMap() {
  const auto others = files_.ReadAgain(kSettingsFile);
  if (!others) return;
  const SettingsMap base = Overlaid(defaults_, others->before).map;
  const auto [theirs, isConverted] = Overlaid(defaults_, others->now);
  // Lists that an older version wrote since. As in Load, the list of today wins.
  SettingsMap news = theirs;
  DropOldLists(news, base);
  NameList arrived;
  const bool hasOldLists = ConvertOldLists(news, arrived);
  if (hasOldLists || isConverted) files_.KeepOlder(kSettingsFile);
  if (hasOldLists) {
    namesAreOwed_ = true;
    if (names_.MergeWith(arrived, NameList())) ++mergedIn_;
  }
  if (!map_.MergeWith(theirs, base)) return;
  // Keys that went leave their fields as at a start.
  fields_ = Settings();
  Apply();
  ++mergedIn_;
}

void SettingsStore::MergeInNames() {
  const auto others = files_.ReadAgain(kNamesFile);
  if (!others) return;
  NameList base, theirs;
  base.ReadLines(others->before);
  theirs.ReadLines(others->now);
  if (names_.MergeWith(theirs, base)) ++mergedIn_;
}

void SettingsStore::MergeInTitleWords() {
  const auto others = files_.ReadAgain(kTitleWordsFile);
  if (others && MergeTitleWords(titleWords_, others->now, others->before)) ++mergedIn_;
}

bool SettingsStore::Set(const std::vector<SettingChange>& changes) {
  const SettingsMap before = map_;
  for (const SettingChange& change : changes)
    Put(map_, change);
  if (map_ == before) return false;
  Apply();
  Save();
  return true;
}

SettingsMap DefaultSettings(std::string_view mainHost) {
  SettingsMap map;
  for (const SettingRow& row : SettingTable())
    if (row.inMap) map.Set(row.section, row.key, InitialText(row));
  if (!mainHost.empty())
    Put(map, {&Settings::site, std::u16string(u"ssh://").append(mainHost.begin(), mainHost.end())});
  return map;
}

void ApplySettings(const SettingsMap& map, Settings& fields) {
  for (const SettingRow& row : SettingTable())
    if (const std::u16string* value = map.Find(row.section, row.key)) ApplyRow(row, *value, fields);
}

}  // namespace quillet
