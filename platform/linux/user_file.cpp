#include "platform/user_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/file_steps.h"

namespace quillet {

const std::string_view kLineEnd = "\n";

namespace {

namespace fs = std::filesystem;

constexpr int kNone = -1;
constexpr int kMostLinks = 40;  // the kernel's own bound
constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t kPermissions = 07777;
constexpr const char* kAccessList = "system.posix_acl_access";

std::string ErrorText(int code) {
  return std::generic_category().message(code);
}

int Open(const fs::path& file, int flags, mode_t mode = 0) {
  while (true) {
    const int handle = open(file.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode);
    if (handle != kNone || errno != EINTR) return handle;
  }
}

class Handle {
 public:
  explicit Handle(int handle) : handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (handle_ != kNone) close(handle_);
  }
  int Get() const { return handle_; }

 private:
  int handle_;
};

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// Makes a new name survive a power failure. A file system that cannot keeps its own promises.
void FlushFolder(const fs::path& folder) {
  const Handle handle(Open(folder, O_RDONLY | O_DIRECTORY));
  if (handle.Get() != kNone) fsync(handle.Get());
}

std::string WhyNotRegular(mode_t mode) {
  if (S_ISREG(mode)) return {};
  return S_ISDIR(mode) ? ErrorText(EISDIR) : "not a regular file";
}

FileBytes Unreadable(std::string reason) {
  return {FileBytes::State::kUnreadable, {}, std::move(reason)};
}

// Until the end of the file, whatever its size was said to be, but no more than one byte above `limit`.
FileBytes ReadAll(int handle, std::size_t expected, std::size_t limit) {
  FileBytes file{FileBytes::State::kRead, {}, {}};
  std::size_t size = 0;
  while (size <= limit) {
    if (size == file.bytes.size()) file.bytes.resize(std::max(expected + 1, 2 * size));
    const ssize_t got = read(handle, file.bytes.data() + size, file.bytes.size() - size);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return Unreadable(ErrorText(errno));
    if (got == 0) break;
    size += static_cast<std::size_t>(got);
  }
  if (size > limit) return {FileBytes::State::kTooLarge, {}, {}};
  file.bytes.resize(size);
  return file;
}

}  // namespace

FileBytes ReadUserFile(const fs::path& file, std::size_t limit) {
  // Opened without waiting, so that a pipe without a writer does not hold the program up.
  const Handle handle(Open(file, O_RDONLY | O_NONBLOCK));
  if (handle.Get() == kNone) {
    if (errno == ENOENT || errno == ENOTDIR) return {};
    return Unreadable(ErrorText(errno));
  }
  struct stat about {};
  if (fstat(handle.Get(), &about) != 0) return Unreadable(ErrorText(errno));
  if (std::string reason = WhyNotRegular(about.st_mode); !reason.empty()) return Unreadable(reason);
  const auto size = static_cast<std::size_t>(about.st_size);
  if (size > limit) return {FileBytes::State::kTooLarge, {}, {}};
  return ReadAll(handle.Get(), size, limit);
}

ReplaceTarget FindReplaceTarget(const fs::path& file) {
  ReplaceTarget target{file, false, {}};
  std::error_code error;
  for (int links = 0; fs::is_symlink(fs::symlink_status(target.file, error)); ++links) {
    const fs::path aim = fs::read_symlink(target.file, error);
    if (error || links == kMostLinks) return {file, false, ErrorText(error ? error.value() : ELOOP)};
    target.file = target.file.parent_path() / aim;
  }
  struct stat about {};
  if (stat(target.file.c_str(), &about) != 0) {
    if (errno != ENOENT) target.refusal = ErrorText(errno);
    return target;
  }
  target.exists = true;
  target.refusal = WhyNotRegular(about.st_mode);
  // Root may write to a file that nobody may; whoever took the permission away meant it.
  const bool writable = (about.st_mode & kAnyWrite) != 0;
  if (target.refusal.empty() && !writable) target.refusal = ErrorText(EACCES);
  if (target.refusal.empty() && faccessat(AT_FDCWD, target.file.c_str(), W_OK, AT_EACCESS) != 0)
    target.refusal = ErrorText(errno);
  return target;
}

