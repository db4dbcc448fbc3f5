#include "demo/content_loader.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include "core/ascii.h"
#include "demo/article_code.h"
#include "demo/big5_text.h"

namespace quillet::demo {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPushesFollow = "----- pushes";
constexpr std::size_t kPushFields = 5;

bool ReadFile(const fs::path& file, std::string& text) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return false;
  std::ostringstream all;
  all << stream.rdbuf();
  text = all.str();
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
  return true;
}

std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  }
  return lines;
}

std::vector<std::string_view> Fields(std::string_view line) {
  std::vector<std::string_view> fields;
  for (;;) {
    const std::size_t bar = line.find('|');
    fields.push_back(Trimmed(line.substr(0, bar)));
    if (bar == std::string_view::npos) return fields;
    line = line.substr(bar + 1);
  }
}

// Splits "Key: value"; false when there is no colon.
bool KeyValue(std::string_view line, std::string_view& key, std::string_view& value) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return false;
  key = Trimmed(line.substr(0, colon));
  value = Trimmed(line.substr(colon + 1));
  return true;
}

int Number(std::string_view text) {
  int value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9' || value > 100'000'000) break;
    value = value * 10 + (c - '0');
  }
  return value;
}

bool SetKind(std::string_view value, Article& article) {
  if (value == "disputed")
    article.kind = ArticleKind::kDisputed;
  else if (value == "animation")
    article.kind = ArticleKind::kAnimation;
  else if (value == "deleted")
    article.kind = ArticleKind::kDeleted;
  else if (value == "empty")
    article.kind = ArticleKind::kEmpty;
  else
    return false;
  return true;
}

bool SetHeader(std::string_view key, std::string_view value, Article& article) {
  if (key == "Author") {
    const std::size_t open = value.find('(');
    article.authorId = std::string(Trimmed(value.substr(0, open)));
    if (open != std::string_view::npos)
      article.nickname = Big5FromUtf8(value.substr(open + 1, value.rfind(')') - open - 1));
    return !article.authorId.empty();
  }
  if (key == "Title") {
    article.title = Big5FromUtf8(value);
    return true;
  }
  if (key == "Date") {
    BbsTime time;
    if (!ParseBbsTime(value, time)) return false;
    article.seconds = SecondsOf(time);
    return true;
  }
  if (key == "From") {
    article.address = std::string(value);
    return true;
  }
  if (key == "Mark") {
    if (value.size() == 1) article.mark = value[0] == '+' ? ' ' : value[0];
    return value.size() <= 1;
  }
  return key == "Kind" && SetKind(value, article);
}

bool ParsePush(std::string_view line, Push& push) {
  const auto fields = Fields(line);
  if (fields.size() < kPushFields) return false;
  if (fields[0] == "推")
    push.kind = PushKind::kGood;
  else if (fields[0] == "噓")
    push.kind = PushKind::kBad;
  else if (fields[0] == "→")
    push.kind = PushKind::kNote;
  else
    return false;
  push.userId = std::string(fields[1]);
  // A bar within the text belongs to the text: the last two fields are counted from the end.
  const std::size_t last = fields.size() - 1;
  const char* begin = fields[2].data();
  const char* end = fields[last - 2].data() + fields[last - 2].size();
  push.text = Big5FromUtf8({begin, static_cast<std::size_t>(end - begin)});
  push.address = std::string(fields[last - 1]);
  push.time = std::string(fields[last]);
  return true;
}

void LoadBoardInfo(const fs::path& folder, BoardInfo& info, std::vector<std::string>& problems) {
  std::string text;
  if (!ReadFile(folder / "board.txt", text)) problems.push_back(info.name + "/board.txt: cannot be read");
  for (const std::string_view line : Lines(text)) {
    std::string_view key, value;
    if (!KeyValue(line, key, value)) continue;
    if (key == "Class") info.category = Big5FromUtf8(value);
    if (key == "Title") info.title = Big5FromUtf8(value);
    if (key == "Moderators") info.moderators = std::string(value);
    if (key == "Popularity") info.popularity = Number(value);
    if (key == "Order") info.order = Number(value);
    if (key == "PushPause") info.pushPauseSeconds = Number(value);
  }
}

