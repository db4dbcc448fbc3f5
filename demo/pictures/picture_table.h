// What the demo's picture server has at which address: the rows of "pictures/table.txt" in the demo's
// content, and their files, all of which are read at the start. Nothing else of the file system can be asked
// for. Read once, by whoever makes the server; afterwards any thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::demo {

// The words stand in the table.
enum class Manner : std::uint8_t {
  kFile,      // "file": whole, at once
  kMoved,     // "moved": 302 to an address
  kStatus,    // "status": no more than an error's number
  kMislabel,  // "mislabel": said to be a JPEG, whatever it is
  kSlow,      // "slow": a little now and then, about 15 seconds for all of it
  kStalls,    // "stalls": the first half, and nothing more
  kSilent,    // "silent": nothing at all
  kCutOff,    // "cut-off": ends in the middle of what was promised
  kOverlong,  // "overlong": goes on behind what was promised
  kEndless    // "endless": never ends
};

struct PictureRow {
  std::vector<std::string> hosts;
  std::string prefix;  // the target, or what stands before its "*"
  std::string suffix;  // behind the "*"
  bool hasStar = false;
  Manner manner = Manner::kFile;
  std::vector<std::string> what;  // names of files, an address, or a number: by the manner
};

// An answer's content.
struct PictureFile {
  std::string type;  // as HTTP names it
  std::string bytes;
};

class PictureTable {
 public:
  // `folder` holds table.txt and the files. A row that cannot be used is left out and complained of.
  explicit PictureTable(const std::filesystem::path& folder);

  // Null when nothing is there.
  const PictureRow* Find(std::string_view host, std::string_view target) const;
  // Of several files one and the same for each target, in turn for targets that are counted. Web pages say
  // where they are.
  PictureFile FileFor(const PictureRow& row, std::string_view target) const;

  // Every host of the table, in lower case.
  std::vector<std::string> Hosts() const;
  const std::vector<std::string>& Problems() const { return problems_; }

 private:
  void ReadRow(const std::filesystem::path& folder, std::string_view line);
  bool ReadFiles(const std::filesystem::path& folder, const std::vector<std::string>& names);

  std::vector<PictureRow> rows_;
  std::map<std::string, PictureFile, std::less<>> files_;
  std::vector<std::string> problems_;
};

}  // namespace quillet::demo
