// A program's folder and a user's data folder that hold nothing yet, and the registry in memory.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "platform/registry.h"
#include "settings/data_files.h"
#include "tests/support/scratch_folder.h"

namespace quillet {

inline void PutFile(const std::filesystem::path& file, std::string_view bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

// Empty when there is none.
inline std::string FileAt(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

struct UserFolders {
  UserFolders() { std::filesystem::create_directories(working); }

  DataFiles::Folders Both() const { return {working, data}; }

  ScratchFolder scratch;
  std::filesystem::path working = scratch.Path() / "program";
  std::filesystem::path data = scratch.Path() / "data";
  MemoryRegistry registry;
};

}  // namespace quillet
