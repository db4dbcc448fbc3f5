// The client's own lists of articles: hot, tracked and bookmarked, each a tree of folders, and the weights of
// boards. Plain values; the document owns one.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace quillet {

inline constexpr std::int32_t kNoScore = std::numeric_limits<std::int32_t>::min();

struct ArticleItem {
  std::int64_t postTime = 0;  // seconds since 1970
  std::int32_t score = kNoScore;
  std::int32_t mark = -1;
  std::uint32_t flag = 0;  // of this run only, not stored
  std::u16string board;
  std::u16string code;  // the BBS's eight-character article code
  std::u16string extra;
  std::u16string title;

  bool operator==(const ArticleItem&) const = default;
};

struct ArticleFolder {
  using Child = std::variant<ArticleItem, ArticleFolder>;

  std::u16string name;  // empty: the list itself
  std::vector<Child> children;

  bool operator==(const ArticleFolder&) const = default;
};

enum class ArticleListKind { kHot = 0, kTracked = 1, kBookmarks = 2 };
inline constexpr std::size_t kArticleLists = 3;

struct ArticleLists {
  std::int32_t hotHeader = 0;  // first line of "hot.txt"
  std::u16string trackHeader;  // first line of "track.txt"
  std::array<ArticleFolder, kArticleLists> roots;

  ArticleFolder& Of(ArticleListKind kind) { return roots[static_cast<std::size_t>(kind)]; }
  const ArticleFolder& Of(ArticleListKind kind) const { return roots[static_cast<std::size_t>(kind)]; }
};

// By board name.
using BoardWeights = std::map<std::u16string, std::int32_t, std::less<>>;

}  // namespace quillet
