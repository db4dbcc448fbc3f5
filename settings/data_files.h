// The files that the user's settings and lists live in, and where: in the data folder or beside the program,
// as the registry value "UseAppDataLocalPath" says. A file found only at the other place moves over on its
// next use. Keeps aside what it cannot read, and keeps from overwriting what it could not open.
// User-interface thread.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_problem.h"
#include "platform/registry.h"
#include "settings/text_lines.h"

namespace quillet {

// Where all of the program's registry values live.
inline constexpr std::u16string_view kRegistryPath = u"SOFTWARE\\Quillet";

class DataFiles {
 public:
  struct Folders {
    std::filesystem::path working;  // beside the program
    std::filesystem::path data;     // the user's own; made when it is missing
  };

  // `registry` outlives the object.
  DataFiles(Registry& registry, Folders folders);

  // "UseAppDataLocalPath" is "1", or files cannot be made beside the program.
  bool UsesDataFolder() const;
  // Whether the user has a choice: false where files cannot be made beside the program.
  bool CanChooseFolder() const { return workingIsWritable_; }
  // Writes "1" or "0"; each file moves on its next use. False when the registry refuses.
  bool SetUsesDataFolder(bool on);

  // Where the file of this plain name is: where it belongs, after it was moved there if it was only at the
  // other place; still the other place when it could not be moved.
  std::filesystem::path Locate(std::string_view name);

  // No lines when the file is missing. A file with bad lines, or one larger than kLargestFile, is kept aside
  // before this returns, once for the same content; where it cannot be, it is not written in this run.
  TextLines Read(std::string_view name);
  // Replaces the file where it belongs, unless it holds this very text. False when it is not on disk, also
  // for a file that could not be opened by Read.
  bool Write(std::string_view name, std::u16string_view text);

  // No file of a user comes near it, and the memory that its lines take stays small.
  static constexpr std::size_t kLargestFile = 16U << 20;

  // In the order met; one per file and kind, the newest.
  const std::vector<FileProblem>& Problems() const { return problems_; }
  void ClearProblems() { problems_.clear(); }

 private:
  // Where the file belongs, and where it may still be.
  struct Places {
    std::filesystem::path here, there;
  };
  Places PlacesOf(std::string_view name) const;

  void Note(FileProblem problem);
  void Forget(const std::filesystem::path& file, FileProblem::Kind kind);

  Registry& registry_;
  Folders folders_;
  bool workingIsWritable_;
  std::set<std::string, std::less<>> notToBeWritten_;  // by name
  std::vector<FileProblem> problems_;
};

}  // namespace quillet
