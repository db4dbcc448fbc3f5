#include "platform/user_file.h"

#include <aclapi.h>
#include <algorithm>
#include <utility>
#include <windows.h>

#include "platform/file_steps.h"
#include "platform/windows/handle.h"
#include "platform/windows/winsock.h"

#undef ReplaceFile

namespace quillet {

const std::string_view kLineEnd = "\r\n";

namespace {

namespace fs = std::filesystem;

// A virus scanner or an indexer that looks at a new file is done with it within some tenths of a second.
constexpr int kTries = 12;
constexpr DWORD kPause = 30;              // milliseconds
constexpr DWORD kLargestPiece = 1 << 20;  // bytes per call; network drives refuse large ones

std::string ErrorText(DWORD code) {
  return SystemErrorText(static_cast<int>(code));
}

bool IsMissing(DWORD code) {
  return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND;
}

bool IsHeldByAnother(DWORD code) {
  return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION || code == ERROR_ACCESS_DENIED ||
         code == ERROR_USER_MAPPED_FILE || code == ERROR_DELETE_PENDING;
}

// Tries again while another program holds the file. The error number, 0 when it worked.
template <typename Call>
DWORD Patiently(Call call) {
  for (int tries = 1;; ++tries) {
    if (call()) return 0;
    const DWORD code = GetLastError();
    if (!IsHeldByAnother(code) || tries == kTries) return code;
    Sleep(kPause);
  }
}

// For looking at a file without keeping anybody from it.
HANDLE OpenShared(const fs::path& file, DWORD access) {
  const DWORD everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return CreateFileW(file.c_str(), access, everybody, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                     nullptr);
}

std::string WhyNotRegular(HANDLE handle) {
  if (GetFileType(handle) != FILE_TYPE_DISK) return "not a regular file";
  BY_HANDLE_FILE_INFORMATION about{};
  if (!GetFileInformationByHandle(handle, &about)) return ErrorText(GetLastError());
  return about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY ? "a folder, not a file" : "";
}

FileBytes Unreadable(std::string reason) {
  return {FileBytes::State::kUnreadable, {}, std::move(reason)};
}

// Until the end of the file, whatever its size was said to be, but no more than one byte above `limit`.
FileBytes ReadAll(HANDLE handle, std::size_t expected, std::size_t limit) {
  FileBytes file{FileBytes::State::kRead, {}, {}};
  std::size_t size = 0;
  while (size <= limit) {
    if (size == file.bytes.size()) file.bytes.resize(std::max(expected + 1, 2 * size));
    const auto room = std::min<std::size_t>(file.bytes.size() - size, kLargestPiece);
    DWORD got = 0;
    if (!ReadFile(handle, file.bytes.data() + size, static_cast<DWORD>(room), &got, nullptr))
      return Unreadable(ErrorText(GetLastError()));
    if (got == 0) break;
    size += got;
  }
  if (size > limit) return {FileBytes::State::kTooLarge, {}, {}};
  file.bytes.resize(size);
  return file;
}

// The file behind a link of the system's; the name itself where there is none.
fs::path BehindLinks(const fs::path& file) {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT)) return file;
  const Handle handle(OpenShared(file, 0));
  // Long paths have up to 32767 characters.
  std::wstring path(32768, L'\0');
  const auto room = static_cast<DWORD>(path.size());
  const DWORD length =
      handle.IsOpen() ? GetFinalPathNameByHandleW(handle.Get(), path.data(), room, FILE_NAME_NORMALIZED) : 0;
  if (length == 0 || length >= room) return file;
  path.resize(length);
  return path;
}

// The access list, the inherited part of it recomputed for the new file.
void CopyAccessList(const fs::path& from, HANDLE to) {
  PACL list = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (GetNamedSecurityInfoW(from.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list,
                            nullptr, &descriptor) != ERROR_SUCCESS)
    return;
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  if (GetSecurityDescriptorControl(descriptor, &control, &revision)) {
    const SECURITY_INFORMATION inheritance = control & SE_DACL_PROTECTED
                                                 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                 : UNPROTECTED_DACL_SECURITY_INFORMATION;
    SetSecurityInfo(to, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr, list,
                    nullptr);
  }
  LocalFree(descriptor);
}

bool IsRunning(DWORD process) {
  const Handle handle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, process));
  // One that may not be opened runs; only a number that nobody has is invalid.
  if (!handle.IsOpen()) return GetLastError() != ERROR_INVALID_PARAMETER;
  return WaitForSingleObject(handle.Get(), 0) == WAIT_TIMEOUT;
}

// The number between the last two marks of `TemporaryName`; 0 when there is none.
DWORD ProcessOf(const fs::path& temporary) {
  const std::wstring name = temporary.filename().native();
  const std::size_t end = name.rfind(L'-');
  const std::size_t begin = end == std::wstring::npos || end == 0 ? end : name.rfind(L'-', end - 1);
  if (begin == std::wstring::npos) return 0;
  return static_cast<DWORD>(std::wcstoul(name.c_str() + begin + 1, nullptr, 10));
}

}  // namespace

