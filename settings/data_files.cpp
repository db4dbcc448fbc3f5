#include "settings/data_files.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <system_error>
#include <utility>

#include "platform/user_file.h"

namespace quillet {
namespace {

constexpr std::u16string_view kUsesDataFolder = u"UseAppDataLocalPath";

namespace fs = std::filesystem;

bool IsThere(const fs::path& file) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(file, ignored));
}

bool HaveSameContent(const fs::path& one, const fs::path& other) {
  std::error_code error;
  if (fs::file_size(one, error) != fs::file_size(other, error) || error) return false;
  std::ifstream first(one, std::ios::binary), second(other, std::ios::binary);
  std::array<char, 65536> firstPiece, secondPiece;
  while (first && second) {
    const std::streamsize count = first.read(firstPiece.data(), firstPiece.size()).gcount();
    if (second.read(secondPiece.data(), secondPiece.size()).gcount() != count) return false;
    if (!std::equal(firstPiece.begin(), firstPiece.begin() + count, secondPiece.begin())) return false;
  }
  return first.eof() && second.eof();
}

// Where the file is kept aside; a copy of an earlier start is good enough, or one more would be made at every
// start until the file is written.
fs::path KeptAs(const fs::path& file) {
  std::error_code error;
  fs::path prefix = file.filename();
  prefix += ".unreadable";
  for (fs::directory_iterator entry(file.parent_path(), error), end; !error && entry != end;
       entry.increment(error))
    if (entry->path().filename().native().starts_with(prefix.native()) && entry->is_regular_file(error) &&
        HaveSameContent(file, entry->path()))
      return entry->path();
  return KeepAside(file);
}

}  // namespace

DataFiles::DataFiles(Registry& registry, Folders folders)
    : registry_(registry),
      folders_(std::move(folders)),
      workingIsWritable_(IsFolderWritable(folders_.working)) {
  // Where this fails, the first write says why.
  std::error_code ignored;
  fs::create_directories(folders_.data, ignored);
}

bool DataFiles::UsesDataFolder() const {
  return !workingIsWritable_ || registry_.Text(kRegistryPath, kUsesDataFolder) == u"1";
}

bool DataFiles::SetUsesDataFolder(bool on) {
  return registry_.SetText(kRegistryPath, kUsesDataFolder, on ? u"1" : u"0");
}

fs::path DataFiles::Locate(std::string_view name) {
  const Places places = PlacesOf(name);
  std::error_code ignored;
  const bool isElsewhere = !IsThere(places.here) && fs::is_regular_file(places.there, ignored);
  // A file that could not be read stays where the user was told it is.
  if (!isElsewhere || notToBeWritten_.contains(name)) return places.here;
  return MoveUserFile(places.there, places.here) ? places.here : places.there;
}

DataFiles::Places DataFiles::PlacesOf(std::string_view name) const {
  Places places{folders_.working / name, folders_.data / name};
  if (UsesDataFolder()) std::swap(places.here, places.there);
  return places;
}

TextLines DataFiles::Read(std::string_view name) {
  const fs::path file = Locate(name);
  const FileBytes content = ReadUserFile(file, kLargestFile);
  TextLines lines;
  if (content.state == FileBytes::State::kRead) lines = ReadLines(content.bytes);

  const bool isTooLarge = content.state == FileBytes::State::kTooLarge;
  bool isSafeToReplace = content.state != FileBytes::State::kUnreadable;
  if (!isSafeToReplace) Note({FileProblem::Kind::kUnreadable, file, content.reason, 0, {}});
  if (isTooLarge || lines.firstBadLine != 0) {
    const fs::path kept = KeptAs(file);
    isSafeToReplace = !kept.empty();
    Note({isTooLarge ? FileProblem::Kind::kTooLarge : FileProblem::Kind::kDamaged,
          file,
          {},
          lines.firstBadLine,
          kept});
  }
  if (isSafeToReplace)
    std::erase_if(notToBeWritten_, [name](const std::string& other) { return other == name; });
  else
    notToBeWritten_.emplace(name);
  return lines;
}

bool DataFiles::Write(std::string_view name, std::u16string_view text) {
  if (notToBeWritten_.contains(name)) return false;
  Locate(name);
  const fs::path file = PlacesOf(name).here;
  const std::string bytes = EncodeText(text, kLineEnd);
  // What is there already needs no flush, which is the dear part.
  const FileBytes present = ReadUserFile(file, bytes.size());
  const bool isThere = present.state == FileBytes::State::kRead && present.bytes == bytes;
  const std::string reason = isThere ? std::string() : ReplaceFile(file, bytes);
  Forget(file, FileProblem::Kind::kNotWritten);
  if (!reason.empty()) Note({FileProblem::Kind::kNotWritten, file, reason, 0, {}});
  return reason.empty();
}

void DataFiles::Note(FileProblem problem) {
  Forget(problem.file, problem.kind);
  problems_.push_back(std::move(problem));
}

void DataFiles::Forget(const fs::path& file, FileProblem::Kind kind) {
  std::erase_if(problems_,
                [&](const FileProblem& problem) { return problem.file == file && problem.kind == kind; });
}

}  // namespace quillet
