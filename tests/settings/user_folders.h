// A program's folder and a user's data folder that hold nothing yet, and the registry in memory.
#pragma once

#include <filesystem>

#include "platform/registry.h"
#include "settings/data_files.h"
#include "tests/support/scratch_folder.h"

namespace quillet {

struct UserFolders {
  UserFolders() { std::filesystem::create_directories(working); }

  DataFiles::Folders Both() const { return {working, data}; }

  ScratchFolder scratch;
  std::filesystem::path working = scratch.Path() / "program";
  std::filesystem::path data = scratch.Path() / "data";
  MemoryRegistry registry;
};

}  // namespace quillet
