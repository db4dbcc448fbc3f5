#include "settings/files/data_files.h"

#include <algorithm>
#include <iterator>
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

}  // namespace

DataFiles::DataFiles(Registry& registry, Folders folders)
    : registry_(registry), folders_(std::move(folders)) {}

void DataFiles::Prepare() {
  workingIsWritable_ = !folders_.working.empty() && IsFolderWritable(folders_.working);
  ChooseFolder();
  MakeDataFolder();
}

void DataFiles::ChooseFolder() {
  if (registry_.Text(kRegistryPath, kUsesDataFolder)) return;
  const std::optional<FileProblem> problem = registry_.Problem();
  if (problem) guess_ = IsThere(folders_.data / kSettingsFile) && !IsThere(folders_.working / kSettingsFile);
  // A registry that could not be opened is left alone. One that was kept aside loses nothing, and the next
  // value that anybody sets would make it whole again without this one.
  const bool mayBeWritten = !problem || !problem->keptAs.empty();
  if (UsesDataFolder() && mayBeWritten) registry_.SetText(kRegistryPath, kUsesDataFolder, u"1");
}

// Where this fails, the next write says why.
void DataFiles::MakeDataFolder() const {
  std::error_code ignored;
  fs::create_directories(folders_.data, ignored);
}

bool DataFiles::UsesDataFolder() const {
  if (!workingIsWritable_) return true;
  return guess_ ? *guess_ : registry_.Text(kRegistryPath, kUsesDataFolder) == u"1";
}

bool DataFiles::SetUsesDataFolder(bool on) {
  // Another folder than the guessed one is a choice, and files move again.
  if (guess_ != on) guess_.reset();
  return registry_.SetText(kRegistryPath, kUsesDataFolder, on ? u"1" : u"0");
}

fs::path DataFiles::Locate(std::string_view name) {
  const Places places = PlacesOf(name);
  std::error_code ignored;
  const bool isElsewhere = !IsThere(places.here) && fs::is_regular_file(places.there, ignored);
  // A file that could not be read stays where the user was told it is.
  if (!isElsewhere || notToBeWritten_.contains(name)) return places.here;
  const bool hasMoved = !guess_ && MoveUserFile(places.there, places.here);
  return hasMoved ? places.here : places.there;
}

DataFiles::Places DataFiles::PlacesOf(std::string_view name) const {
  if (folders_.working.empty()) return {folders_.data / name, folders_.data / name};
  Places places{folders_.working / name, folders_.data / name};
  if (UsesDataFolder()) std::swap(places.here, places.there);
  // While nothing may move, a file belongs where it is.
  if (guess_ && workingIsWritable_ && !IsThere(places.here) && IsThere(places.there))
    std::swap(places.here, places.there);
  return places;
}

TextLines DataFiles::Read(std::string_view name) {
  const fs::path file = Locate(name);
  const FileBytes content = ReadUserFile(file, kLargestFile);
  known_.insert_or_assign(std::string(name), Known{file, std::nullopt});
  return Admit(name, file, content);
}

// In the user's own folder, wherever the file is: programs of his may still disagree about that.
FileLock DataFiles::WaitForTurn(std::string_view name) {
  MakeDataFolder();
  return FileLock(folders_.data / std::string(name).append(".lock"), patience_);
}

std::optional<DataFiles::OthersLines> DataFiles::ReadAgain(std::string_view name) {
  const auto known = known_.find(name);
  if (known == known_.end()) return std::nullopt;
  fs::path file = Locate(name);
  // What lies in a folder that was chosen just now is older; the others know the file at its last place.
  if (IsThere(known->second.file)) file = known->second.file;
  const FileBytes content = ReadUserFile(file, kLargestFile);
  if (content.state == FileBytes::State::kMissing) {
    MayBeWritten(name, true);
    return std::nullopt;
  }
  const bool isRead = content.state == FileBytes::State::kRead;
  if (isRead && known->second.bytes == content.bytes) return std::nullopt;
  // The user was told, and a large file is not compared and copied at every save.
  if (!isRead && notToBeWritten_.contains(name)) return std::nullopt;

  OthersLines others{ReadLines(known->second.bytes.value_or(std::string())).lines, {}, false};
  TextLines lines = Admit(name, file, content);
  if (!isRead) return std::nullopt;
  // A line that was damaged was not removed by anybody.
  others.isDamaged = lines.firstBadLine != 0;
  if (others.isDamaged) others.now = others.before;
  std::move(lines.lines.begin(), lines.lines.end(), std::back_inserter(others.now));
  return others;
}

TextLines DataFiles::Admit(std::string_view name, const fs::path& file, const FileBytes& content) {
  TextLines lines;
  if (content.state == FileBytes::State::kRead) lines = ReadLines(content.bytes);
  const bool isKnownWhole =
      content.state == FileBytes::State::kRead || content.state == FileBytes::State::kMissing;
  if (isKnownWhole) known_.insert_or_assign(std::string(name), Known{file, content.bytes});

  const bool isTooLarge = content.state == FileBytes::State::kTooLarge;
  bool isSafeToReplace = content.state != FileBytes::State::kUnreadable;
  if (!isSafeToReplace) Note({FileProblem::Kind::kUnreadable, file, content.reason, 0, {}});
  if (isTooLarge || lines.firstBadLine != 0) {
    const fs::path kept = KeepAside(file);
    isSafeToReplace = !kept.empty();
    Note({isTooLarge ? FileProblem::Kind::kTooLarge : FileProblem::Kind::kDamaged,
          file,
          {},
          lines.firstBadLine,
          kept});
  }
  MayBeWritten(name, isSafeToReplace);
  return lines;
}

void DataFiles::KeepOlder(std::string_view name) {
  const auto known = known_.find(name);
  if (known == known_.end()) return;
  const fs::path& file = known->second.file;
  const bool isKept = std::any_of(problems_.begin(), problems_.end(), [&](const FileProblem& problem) {
    return problem.file == file && problem.kind == FileProblem::Kind::kDamaged && !problem.keptAs.empty();
  });
  if (isKept) return;
  const fs::path kept = KeepAside(file, AsideReason::kConverted);
  if (kept.empty()) MayBeWritten(name, false);
  Note({FileProblem::Kind::kConverted, file, {}, 0, kept});
}

void DataFiles::MayBeWritten(std::string_view name, bool may) {
  if (may)
    std::erase_if(notToBeWritten_, [name](const std::string& other) { return other == name; });
  else
    notToBeWritten_.emplace(name);
}

bool DataFiles::Write(std::string_view name, std::u16string_view text) {
  if (notToBeWritten_.contains(name)) return false;
  MakeDataFolder();
  Locate(name);
  const fs::path file = PlacesOf(name).here;
  std::string bytes = EncodeText(text, kLineEnd);
  // What is there already needs no flush, which is the dear part.
  const FileBytes present = ReadUserFile(file, bytes.size());
  const bool isThere = present.state == FileBytes::State::kRead && present.bytes == bytes;
  const std::string reason = isThere ? std::string() : ReplaceFile(file, bytes);
  Forget(file, FileProblem::Kind::kNotWritten);
  if (reason.empty())
    known_.insert_or_assign(std::string(name), Known{file, std::move(bytes)});
  else
    Note({FileProblem::Kind::kNotWritten, file, reason, 0, {}});
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
