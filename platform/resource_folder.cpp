#include <system_error>

#include "platform/folders.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

bool HoldsData(const fs::path& folder) {
  std::error_code error;
  return fs::is_directory(folder / "Data", error);
}

}  // namespace

fs::path ResourceFolder() {
  fs::path program = ProgramFolder();
  if (!program.empty()) {
    if (HoldsData(program)) return program;
    fs::path installed = (program / ".." / "share" / "quillet").lexically_normal();
    if (HoldsData(installed)) return installed;
  }
  std::error_code error;
  fs::path working = fs::current_path(error);
  return error ? fs::path(".") : working;
}

}  // namespace quillet
