#include "platform/user_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
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
constexpr std::uintmax_t kMostCopied = 16U << 20;            // bytes, where a link does as well
constexpr std::uintmax_t kMostCopiedWithoutLink = 1U << 30;  // some seconds of a start

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
  copy.CopyPermissionsOf(from);
  return copy.Flush();
}

bool HaveSameContent(const fs::path& one, const fs::path& other) {
  std::error_code error;
  if (fs::equivalent(one, other, error)) return true;
  const std::uintmax_t size = fs::file_size(one, error);
  if (error || size != fs::file_size(other, error) || error || size > kMostCopiedWithoutLink) return false;
  std::ifstream first(one, std::ios::binary), second(other, std::ios::binary);
  std::array<char, 65536> firstPiece, secondPiece;
  while (first && second) {
    const std::streamsize count = first.read(firstPiece.data(), firstPiece.size()).gcount();
    if (second.read(secondPiece.data(), secondPiece.size()).gcount() != count) return false;
    if (!std::equal(firstPiece.begin(), firstPiece.begin() + count, secondPiece.begin())) return false;
  }
  return first.eof() && second.eof();
}

// A file that is to be kept aside, and the beginning of its copies' names.
struct Kept {
  fs::path file, aside;
};

fs::path AsideName(const Kept& kept, int number) {
  const fs::path& name = kept.aside;
  return number == 1 ? name : WithSuffix(name, "-" + std::to_string(number));
}

// Empty when there is none. A link is no copy: it may lead to the file itself.
fs::path EarlierCopy(const Kept& kept) {
  std::error_code error;
  for (int number = 1; number <= kMostKeptAside; ++number) {
    fs::path name = AsideName(kept, number);
    const bool isFile = fs::is_regular_file(fs::symlink_status(name, error));
    if (isFile && HaveSameContent(kept.file, name)) return name;
  }
  return {};
}

// Gives the file under the first free name to `take`. Empty when there is none or it could not.
template <typename Take>
fs::path TakeAsideName(const Kept& kept, Take take) {
  std::error_code error;
  for (int number = 1; number <= kMostKeptAside; ++number) {
    fs::path name = AsideName(kept, number);
    if (fs::exists(fs::symlink_status(name, error))) continue;
    const NameResult result = take(name);
    if (result == NameResult::kDone) return name;
    if (result == NameResult::kFailed) return {};
  }
  return {};
}

fs::path LinkAside(const Kept& kept) {
  // Of a link, the file behind it: the link itself will lead to what replaces that.
  const fs::path linked = FindReplaceTarget(kept.file).file;
  return TakeAsideName(kept, [&linked](const fs::path& name) {
    std::error_code error;
    fs::create_hard_link(linked, name, error);
    if (!error) return NameResult::kDone;
    return error == std::errc::file_exists ? NameResult::kExists : NameResult::kFailed;
  });
}

fs::path CopyAside(const Kept& kept) {
  TemporaryFile copy;
  bool isCopied = false;
  return TakeAsideName(kept, [&](const fs::path& name) {
    if (!isCopied && !CopyTo(copy, kept.file, kept.file)) return NameResult::kFailed;
    isCopied = true;
    return copy.ChooseFreeName(name);
  });
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
  if (target.exists) fresh.CopyPermissionsOf(target.file);
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
  if (!CopyTo(copy, from, to) || copy.ChooseFreeName(to) != NameResult::kDone) return false;
  fs::remove(from, error);
  return true;
}

fs::path KeepAside(const fs::path& file, AsideReason reason) {
  const Kept kept{file, WithSuffix(file, reason == AsideReason::kConverted ? ".before" : ".unreadable")};
  if (fs::path earlier = EarlierCopy(kept); !earlier.empty()) return earlier;
  std::error_code error;
  const std::uintmax_t size = fs::is_regular_file(file, error) ? fs::file_size(file, error) : 0;
  if (error) return {};
  if (size > kMostCopied)
    if (fs::path linked = LinkAside(kept); !linked.empty()) return linked;
  return size > kMostCopiedWithoutLink ? fs::path() : CopyAside(kept);
}

}  // namespace quillet
