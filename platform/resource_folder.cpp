#include <system_error>

#include "platform/folders.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

bool HoldsData(const fs::path& folder) {
  std::error_code error;
  return fs::is_directory(folder / "Data", error);
}

// Empty when they lie at neither place.
fs::path FolderByProgram() {
  fs::path program = ProgramFolder();
  if (program.empty() || HoldsData(program)) return program;
  fs::path installed = (program / ".." / "share" / "quillet").lexically_normal();
  return HoldsData(installed) ? installed : fs::path{};
}

}  // namespace

fs::path ResourceFolder() {
  fs::path found = FolderByProgram();
  if (!found.empty()) return found;
  std::error_code error;
  fs::path working = fs::current_path(error);
  return error ? fs::path(".") : working;
}

bool IsInstalled() {
  const fs::path found = FolderByProgram();
  return !found.empty() && found != ProgramFolder();
}

}  // namespace quillet
