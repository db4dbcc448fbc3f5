#include "bench/long_article.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace quillet {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPushesFollow = "----- pushes";
// What the reader shows besides: three header rows, the rule, a blank and three notes of the origin.
constexpr std::size_t kRowsAround = 8;

struct Texts {
  std::vector<std::string> body;
  std::vector<std::string> pushes;
};

void AddTexts(const fs::path& file, Texts& texts) {
  Texts here;
  std::ifstream stream(file);
  bool isHeader = true;
  bool isPush = false;
  for (std::string line; std::getline(stream, line);) {
    // Animations and what cannot be read.
    if (isHeader && line.starts_with("Kind:")) return;
    if (line == kPushesFollow)
      isPush = true;
    else if (isPush && !line.empty())
      here.pushes.push_back(line);
    else if (!isHeader && !isPush)
      here.body.push_back(line);
    if (line.empty()) isHeader = false;
  }
  texts.body.insert(texts.body.end(), here.body.begin(), here.body.end());
  texts.pushes.insert(texts.pushes.end(), here.pushes.begin(), here.pushes.end());
}

Texts AllTexts(const fs::path& boards) {
  std::vector<fs::path> files;
  std::error_code error;
  for (const auto& entry : fs::recursive_directory_iterator(boards, error))
    if (entry.path().extension() == ".txt" && entry.path().filename() != "board.txt")
      files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  Texts texts;
  for (const fs::path& file : files)
    AddTexts(file, texts);
  return texts;
}

// Over again when there are too few.
void WriteLines(std::ostream& out, const std::vector<std::string>& lines, std::size_t count) {
  for (std::size_t at = 0; at < count; ++at)
    out << lines[at % lines.size()] << '\n';
}

void WriteArticle(std::ostream& out, const Texts& texts, std::size_t lines) {
  const std::size_t pushes = lines / 4;
  out << "Author: reader (讀者)\nTitle: [長文] 全站文章合輯\nDate: 2026-11-01 20:00:00\nFrom: 192.0.2.7\n\n";
  WriteLines(out, texts.body, lines - pushes - kRowsAround);
  out << kPushesFollow << '\n';
  WriteLines(out, texts.pushes, pushes);
}

}  // namespace

bool WriteLongArticle(const fs::path& content, const fs::path& folder, std::size_t lines) {
  const Texts texts = AllTexts(content / "boards");
  if (texts.body.empty() || texts.pushes.empty() || lines < 2 * kRowsAround) return false;
  std::error_code error;
  const fs::path board = folder / "boards" / kLongBoard;
  fs::create_directories(board, error);
  fs::copy(content / "screens", folder / "screens", fs::copy_options::recursive, error);
  fs::copy(content / "users.txt", folder, error);
  if (error) return false;
  std::ofstream about(board / "board.txt");
  about << "Class: 長文\nTitle: 捲不完的文章\nModerators: reader\nPopularity: 1\nOrder: 1\n";
  std::ofstream article(board / "001.txt");
  WriteArticle(article, texts, lines);
  return about.flush() && article.flush();
}

}  // namespace quillet
