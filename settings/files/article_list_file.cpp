#include "settings/files/article_list_file.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <variant>

#include "settings/files/article_list_merge.h"
#include "settings/files/text_lines.h"

namespace quillet {
namespace {

using Lines = std::vector<std::u16string>;

constexpr std::u16string_view kFolderStart = u"<Folder Name=";
constexpr std::u16string_view kFolderEnd = u"</Folder>";
// A header that is 0 or empty does not end the search for one, so the first items would be taken for it.
// This line stands before the items of such a list. Older readers convert it to 0 as well.
constexpr std::u16string_view kNoHeader = u"<No Header>";
constexpr std::size_t kIndent = 4;
// A fourth token this long is a web link, whatever it holds.
constexpr std::size_t kShortestLink = 18;

std::u16string DecimalOf(std::int64_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

// As ToNumber, in 64 bits.
std::int64_t ToSeconds(std::u16string_view text) {
  text = Trimmed(text);
  const bool isNegative = text.starts_with(u'-');
  if (isNegative || text.starts_with(u'+')) text.remove_prefix(1);
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
  std::int64_t seconds = 0;
  for (const char16_t unit : text) {
    if (unit < u'0' || unit > u'9') break;
    const int digit = unit - u'0';
    // Counted downwards, for the smallest number has no positive counterpart.
    if (seconds < (kLeast + digit) / 10) return isNegative ? kLeast : kMost;
    seconds = seconds * 10 - digit;
  }
  return isNegative ? seconds : -std::max(seconds, -kMost);
}

// Takes one token after the other off a line. Each single blank separates, so that an empty token is one too.
class Tokens {
 public:
  explicit Tokens(std::u16string_view line) : rest_(line) {}

  bool AtEnd() const { return atEnd_; }

  std::u16string_view Next() {
    const std::size_t length = std::min(rest_.find(u' '), rest_.size());
    const std::u16string_view token = rest_.substr(0, length);
    atEnd_ = length == rest_.size();
    rest_.remove_prefix(atEnd_ ? length : length + 1);
    return token;
  }

  std::u16string_view Rest() const { return rest_; }

 private:
  std::u16string_view rest_;
  bool atEnd_ = false;
};

ArticleItem ReadItem(std::u16string_view line, const WebHosts& hosts) {
  ArticleItem item;
  Tokens tokens(line);
  item.postTime = ToSeconds(tokens.Next());
  if (!tokens.AtEnd()) item.score = ToNumber(tokens.Next());
  if (!tokens.AtEnd()) item.mark = ToNumber(tokens.Next());
  const std::u16string_view place = tokens.Next();
  if (place.size() >= kShortestLink) {
    ArticleReference reference;
    ParseArticleUrl(place, hosts, reference);
    item.board = std::move(reference.board);
    item.code = std::move(reference.code);
  } else {
    item.board = place;
    item.code = tokens.Next();
  }
  item.extra = tokens.Next();
  item.title = tokens.Rest();
  return item;
}

class HeaderReader {
 public:
  HeaderReader(ArticleListKind kind, ArticleLists& lists) : kind_(kind), lists_(lists) {
    if (kind == ArticleListKind::kHot) lists.hotHeader = 0;
    if (kind == ArticleListKind::kTracked) lists.trackHeader.clear();
  }

  // False when the line is behind the header.
  bool Take(std::u16string_view line) {
    if (isOver_ || !IsMissing()) return false;
    if (line == kNoHeader)
      isOver_ = true;
    else if (kind_ == ArticleListKind::kHot)
      lists_.hotHeader = ToNumber(line);
    else
      lists_.trackHeader = line;
    return true;
  }

 private:
  bool IsMissing() const {
    switch (kind_) {
      case ArticleListKind::kHot:
        return lists_.hotHeader == 0;
      case ArticleListKind::kTracked:
        return lists_.trackHeader.empty();
      case ArticleListKind::kBookmarks:
        break;
    }
    return false;
  }

  ArticleListKind kind_;
  ArticleLists& lists_;
  bool isOver_ = false;
};

class TreeReader {
 public:
  TreeReader(ArticleFolder& root, const WebHosts& hosts) : open_{&root}, hosts_(hosts) {
    root.children.clear();
  }

  void Take(std::u16string_view line) {
    if (line.starts_with(kFolderStart))
      Open(line.substr(kFolderStart.size()));
    else if (line == kFolderEnd)
      Close();
    else
      open_.back()->children.emplace_back(ReadItem(line, hosts_));
  }

 private:
  void Open(std::u16string_view name) {
    if (open_.size() > kDeepestFolder) {
      ++tooDeep_;
      return;
    }
    name.remove_suffix(std::min<std::size_t>(name.size(), 1));  // ">"
    ArticleFolder::Child& child =
        open_.back()->children.emplace_back(ArticleFolder{.name = std::u16string(name), .children = {}});
    open_.push_back(&std::get<ArticleFolder>(child));
  }

  void Close() {
    if (tooDeep_ > 0)
      --tooDeep_;
    else if (open_.size() > 1)
      open_.pop_back();
  }

  // The root first. Only the innermost grows, so the others stay where they are.
  std::vector<ArticleFolder*> open_;
  std::size_t tooDeep_ = 0;
  const WebHosts& hosts_;
};

// Without what would end it.
std::u16string Token(std::u16string_view text) {
  std::u16string token = OneLine(text, text.size());
  std::erase(token, u' ');
  return token;
}

class TreeWriter {
 public:
  explicit TreeWriter(std::u16string& text) : text_(text) {}

  void WriteChildren(const ArticleFolder& folder, std::size_t depth) {
    for (const ArticleFolder::Child& child : folder.children) {
      if (const auto* const inner = std::get_if<ArticleFolder>(&child))
        WriteFolder(*inner, depth);
      else
        WriteItem(std::get<ArticleItem>(child), depth);
    }
  }

 private:
  void WriteFolder(const ArticleFolder& folder, std::size_t depth) {
    if (depth >= kDeepestFolder) return WriteChildren(folder, depth);
    const std::size_t taken = kIndent * depth + kFolderStart.size() + 1;
    WriteLine(std::u16string(kFolderStart).append(OneLine(folder.name, kLongestLine - taken)).append(u">"),
              depth);
    WriteChildren(folder, depth + 1);
    WriteLine(kFolderEnd, depth);
  }

  void WriteItem(const ArticleItem& item, std::size_t depth) {
    std::u16string line;
    for (const std::int64_t number : {item.postTime, std::int64_t{item.score}, std::int64_t{item.mark}})
      line.append(DecimalOf(number)).append(u" ");
    line.append(OneLine(Token(item.board), kShortestLink - 1)).append(u" ");
    line.append(Token(item.code)).append(u" ");
    line.append(Token(item.extra)).append(u" ");
    WriteLine(line.append(item.title), depth);
  }

  void WriteLine(std::u16string_view line, std::size_t depth) {
    text_.append(kIndent * depth, u' ');
    text_.append(OneLine(line, kLongestLine - kIndent * depth)).append(u"\n");
  }

  std::u16string& text_;
};

std::string_view FileOf(ArticleListKind kind) {
  return kArticleListFiles[static_cast<std::size_t>(kind)];
}

std::u16string HeaderText(const ArticleLists& lists, ArticleListKind kind) {
  switch (kind) {
    case ArticleListKind::kHot:
      return ToText(lists.hotHeader);
    case ArticleListKind::kTracked:
      return OneLine(Trimmed(OneLine(lists.trackHeader, lists.trackHeader.size())));
    case ArticleListKind::kBookmarks:
      break;
  }
  return {};
}

ArticleLists ListIn(const Lines& lines, ArticleListKind kind, const WebHosts& hosts) {
  ArticleLists list;
  ReadArticleLines(lines, kind, hosts, list);
  return list;
}

void TakeOverList(const DataFiles::OthersLines& others, ArticleListKind kind, const WebHosts& hosts,
                  ArticleLists& lists) {
  Lines now = others.now, before = others.before;
  // Of a damaged file only what it has counts, not what it lacks.
  if (others.isDamaged) {
    now.erase(now.begin(), now.begin() + static_cast<std::ptrdiff_t>(before.size()));
    before.clear();
  }
  const ArticleLists theirs = ListIn(now, kind, hosts), base = ListIn(before, kind, hosts);
  // Only what the file can hold compares with what was read from it.
  ArticleFolder ours =
      ListIn(ReadLines(EncodeText(ArticleListText(lists, kind), "\n")).lines, kind, hosts).Of(kind);
  MergeArticles(ours, theirs.Of(kind), base.Of(kind));
  lists.Of(kind) = std::move(ours);
  if (lists.hotHeader == base.hotHeader) lists.hotHeader = theirs.hotHeader;
  if (lists.trackHeader == base.trackHeader) lists.trackHeader = theirs.trackHeader;
}

}  // namespace

void ReadArticleLines(const std::vector<std::u16string>& lines, ArticleListKind kind, const WebHosts& hosts,
                      ArticleLists& lists) {
  HeaderReader header(kind, lists);
  TreeReader tree(lists.Of(kind), hosts);
  for (const std::u16string& untrimmed : lines) {
    const std::u16string_view line = Trimmed(untrimmed);
    if (!line.empty() && !header.Take(line)) tree.Take(line);
  }
}

std::u16string ArticleListText(const ArticleLists& lists, ArticleListKind kind) {
  std::u16string text;
  const ArticleFolder& root = lists.Of(kind);
  if (kind != ArticleListKind::kBookmarks) {
    const std::u16string header = HeaderText(lists, kind);
    text.append(header).append(u"\r\n");
    const bool isMissing = header.empty() || (kind == ArticleListKind::kHot && lists.hotHeader == 0);
    if (isMissing && !root.children.empty()) text.append(kNoHeader).append(u"\n");
  }
  TreeWriter(text).WriteChildren(root, 0);
  return text;
}

void ReadBoardWeightLines(const std::vector<std::u16string>& lines, BoardWeights& weights) {
  for (const std::u16string& untrimmed : lines) {
    const std::u16string_view line = Trimmed(untrimmed);
    if (line.empty()) continue;
    const std::size_t nameLength = std::min(line.find(u' '), line.size());
    // The number's own leading blanks are no matter, so a run of blanks separates as well as one.
    weights.insert_or_assign(std::u16string(line.substr(0, nameLength)), ToNumber(line.substr(nameLength)));
  }
}

std::u16string BoardWeightsText(const BoardWeights& weights) {
  std::u16string text;
  for (const auto& [board, weight] : weights) {
    const std::u16string number = ToText(weight);
    const std::u16string name = OneLine(Token(board), kLongestLine - number.size() - 1);
    // Without its name the weight would be read as one.
    if (name.empty()) continue;
    text.append(name).append(u" ").append(number).append(u"\n");
  }
  return text;
}

void LoadArticleLists(DataFiles& files, const WebHosts& hosts, ArticleLists& lists, BoardWeights& weights) {
  ReadBoardWeightLines(files.Read(kBoardWeightsFile).lines, weights);
  for (const ArticleListKind kind :
       {ArticleListKind::kHot, ArticleListKind::kTracked, ArticleListKind::kBookmarks}) {
    const TextLines text = files.Read(FileOf(kind));
    if (!text.lines.empty()) ReadArticleLines(text.lines, kind, hosts, lists);
  }
}

bool ChangeArticleList(DataFiles& files, const WebHosts& hosts, ArticleLists& lists, ArticleListKind kind,
                       const std::function<void(ArticleFolder&)>& change) {
  const std::string_view name = FileOf(kind);
  const FileLock turn = files.WaitForTurn(name);
  if (const auto others = files.ReadAgain(name)) TakeOverList(*others, kind, hosts, lists);
  change(lists.Of(kind));
  return SaveArticleList(files, lists, kind);
}

bool SaveArticleList(DataFiles& files, const ArticleLists& lists, ArticleListKind kind) {
  return files.Write(FileOf(kind), ArticleListText(lists, kind));
}

bool SaveBoardWeights(DataFiles& files, const BoardWeights& weights) {
  return files.Write(kBoardWeightsFile, BoardWeightsText(weights));
}

}  // namespace quillet
