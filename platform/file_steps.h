// The steps that user_file.cpp is made of, as each system takes them (in its own user_file.cpp). Platform
// folder only; any thread.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillet {

// The file that `file` means, behind its links.
struct ReplaceTarget {
  std::filesystem::path file;
  bool exists = false;
  std::string refusal;  // why it may not be replaced (UTF-8); empty when it may
};
ReplaceTarget FindReplaceTarget(const std::filesystem::path& file);

enum class NameResult { kDone, kExists, kFailed };

// Gives a file another name on the same disk, never one that exists. On the disk when it returns.
NameResult MoveToFreeName(const std::filesystem::path& from, const std::filesystem::path& to);

// "Quill.ini.quillet-1234-89abcdef.tmp" beside the target, another one at each call.
std::filesystem::path TemporaryName(const std::filesystem::path& target, unsigned long process);

// Removes a temporary file of that name unless a running process is still busy with it.
void RemoveIfAbandoned(const std::filesystem::path& temporary);

// A new file beside the one that it is to become. Removed at the end unless it got its final name. The
// steps are taken in this order; after a false one, `Fault` says why and the rest is not to be taken.
class TemporaryFile {
 public:
  TemporaryFile() = default;
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  // Who may read it until it takes the permissions of another file, if it does.
  enum class Readers { kUsual, kOwnerOnly };
  bool Open(const std::filesystem::path& target, Readers readers);
  bool Write(std::string_view bytes);
  // As far as the system lets this user: permissions, owner and access list of another file.
  void CopyPermissionsOf(const std::filesystem::path& file);
  // To the disk.
  bool Flush();
  bool Replace(const std::filesystem::path& target);
  NameResult ChooseFreeName(const std::filesystem::path& name);

  const std::string& Fault() const { return fault_; }

 private:
  bool Fail(std::string reason);
  void Close();

  std::filesystem::path path_;  // empty when there is nothing to remove
#ifdef _WIN32
  void* handle_ = nullptr;
#else
  int handle_ = -1;
#endif
  std::string fault_;
};

}  // namespace quillet
