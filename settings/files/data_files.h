// The files that the user's settings and lists live in, and where: in the data folder or beside the program,
// as the registry value "UseAppDataLocalPath" says. A file found only at the other place moves over on its
// next use. Keeps aside what it cannot read, and keeps from overwriting what it could not open.
// User-interface thread.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_lock.h"
#include "platform/file_problem.h"
#include "platform/registry.h"
#include "settings/files/text_lines.h"

namespace quillet {

struct FileBytes;

// The file that every user has, so that it tells which folder is in use.
inline constexpr std::string_view kSettingsFile = "Quill.ini";

class DataFiles {
 public:
  struct Folders {
    std::filesystem::path working;  // beside the program; empty: nothing may lie there
    std::filesystem::path data;     // the user's own; made when it is missing
  };

  // `registry` outlives the object.
  DataFiles(Registry& registry, Folders folders);

  // Decides which folder is in use and makes the user's own; once, before anything else is asked. Where the
  // user has not chosen and files cannot be made beside the program, the value becomes "1": a run with other
  // rights has to find the same files. Where the registry has lost the value, the folder is the one that
  // holds "Quill.ini" (beside the program when both do, or none), and no file moves in this run.
  void Prepare();

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

  // The lines of a file that another program has written meanwhile.
  struct OthersLines {
    std::vector<std::u16string> before;  // as the file was last read or written here
    std::vector<std::u16string> now;     // with those before in front when the file is damaged
    bool isDamaged = false;              // and has been kept aside
  };
  // Alone at the file among the user's programs as long as it lives, so that nobody writes between ReadAgain
  // and Write.
  [[nodiscard]] FileLock WaitForTurn(std::string_view name);
  // Looks at the file again, before it is written. Nothing when it is as it was last read or written here,
  // also when it is gone. By the rules of Read, and a file that can be read by now may be written again.
  std::optional<OthersLines> ReadAgain(std::string_view name);

  // Replaces the file where it belongs, unless it holds this very text. False when it is not on disk, also
  // for a file that could not be opened by Read.
  bool Write(std::string_view name, std::u16string_view text);

  // Keeps the file aside as it was last read, which an older version wrote: to be called before it is written
  // in today's form. Where it cannot be, it is not written in this run.
  void KeepOlder(std::string_view name);

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
  void ChooseFolder();
  void MakeDataFolder() const;

  // A file as it was last read or written here.
  struct Known {
    std::filesystem::path file;
    std::optional<std::string> bytes;  // nothing when it could not be read
  };
  TextLines Admit(std::string_view name, const std::filesystem::path& file, const FileBytes& content);
  void MayBeWritten(std::string_view name, bool may);

  void Note(FileProblem problem);
  void Forget(const std::filesystem::path& file, FileProblem::Kind kind);

  Registry& registry_;
  Folders folders_;
  LockPatience patience_;
  bool workingIsWritable_ = false;
  std::optional<bool> guess_;  // whether to use the data folder, where the registry has lost it
  std::map<std::string, Known, std::less<>> known_;    // by name
  std::set<std::string, std::less<>> notToBeWritten_;  // by name
  std::vector<FileProblem> problems_;
};

}  // namespace quillet
