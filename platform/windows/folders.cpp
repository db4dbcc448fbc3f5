#include "platform/folders.h"

#include <memory>
#include <string>
#include <windows.h>
// After windows.h, which it needs.
#include <shlobj.h>

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

// As the system names it, however long that is.
fs::path UserDataFolder() {
  wchar_t* told = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_LocalAppData, KF_FLAG_DEFAULT, nullptr, &told);
  const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> folder(told, &CoTaskMemFree);
  return result == S_OK ? fs::path(folder.get()) / L"Quillet" : fs::path{};
}

fs::path UserConfigFolder() {
  return UserDataFolder();
}

fs::path UserCacheFolder() {
  const fs::path data = UserDataFolder();
  return data.empty() ? data : data / L"Cache";
}

}  // namespace quillet