FileBytes ReadUserFile(const fs::path& file, std::size_t limit) {
  HANDLE opened = INVALID_HANDLE_VALUE;
  const DWORD code = Patiently([&] {
    opened = OpenShared(file, GENERIC_READ);
    return opened != INVALID_HANDLE_VALUE;
  });
  const Handle handle(opened);
  if (IsMissing(code)) return {};
  if (code != 0) return Unreadable(ErrorText(code));
  if (std::string reason = WhyNotRegular(handle.Get()); !reason.empty()) return Unreadable(reason);
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(handle.Get(), &size)) return Unreadable(ErrorText(GetLastError()));
  if (static_cast<ULONGLONG>(size.QuadPart) > limit) return {FileBytes::State::kTooLarge, {}, {}};
  return ReadAll(handle.Get(), static_cast<std::size_t>(size.QuadPart), limit);
}

ReplaceTarget FindReplaceTarget(const fs::path& file) {
  ReplaceTarget target{BehindLinks(file), false, {}};
  const DWORD attributes = GetFileAttributesW(target.file.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD code = GetLastError();
    if (!IsMissing(code)) target.refusal = ErrorText(code);
    return target;
  }
  target.exists = true;
  if (attributes & FILE_ATTRIBUTE_READONLY) {
    target.refusal = ErrorText(ERROR_ACCESS_DENIED);
    return target;
  }
  // Nothing but the question whether this user may write: renaming asks for the folder's permission only.
  HANDLE opened = INVALID_HANDLE_VALUE;
  const DWORD code = Patiently([&] {
    opened = OpenShared(target.file, attributes & FILE_ATTRIBUTE_DIRECTORY ? 0 : FILE_WRITE_DATA);
    return opened != INVALID_HANDLE_VALUE;
  });
  const Handle handle(opened);
  target.refusal = code != 0 ? ErrorText(code) : WhyNotRegular(handle.Get());
  return target;
}

NameResult MoveToFreeName(const fs::path& from, const fs::path& to) {
  const DWORD code =
      Patiently([&] { return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0; });
  if (code == 0) return NameResult::kDone;
  return code == ERROR_ALREADY_EXISTS || code == ERROR_FILE_EXISTS ? NameResult::kExists
                                                                   : NameResult::kFailed;
}

void RemoveIfAbandoned(const fs::path& temporary) {
  const DWORD process = ProcessOf(temporary);
  if (process != 0 && !IsRunning(process)) DeleteFileW(temporary.c_str());
}

bool IsFolderWritable(const fs::path& folder) {
  // Only a try tells: access lists, groups and the system's protected folders all have their say.
  const Handle handle(CreateFileW(TemporaryName(folder / L"folder", GetCurrentProcessId()).c_str(), DELETE, 0,
                                  nullptr, CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE,
                                  nullptr));
  return handle.IsOpen();
}

// ---- TemporaryFile

TemporaryFile::~TemporaryFile() {
  Close();
  if (!path_.empty()) Patiently([&] { return DeleteFileW(path_.c_str()) != 0; });
}

bool TemporaryFile::Fail(std::string reason) {
  fault_ = std::move(reason);
  return false;
}

void TemporaryFile::Close() {
  if (handle_ != nullptr) CloseHandle(std::exchange(handle_, nullptr));
}

// Files of a user's folders are the user's own here, so `readers` makes no difference.
bool TemporaryFile::Open(const fs::path& target, Readers) {
  const fs::path path = TemporaryName(target, GetCurrentProcessId());
  const DWORD access = GENERIC_WRITE | READ_CONTROL | WRITE_DAC;
  const HANDLE handle =
      CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return Fail(ErrorText(GetLastError()));
  handle_ = handle;
  path_ = path;
  return true;
}

bool TemporaryFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kLargestPiece));
    DWORD count = 0;
    if (!WriteFile(handle_, bytes.data(), size, &count, nullptr)) return Fail(ErrorText(GetLastError()));
    if (count == 0) return Fail(ErrorText(ERROR_DISK_FULL));
    bytes.remove_prefix(count);
  }
  return true;
}

void TemporaryFile::CopyPermissionsOf(const fs::path& file) {
  CopyAccessList(file, handle_);
  const DWORD attributes = GetFileAttributesW(file.c_str());
  const DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & kept))
    SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_ARCHIVE | (attributes & kept));
}

bool TemporaryFile::Flush() {
  return FlushFileBuffers(handle_) || Fail(ErrorText(GetLastError()));
}

// Not ReplaceFileW: when that fails half-way, the old file is gone and the new one has not got its name.
bool TemporaryFile::Replace(const fs::path& target) {
  Close();
  const DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  const DWORD code = Patiently([&] { return MoveFileExW(path_.c_str(), target.c_str(), flags) != 0; });
  if (code != 0) return Fail(ErrorText(code));
  path_.clear();
  return true;
}

NameResult TemporaryFile::ChooseFreeName(const fs::path& name) {
  Close();
  const NameResult result = MoveToFreeName(path_, name);
  if (result == NameResult::kDone) path_.clear();
  return result;
}

}  // namespace quillet
