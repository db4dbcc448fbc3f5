#include "demo/pictures/picture_table.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

#include "core/ascii.h"

namespace quillet::demo {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTableFile = "table.txt";
constexpr std::size_t kFields = 4;
// Stands in a web page for the path that it was asked for by, without its ending.
constexpr std::string_view kOwnPath = "{path}";

constexpr std::array<std::pair<std::string_view, Manner>, 10> kManners{{{"file", Manner::kFile},
                                                                        {"moved", Manner::kMoved},
                                                                        {"status", Manner::kStatus},
                                                                        {"mislabel", Manner::kMislabel},
                                                                        {"slow", Manner::kSlow},
                                                                        {"stalls", Manner::kStalls},
                                                                        {"silent", Manner::kSilent},
                                                                        {"cut-off", Manner::kCutOff},
                                                                        {"overlong", Manner::kOverlong},
                                                                        {"endless", Manner::kEndless}}};

constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kTypes{
    {{".jpg", "image/jpeg"},
     {".png", "image/png"},
     {".gif", "image/gif"},
     {".bmp", "image/bmp"},
     {".html", "text/html; charset=utf-8"},
     {".json", "application/json"},
     {".ico", "image/vnd.microsoft.icon"}}};

std::optional<Manner> MannerNamed(std::string_view word) {
  for (const auto& [name, manner] : kManners)
    if (name == word) return manner;
  return std::nullopt;
}

std::string_view TypeOf(std::string_view name) {
  for (const auto& [ending, type] : kTypes)
    if (name.ends_with(ending)) return type;
  return {};
}

bool SendsFile(Manner manner) {
  return manner != Manner::kMoved && manner != Manner::kStatus && manner != Manner::kSilent;
}

std::vector<std::string> Parts(std::string_view text, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == separator)
      parts.emplace_back();
    else
      parts.back() += c;
  }
  return parts;
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words = Parts(text, ' ');
  std::erase_if(words, [](const std::string& word) { return word.empty(); });
  return words;
}

bool ReadWhole(const fs::path& file, std::string& bytes) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return false;
  std::ostringstream all;
  all << stream.rdbuf();
  bytes = all.str();
  return true;
}

// What a "*" stands for: a name within one folder, nothing that a web page would have to quote.
bool IsName(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return IsAsciiLetterOrDigit(c) || c == '-' || c == '_' || c == '.';
  });
}

bool Matches(const PictureRow& row, std::string_view target) {
  if (!row.hasStar) return target == row.prefix;
  return target.size() > row.prefix.size() + row.suffix.size() && target.starts_with(row.prefix) &&
         target.ends_with(row.suffix) &&
         IsName(target.substr(row.prefix.size(), target.size() - row.prefix.size() - row.suffix.size()));
}

std::string_view WithoutEnding(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  return dot == path.npos || path.find('/', dot) != path.npos ? path : path.substr(0, dot);
}

}  // namespace

PictureTable::PictureTable(const fs::path& folder) {
  std::string table;
  if (!ReadWhole(folder / kTableFile, table))
    problems_.push_back((folder / kTableFile).string() + ": cannot be read");
  for (const std::string& line : Parts(table, '\n'))
    if (const std::string_view row = Trimmed(line); !row.empty() && !row.starts_with('#'))
      ReadRow(folder, row);
}

void PictureTable::ReadRow(const fs::path& folder, std::string_view line) {
  const auto complain = [&](std::string_view what) {
    problems_.push_back(std::string(kTableFile) + ": " + std::string(what) + ": " + std::string(line));
  };
  const std::vector<std::string> fields = Parts(line, '|');
  if (fields.size() != kFields || !fields[1].starts_with('/')) return complain("no row");
  const auto manner = MannerNamed(fields[2]);
  if (!manner) return complain("unknown manner");
  PictureRow row;
  row.hosts = Words(AsciiLowered(fields[0]));
  row.manner = *manner;
  row.what = Words(fields[3]);
  const std::size_t star = fields[1].find('*');
  row.prefix = fields[1].substr(0, star);
  row.hasStar = star != std::string::npos;
  if (row.hasStar) row.suffix = fields[1].substr(star + 1);
  if (row.what.empty() && *manner != Manner::kSilent) return complain("nothing to be sent");
  if (SendsFile(*manner) && !ReadFiles(folder, row.what)) return complain("no such file");
  rows_.push_back(std::move(row));
}

bool PictureTable::ReadFiles(const fs::path& folder, const std::vector<std::string>& names) {
  return std::all_of(names.begin(), names.end(), [&](const std::string& name) {
    if (files_.contains(name)) return true;
    PictureFile file{std::string(TypeOf(name)), {}};
    if (file.type.empty() || !IsName(name) || !ReadWhole(folder / name, file.bytes) || file.bytes.empty())
      return false;
    files_.emplace(name, std::move(file));
    return true;
  });
}

const PictureRow* PictureTable::Find(std::string_view host, std::string_view target) const {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const PictureRow& row) {
    return std::find(row.hosts.begin(), row.hosts.end(), host) != row.hosts.end() && Matches(row, target);
  });
  return found == rows_.end() ? nullptr : &*found;
}

PictureFile PictureTable::FileFor(const PictureRow& row, std::string_view target) const {
  std::size_t sum = 0;
  for (const char c : target)
    sum += static_cast<unsigned char>(c);
  PictureFile file = files_.find(row.what[sum % row.what.size()])->second;
  if (!file.type.starts_with("text/")) return file;
  const std::string_view path = WithoutEnding(target.substr(0, target.find('?')));
  for (std::size_t at = file.bytes.find(kOwnPath); at != std::string::npos;
       at = file.bytes.find(kOwnPath, at + path.size()))
    file.bytes.replace(at, kOwnPath.size(), path);
  return file;
}

std::vector<std::string> PictureTable::Hosts() const {
  std::set<std::string> hosts;
  for (const PictureRow& row : rows_)
    hosts.insert(row.hosts.begin(), row.hosts.end());
  return {hosts.begin(), hosts.end()};
}

}  // namespace quillet::demo
