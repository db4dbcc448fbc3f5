// Any bytes as each of the article list files and as the board weights. What was read and written once must
// read the same from then on, and no text of an item may make or lose an item or change a number.
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <tuple>
#include <vector>

#include "settings/files/article_list_file.h"
#include "settings/files/text_lines.h"

namespace quillet {
namespace {

const WebHosts kHosts{.host = u"b.example", .mirror1 = u"m.example", .mirror2 = u"p.example"};

void Require(bool holds) {
  if (!holds) std::abort();
}

using Lines = std::vector<std::u16string>;
using Numbers = std::vector<std::tuple<std::int64_t, std::int32_t, std::int32_t>>;

void CollectNumbers(const ArticleFolder& folder, std::size_t depth, Numbers& numbers) {
  Require(depth <= kDeepestFolder);
  for (const ArticleFolder::Child& child : folder.children) {
    if (const auto* const inner = std::get_if<ArticleFolder>(&child)) {
      CollectNumbers(*inner, depth + 1, numbers);
    } else {
      const auto& item = std::get<ArticleItem>(child);
      numbers.emplace_back(item.postTime, item.score, item.mark);
    }
  }
}

Numbers NumbersOf(const ArticleFolder& folder) {
  Numbers numbers;
  CollectNumbers(folder, 0, numbers);
  return numbers;
}

Lines LinesOf(std::u16string_view text, std::string_view lineEnd) {
  TextLines read = ReadLines(EncodeText(text, lineEnd));
  Require(read.firstBadLine == 0);
  return std::move(read.lines);
}

void RunList(const Lines& lines, ArticleListKind kind) {
  ArticleLists read, once, twice;
  ReadArticleLines(lines, kind, kHosts, read);
  ReadArticleLines(LinesOf(ArticleListText(read, kind), "\n"), kind, kHosts, once);
  ReadArticleLines(LinesOf(ArticleListText(once, kind), "\r\n"), kind, kHosts, twice);
  Require(NumbersOf(read.Of(kind)) == NumbersOf(once.Of(kind)));
  Require(read.hotHeader == once.hotHeader && once.hotHeader == twice.hotHeader);
  Require(once.trackHeader == twice.trackHeader);
  Require(once.Of(kind) == twice.Of(kind));
}

void RunWeights(const Lines& lines) {
  BoardWeights read, once, twice;
  ReadBoardWeightLines(lines, read);
  ReadBoardWeightLines(LinesOf(BoardWeightsText(read), "\n"), once);
  ReadBoardWeightLines(LinesOf(BoardWeightsText(once), "\r\n"), twice);
  Require(once == twice);
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using quillet::ArticleListKind;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const quillet::Lines lines = quillet::ReadLines(bytes).lines;
  for (const ArticleListKind kind :
       {ArticleListKind::kHot, ArticleListKind::kTracked, ArticleListKind::kBookmarks})
    quillet::RunList(lines, kind);
  quillet::RunWeights(lines);
  return 0;
}
