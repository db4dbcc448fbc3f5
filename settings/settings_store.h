// Everything the user sets, and its way to the disk and back: the settings map and its typed fields, the
// black and white lists and the title words. Several programs may keep theirs in the same files: each save
// takes in what the others have written since, key by key, id by id and word by word, and what was set here
// wins over it. Nobody but the document makes one. User-interface thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "settings/files/data_files.h"
#include "settings/files/name_list.h"
#include "settings/setting_table.h"
#include "settings/settings.h"
#include "settings/settings_map.h"

namespace quillet {

inline constexpr std::string_view kNamesFile = "black.txt";
inline constexpr std::string_view kTitleWordsFile = "black_title.txt";

class SettingsStore {
 public:
  // The map has its defaults from here on; nothing is read yet. `files` outlives the store, and is prepared
  // before Load. `mainHost` is the BBS's own host, of which the default site is made; empty when none is
  // configured.
  SettingsStore(DataFiles& files, std::string_view mainHost);

  // Reads the files, converts what older versions wrote, saves the converted form and fills the typed fields.
  // Once.
  void Load();
  // The typed fields from the map. A key that is absent leaves its field as it is; a value out of its row's
  // range becomes one inside it there, and stays as it is in the map.
  void Apply();
  // "Quill.ini" and "black_title.txt", and "black.txt" where it could not be written the last time. Nothing
  // before Load. False when something did not reach the disk (what was set stays set); why stands in the
  // files' problems.
  bool Save();
  // "black.txt"; after every edit of an entry. Nothing before Load.
  bool SaveNames();

  // Takes in what other programs have written, without writing anything: before what is kept is shown for
  // editing, and when the window comes to the front. As cheap as reading the files. Nothing before Load.
  void Refresh();
  // Grows whenever a save, a change or a refresh took in something that another program wrote; the typed
  // fields are filled anew by then, and entries of the list that were found before are no longer valid.
  std::size_t MergedInCount() const { return mergedIn_; }

  // What is changed at run time: set, applied and saved, all in one. False, and nothing happens, where the
  // map says all of it already.
  bool Set(const std::vector<SettingChange>& changes);
  template <typename T>
  bool Set(T Settings::*field, const std::type_identity_t<T>& value) {
    return Set({{field, value}});
  }

  // Load has found no file of settings.
  bool IsFirstStart() const { return isFirstStart_; }
  const Settings& Fields() const { return fields_; }
  SettingsMap& Map() { return map_; }
  const SettingsMap& Map() const { return map_; }
  NameList& Names() { return names_; }
  const NameList& Names() const { return names_; }
  std::vector<std::u16string>& TitleWords() { return titleWords_; }
  const std::vector<std::u16string>& TitleWords() const { return titleWords_; }
  DataFiles& Files() { return files_; }

 private:
  bool SaveMap();
  bool SaveTitleWords();

  void MergeInMap();
  void MergeInNames();
  void MergeInTitleWords();

  DataFiles& files_;
  bool isFirstStart_ = false;
  bool ready_ = false;         // set once the first load has read what there is
  bool namesAreOwed_ = false;  // the last write of "black.txt" failed
  std::size_t mergedIn_ = 0;
  SettingsMap defaults_;
  SettingsMap map_;
  Settings fields_;
  NameList names_;
  std::vector<std::u16string> titleWords_;
};

// The map's entries before any file is read.
SettingsMap DefaultSettings(std::string_view mainHost);

// Lays every key of the table that the map holds over `fields`.
void ApplySettings(const SettingsMap& map, Settings& fields);

}  // namespace quillet
