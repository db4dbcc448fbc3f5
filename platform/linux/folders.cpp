#include "platform/folders.h"

#include <cstdlib>
#include <pwd.h>
#include <system_error>
#include <unistd.h>

namespace quillet {
namespace {

namespace fs = std::filesystem;

fs::path AbsoluteFromEnvironment(const char* name) {
  const char* value = std::getenv(name);
  fs::path path = value ? value : "";
  return path.is_absolute() ? path : fs::path{};
}

fs::path HomeFolder() {
  fs::path home = AbsoluteFromEnvironment("HOME");
  if (!home.empty()) return home;
  const passwd* entry = getpwuid(getuid());
  return entry && entry->pw_dir ? entry->pw_dir : "/";
}

}  // namespace

fs::path ProgramFolder() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  return error ? fs::path{} : program.parent_path();
}

// The XDG base directory rules: a relative value counts as none.
fs::path UserDataFolder() {
  fs::path data = AbsoluteFromEnvironment("XDG_DATA_HOME");
  if (data.empty()) data = HomeFolder() / ".local" / "share";
  return data / "quillet";
}

fs::path UserConfigFolder() {
  fs::path config = AbsoluteFromEnvironment("XDG_CONFIG_HOME");
  if (config.empty()) config = HomeFolder() / ".config";
  return config / "quillet";
}

}  // namespace quillet
