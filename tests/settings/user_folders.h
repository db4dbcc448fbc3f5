// A program's folder and a user's data folder that hold nothing yet, the registry in memory, and the files as
// a program has them that has just started.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"
#include "settings/files/data_files.h"
#include "settings/files/text_lines.h"
#include "settings/settings_map.h"
#include "tests/support/scratch_folder.h"

namespace quillet {

struct UserFolders {
  UserFolders() { std::filesystem::create_directories(working); }

  DataFiles::Folders Both() const { return {working, data}; }
  // Files in the program's folder.
  std::filesystem::path At(std::string_view name) const { return working / name; }
  void Put(std::string_view name, std::string_view bytes) const { PutFile(At(name), bytes); }
  std::vector<std::u16string> LinesOf(std::string_view name) const {
    return ReadLines(FileAt(At(name))).lines;
  }
  SettingsMap OnDisk() const {
    SettingsMap map;
    map.ReadLines(LinesOf(kSettingsFile));
    return map;
  }

  ScratchFolder scratch;
  std::filesystem::path working = scratch.Path() / "program";
  std::filesystem::path data = scratch.Path() / "data";
  MemoryRegistry registry;
};

struct StartedFiles : DataFiles {
  StartedFiles(Registry& registry, Folders folders) : DataFiles(registry, std::move(folders)) { Prepare(); }
  explicit StartedFiles(UserFolders& user) : StartedFiles(user.registry, user.Both()) {}
};

}  // namespace quillet
