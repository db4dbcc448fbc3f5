#include "platform/file_lock.h"

#include <windows.h>

#include "platform/user_file.h"

namespace quillet {
namespace {

// Nobody else can open the file while this handle is open, and it goes with the handle, however its program
// ends.
HANDLE OpenAlone(const wchar_t* file) {
  return CreateFileW(file, GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                     FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

}  // namespace

FileLock::Outcome FileLock::Try() {
  const HANDLE handle = OpenAlone(file_.c_str());
  if (handle != INVALID_HANDLE_VALUE) {
    handle_ = handle;
    return Outcome::kHeld;
  }
  const DWORD code = GetLastError();
  if (code == ERROR_SHARING_VIOLATION || code == ERROR_DELETE_PENDING) return Outcome::kBusy;
  // A file that is about to go is refused so too; where files can be made, it is that.
  if (code == ERROR_ACCESS_DENIED && IsFolderWritable(file_.parent_path())) return Outcome::kBusy;
  return Outcome::kImpossible;
}

void FileLock::Release() {
  CloseHandle(handle_);
}

}  // namespace quillet
