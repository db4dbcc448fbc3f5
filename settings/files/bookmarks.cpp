#include "settings/files/bookmarks.h"

#include <algorithm>
#include <utility>
#include <variant>
#include <vector>

namespace quillet {
namespace {

bool IsSameArticle(const ArticleItem& a, const ArticleItem& b) {
  if (a.board != b.board) return false;
  const std::u16string_view codeA = PlainCode(a.code);
  const std::u16string_view codeB = PlainCode(b.code);
  if (!codeA.empty() && !codeB.empty()) return codeA == codeB;
  return a.postTime != 0 && a.postTime == b.postTime && a.title == b.title;
}

// Returns whether there was one.
bool RemoveAll(ArticleFolder& folder, const ArticleItem& article) {
  bool found = false;
  std::erase_if(folder.children, [&](ArticleFolder::Child& child) {
    if (auto* const inner = std::get_if<ArticleFolder>(&child)) {
      found = RemoveAll(*inner, article) || found;
      return false;
    }
    const bool isIt = IsSameArticle(std::get<ArticleItem>(child), article);
    found = found || isIt;
    return isIt;
  });
  return found;
}

}  // namespace

std::u16string_view PlainCode(std::u16string_view code) {
  return code.substr(0, code.find(u'@'));
}

bool IsBookmarked(const ArticleFolder& root, const ArticleItem& article) {
  return std::any_of(root.children.begin(), root.children.end(), [&](const ArticleFolder::Child& child) {
    if (const auto* const inner = std::get_if<ArticleFolder>(&child)) return IsBookmarked(*inner, article);
    return IsSameArticle(std::get<ArticleItem>(child), article);
  });
}

bool ToggleBookmark(ArticleFolder& root, ArticleItem article) {
  if (RemoveAll(root, article)) return false;
  root.children.insert(root.children.begin(), std::move(article));
  return true;
}

}  // namespace quillet
