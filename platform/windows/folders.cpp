#include "platform/folders.h"

#include <shlobj.h>
#include <string>
#include <windows.h>

namespace quillet {

namespace fs = std::filesystem;

fs::path ProgramFile() {
  // Long paths have up to 32767 characters.
  std::wstring path(32768, L'\0');
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  if (length == 0 || length >= path.size()) return {};
  path.resize(length);
  return path;
}

fs::path ProgramFolder() {
  return ProgramFile().parent_path();
}

fs::path UserDataFolder() {
  wchar_t folder[MAX_PATH] = L"";
  if (SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder) != S_OK) return {};
  return fs::path(folder) / L"Quillet";
}

fs::path UserConfigFolder() {
  return UserDataFolder();
}

fs::path UserCacheFolder() {
  const fs::path data = UserDataFolder();
  return data.empty() ? data : data / L"Cache";
}

}  // namespace quillet
