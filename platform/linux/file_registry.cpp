#include "platform/linux/file_registry.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/file_lock.h"
#include "platform/linux/registry_text.h"
#include "platform/user_file.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

// With the folders above it. Returns why it could not, in the system's words.
std::string MakePrivateFolder(const fs::path& folder) {
  std::error_code error;
  if (fs::create_directories(folder, error)) fs::permissions(folder, fs::perms::owner_all, error);
  return error ? error.message() : std::string();
}

// Makes an empty file that nobody else may read, because a password will be in it. Returns as above.
std::string MakePrivateFile(const fs::path& file) {
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (descriptor >= 0) {
    close(descriptor);
  } else if (errno != EEXIST) {
    return std::generic_category().message(errno);
  }
  return {};
}

}  // namespace

FileRegistry::FileRegistry(fs::path file) : file_(std::move(file)) {
  Read(values_);
}

std::optional<std::u16string> FileRegistry::Text(std::u16string_view path, std::u16string_view name) const {
  return values_.Text(path, name);
}

std::optional<std::uint32_t> FileRegistry::Number(std::u16string_view path, std::u16string_view name) const {
  return values_.Number(path, name);
}

bool FileRegistry::SetText(std::u16string_view path, std::u16string_view name, std::u16string_view value) {
  return Set(path, name, std::u16string(value));
}

bool FileRegistry::SetNumber(std::u16string_view path, std::u16string_view name, std::uint32_t value) {
  return Set(path, name, value);
}

std::optional<FileProblem> FileRegistry::Problem() const {
  return writeProblem_ ? writeProblem_ : readProblem_;
}

bool FileRegistry::Set(std::u16string_view path, std::u16string_view name, RegistryValues::Data data) {
  values_.Set(path, name, data);
  unwritten_.Set(path, name, std::move(data));
  if (leftAlone_ || !Write()) return false;
  unwritten_.Clear();
  writeProblem_.reset();
  return true;
}

FileRegistry::Found FileRegistry::Read(RegistryValues& values) {
  const FileBytes read = ReadUserFile(file_, kLargestFile);
  switch (read.state) {
    case FileBytes::State::kMissing:
      return Found::kNothing;
    case FileBytes::State::kUnreadable:
      leftAlone_ = true;
      readProblem_ = FileProblem{FileProblem::Kind::kUnreadable, file_, read.reason, 0, {}};
      return Found::kUnreadable;
    case FileBytes::State::kTooLarge:
      readProblem_ = FileProblem{FileProblem::Kind::kTooLarge, file_, {}, 0, KeepAside(file_)};
      return Found::kDamaged;
    case FileBytes::State::kRead:
      break;
  }
  // Made, but not yet written.
  if (read.bytes.empty()) return Found::kNothing;
  RegistryText text = ParseRegistryText(read.bytes);
  values = std::move(text.values);
  if (text.IsWhole()) return Found::kWhole;
  readProblem_ = FileProblem{FileProblem::Kind::kDamaged, file_, {}, text.firstBadLine, KeepAside(file_)};
  return Found::kDamaged;
}

bool FileRegistry::Write() {
  if (std::string reason = MakePrivateFolder(file_.parent_path()); !reason.empty())
    return NotWritten(std::move(reason));
  const FileLock turn(fs::path(file_) += ".lock", patience_);
  RegistryValues inFile;
  const Found found = Read(inFile);
  if (found == Found::kUnreadable) return false;
  values_.Overlay(inFile);
  values_.Overlay(unwritten_);
  if (found == Found::kWhole && inFile == values_) return true;

  const std::string bytes = FormatRegistryText(values_);
  if (bytes.size() > kLargestFile) return NotWritten({});
  if (found == Found::kDamaged && readProblem_->keptAs.empty()) return NotWritten({});
  if (found == Found::kNothing) {
    if (std::string reason = MakePrivateFile(file_); !reason.empty()) return NotWritten(std::move(reason));
  }
  if (std::string reason = ReplaceFile(file_, bytes); !reason.empty()) return NotWritten(std::move(reason));
  return true;
}

bool FileRegistry::NotWritten(std::string reason) {
  writeProblem_ = FileProblem{FileProblem::Kind::kNotWritten, file_, std::move(reason), 0, {}};
  return false;
}

}  // namespace quillet
