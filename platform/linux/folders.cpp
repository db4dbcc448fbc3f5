#include "platform/folders.h"

#include <algorithm>
#include <cstdlib>
#include <pwd.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "platform/linux/desktop_folders.h"

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

fs::path ProgramFile() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  return error ? fs::path{} : program;
}

fs::path ProgramFolder() {
  return ProgramFile().parent_path();
}

// The XDG base directory rules: a relative value counts as none.
fs::path DesktopDataFolder() {
  fs::path data = AbsoluteFromEnvironment("XDG_DATA_HOME");
  return data.empty() ? HomeFolder() / ".local" / "share" : data;
}

fs::path UserDataFolder() {
  return DesktopDataFolder() / "quillet";
}

fs::path UserConfigFolder() {
  fs::path config = AbsoluteFromEnvironment("XDG_CONFIG_HOME");
  if (config.empty()) config = HomeFolder() / ".config";
  return config / "quillet";
}

fs::path UserCacheFolder() {
  fs::path cache = AbsoluteFromEnvironment("XDG_CACHE_HOME");
  if (cache.empty()) cache = HomeFolder() / ".cache";
  return cache / "quillet";
}

std::vector<fs::path> ApplicationFolders() {
  std::vector<fs::path> folders{DesktopDataFolder() / "applications"};
  const char* const value = std::getenv("XDG_DATA_DIRS");
  std::string_view rest = value && *value ? value : "/usr/local/share:/usr/share";
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    const fs::path folder = rest.substr(0, end);
    if (folder.is_absolute()) folders.push_back(folder / "applications");
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return folders;
}

fs::path RuntimeFolder() {
  for (const fs::path& folder :
       {AbsoluteFromEnvironment("XDG_RUNTIME_DIR"), fs::path("/run/user") / std::to_string(geteuid())}) {
    struct stat facts {};
    if (!folder.empty() && stat(folder.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
        facts.st_uid == geteuid() && (facts.st_mode & (S_IWGRP | S_IWOTH)) == 0)
      return folder;
  }
  return {};
}

}  // namespace quillet