NameResult MoveToFreeName(const fs::path& from, const fs::path& to) {
  bool moved = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0;
  // Some file systems know hard links only.
  if (!moved && (errno == EINVAL || errno == ENOSYS)) {
    moved = link(from.c_str(), to.c_str()) == 0;
    if (moved) unlink(from.c_str());
  }
  if (!moved) return errno == EEXIST ? NameResult::kExists : NameResult::kFailed;
  FlushFolder(FolderOf(to));
  if (FolderOf(from) != FolderOf(to)) FlushFolder(FolderOf(from));
  return NameResult::kDone;
}

void RemoveIfAbandoned(const fs::path& temporary) {
  // Its maker holds the lock as long as it lives. Process numbers would not do: homes are shared between
  // machines and containers, which count anew.
  const Handle handle(Open(temporary, O_RDWR | O_NONBLOCK | O_NOFOLLOW));
  if (handle.Get() == kNone) return;
  if (flock(handle.Get(), LOCK_EX | LOCK_NB) == 0) unlink(temporary.c_str());
}

bool IsFolderWritable(const fs::path& folder) {
  struct stat about {};
  return stat(folder.c_str(), &about) == 0 && S_ISDIR(about.st_mode) && (about.st_mode & kAnyWrite) != 0 &&
         faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

// ---- TemporaryFile

namespace {

// Nobody but root may give a file away; a group of one's own may still be given.
void GiveToGroup(int handle, gid_t group) {
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  if (fchown(handle, kSameOwner, group) != 0) return;
}

}  // namespace

TemporaryFile::~TemporaryFile() {
  if (!path_.empty()) unlink(path_.c_str());
  Close();
}

bool TemporaryFile::Fail(std::string reason) {
  fault_ = std::move(reason);
  return false;
}

void TemporaryFile::Close() {
  if (handle_ != kNone) close(std::exchange(handle_, kNone));
}

bool TemporaryFile::Open(const fs::path& target, Readers readers) {
  const mode_t mode = readers == Readers::kOwnerOnly ? 0600 : 0666;
  while (true) {
    const fs::path path = TemporaryName(target, static_cast<unsigned long>(getpid()));
    handle_ = quillet::Open(path, O_RDWR | O_CREAT | O_EXCL, mode);
    if (handle_ == kNone) return Fail(ErrorText(errno));
    path_ = path;
    struct stat about {};
    flock(handle_, LOCK_EX);
    // Somebody who cleared up may have seen it before it was locked.
    if (fstat(handle_, &about) != 0 || about.st_nlink > 0) return true;
    Close();
  }
}

bool TemporaryFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(handle_, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return Fail(ErrorText(count < 0 ? errno : ENOSPC));
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void TemporaryFile::CopyPermissionsOf(const fs::path& file) {
  struct stat about {};
  if (stat(file.c_str(), &about) != 0) return;
  // The owner first: changing it takes some permissions away.
  if (fchown(handle_, about.st_uid, about.st_gid) != 0) GiveToGroup(handle_, about.st_gid);
  fchmod(handle_, about.st_mode & kPermissions);
  // With an access list the group's permissions above are the list's upper bound, not the group's own.
  const ssize_t size = getxattr(file.c_str(), kAccessList, nullptr, 0);
  if (size <= 0) return;
  std::vector<char> list(static_cast<std::size_t>(size));
  if (getxattr(file.c_str(), kAccessList, list.data(), list.size()) == size)
    fsetxattr(handle_, kAccessList, list.data(), list.size(), 0);
}

bool TemporaryFile::Flush() {
  while (fsync(handle_) != 0) {
    if (errno == EINVAL) break;  // a file system without a disk
    if (errno != EINTR) return Fail(ErrorText(errno));
  }
  return true;
}

// The lock is held until the name is gone, so that nobody takes the file for abandoned.
bool TemporaryFile::Replace(const fs::path& target) {
  if (rename(path_.c_str(), target.c_str()) != 0) return Fail(ErrorText(errno));
  path_.clear();
  Close();
  FlushFolder(FolderOf(target));
  return true;
}

NameResult TemporaryFile::ChooseFreeName(const fs::path& name) {
  const NameResult result = MoveToFreeName(path_, name);
  if (result == NameResult::kDone) path_.clear();
  return result;
}

}  // namespace quillet
