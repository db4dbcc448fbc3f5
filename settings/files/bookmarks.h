// The bookmarks among the user's own lists of articles: asked, added and removed. An article is the same one
// when board and code are the same; where one of the two codes is not known (empty), as for an open article
// whose code has not been asked for, when board, title and a known `postTime` are. Pure.
#pragma once

#include <string_view>

#include "settings/files/article_lists.h"

namespace quillet {

// "@" ends a code.
std::u16string_view PlainCode(std::u16string_view code);

bool IsBookmarked(const ArticleFolder& root, const ArticleItem& article);
// Puts a bookmark for the article before all others at the root, or removes every one that there is, in
// folders too. Returns whether it is bookmarked now.
bool ToggleBookmark(ArticleFolder& root, ArticleItem article);

}  // namespace quillet