Board LoadBoard(const fs::path& folder, std::vector<std::string>& problems) {
  Board board;
  board.info.name = folder.filename().string();
  LoadBoardInfo(folder, board.info, problems);
  std::vector<fs::path> files;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    const std::string name = entry.path().filename().string();
    if (entry.path().extension() == ".txt" && name[0] >= '0' && name[0] <= '9') files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  for (const fs::path& file : files) {
    const std::string path = (fs::path(board.info.name) / file.filename()).generic_string();
    std::string text, problem;
    auto article = std::make_shared<Article>();
    if (!ReadFile(file, text))
      problems.push_back(path + ": cannot be read");
    else if (!ParseArticle(text, path, *article, problem))
      problems.push_back(path + ": " + problem);
    else
      board.articles.push_back(std::move(article));
  }
  return board;
}

void LoadUsers(const fs::path& file, Content& content) {
  std::string text;
  if (!ReadFile(file, text)) {
    content.problems.push_back(file.filename().string() + ": cannot be read");
    return;
  }
  for (const std::string_view line : Lines(text)) {
    if (Trimmed(line).empty() || line[0] == '#') continue;
    auto fields = Fields(line);
    fields.resize(std::max<std::size_t>(fields.size(), 5));
    User user{std::string(fields[0]), std::string(fields[1]), Big5FromUtf8(fields[2]), Number(fields[3]), {}};
    std::istringstream flags{std::string(fields[4])};
    for (std::string flag; flags >> flag;)
      user.flags.insert(flag);
    if (user.id.empty())
      content.problems.push_back("users.txt: a line without an id");
    else
      content.users.push_back(std::move(user));
  }
}

// Whoever writes here has an account: money and letters can be sent to everybody that one reads of. Without a
// password nobody logs in with it.
void AddWriters(Content& content) {
  const auto lower = [](std::string id) {
    std::transform(id.begin(), id.end(), id.begin(), AsciiLower<char>);
    return id;
  };
  if (content.users.empty()) return;  // nobody could log in at all, which the server says
  std::set<std::string> known;
  for (const User& user : content.users)
    known.insert(lower(user.id));
  const auto add = [&](const std::string& id, const std::string& nickname) {
    if (known.insert(lower(id)).second) content.users.push_back({id, {}, nickname, 0, {}});
  };
  // Authors first, whose nicknames are known.
  for (const Board& board : content.boards)
    for (const ArticlePtr& article : board.articles)
      add(article->authorId, article->nickname);
  for (const Board& board : content.boards)
    for (const ArticlePtr& article : board.articles)
      for (const Push& push : article->pushes)
        add(push.userId, {});
}

}  // namespace

int Article::Score() const {
  int score = 0;
  for (const Push& push : pushes)
    score += push.kind == PushKind::kGood ? 1 : push.kind == PushKind::kBad ? -1 : 0;
  return score;
}

bool ParseArticle(std::string_view utf8, std::string_view path, Article& article, std::string& problem) {
  enum class Part { kHeader, kBody, kPushes } part = Part::kHeader;
  for (const std::string_view line : Lines(utf8)) {
    if (part == Part::kHeader) {
      std::string_view key, value;
      if (line.empty()) {
        part = Part::kBody;
      } else if (!KeyValue(line, key, value) || !SetHeader(key, value, article)) {
        problem = "header line not understood: " + std::string(line);
        return false;
      }
    } else if (part == Part::kBody && line.starts_with(kPushesFollow)) {
      part = Part::kPushes;
    } else if (part == Part::kBody) {
      article.body.push_back(Big5FromUtf8(line));
    } else if (!Trimmed(line).empty()) {
      Push push;
      if (!ParsePush(line, push)) {
        problem = "push line not understood: " + std::string(line);
        return false;
      }
      article.pushes.push_back(std::move(push));
    }
  }
  if (article.authorId.empty() || article.seconds == 0) {
    problem = "no author or no date";
    return false;
  }
  const unsigned suffix = StableHash(path);
  article.fileName = ArticleFileName(article.seconds, suffix);
  article.code = ArticleCode(article.seconds, suffix);
  return true;
}

Content LoadContent(const fs::path& folder) {
  Content content;
  LoadUsers(folder / "users.txt", content);
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder / "boards", error))
    if (entry.is_directory(error)) content.boards.push_back(LoadBoard(entry.path(), content.problems));
  std::sort(content.boards.begin(), content.boards.end(), [](const Board& a, const Board& b) {
    return std::tie(a.info.order, a.info.name) < std::tie(b.info.order, b.info.name);
  });
  AddWriters(content);
  return content;
}

std::vector<std::string> LoadScreen(const fs::path& folder, const std::string& name) {
  std::string text;
  std::vector<std::string> lines;
  if (!ReadFile(folder / "screens" / name, text)) return lines;
  for (const std::string_view line : Lines(text))
    lines.push_back(Big5FromUtf8(line));
  return lines;
}

}  // namespace quillet::demo
