#include "platform/user_file.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <random>
#include <system_error>

#include "platform/file_steps.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kTemporaryMark = ".quillet-";
constexpr std::string_view kTemporaryEnd = ".tmp";
constexpr int kMostKeptAside = 9;

fs::path WithSuffix(fs::path path, std::string_view suffix) {
  path += suffix;
  return path;
}

void ClearAbandoned(const fs::path& target) {
  const fs::path begin = WithSuffix(target.filename(), kTemporaryMark);
  const fs::path end = kTemporaryEnd;
  std::error_code error;
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    const fs::path name = entry->path().filename();
    if (name.native().starts_with(begin.native()) && name.native().ends_with(end.native()))
      RemoveIfAbandoned(entry->path());
  }
}

// A temporary file beside `target` with the content and permissions of `from`.
bool CopyTo(TemporaryFile& copy, const fs::path& from, const fs::path& target) {
  std::error_code error;
  if (!fs::is_regular_file(from, error)) return false;
  std::ifstream source(from, std::ios::binary);
  ClearAbandoned(target);
  if (!source || !copy.Open(target, TemporaryFile::Readers::kOwnerOnly)) return false;
  std::array<char, 65536> piece;
  while (source) {
    source.read(piece.data(), piece.size());
    if (source.bad()) return false;
    if (!copy.Write({piece.data(), static_cast<std::size_t>(source.gcount())})) return false;
  }
  copy.TakePermissionsOf(from);
  return copy.Flush();
}

}  // namespace

fs::path TemporaryName(const fs::path& target, unsigned long process) {
  std::array<char, 48> tail;
  std::snprintf(tail.data(), tail.size(), "%lu-%08x", process, std::random_device{}());
  return WithSuffix(WithSuffix(WithSuffix(target, kTemporaryMark), tail.data()), kTemporaryEnd);
}

std::string ReplaceFile(const fs::path& file, std::string_view bytes) {
  const ReplaceTarget target = FindReplaceTarget(file);
  if (!target.refusal.empty()) return target.refusal;
  ClearAbandoned(target.file);
  using Readers = TemporaryFile::Readers;
  TemporaryFile fresh;
  if (!fresh.Open(target.file, target.exists ? Readers::kOwnerOnly : Readers::kUsual) || !fresh.Write(bytes))
    return fresh.Fault();
  if (target.exists) fresh.TakePermissionsOf(target.file);
  if (!fresh.Flush() || !fresh.Replace(target.file)) return fresh.Fault();
  return {};
}

bool MoveUserFile(const fs::path& from, const fs::path& to) {
  std::error_code error;
  // A link would point elsewhere from another folder.
  if (fs::symlink_status(from, error).type() == fs::file_type::regular) {
    const NameResult moved = MoveToFreeName(from, to);
    if (moved != NameResult::kFailed) return moved == NameResult::kDone;
  }
  if (fs::exists(fs::symlink_status(to, error))) return false;
  TemporaryFile copy;
  if (!CopyTo(copy, from, to) || copy.TakeFreeName(to) != NameResult::kDone) return false;
  fs::remove(from, error);
  return true;
}

fs::path KeepAside(const fs::path& file) {
  std::error_code error;
  TemporaryFile copy;
  bool copied = false;
  for (int number = 1; number <= kMostKeptAside; ++number) {
    fs::path name = WithSuffix(file, ".unreadable");
    if (number > 1) name += "-" + std::to_string(number);
    if (fs::exists(fs::symlink_status(name, error))) continue;
    if (!copied && !CopyTo(copy, file, file)) return {};
    copied = true;
    const NameResult result = copy.TakeFreeName(name);
    if (result == NameResult::kDone) return name;
    if (result == NameResult::kFailed) return {};
  }
  return {};
}

}  // namespace quillet
