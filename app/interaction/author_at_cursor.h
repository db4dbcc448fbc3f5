// Whose article the user is at: the id that "add to list" proposes. Pure; any thread.
#pragma once

#include <string>

#include "bbs/article/article_info.h"
#include "bbs/understood_page.h"

namespace quillet {

// The author on the article list's cursor line, or of `open`, the article that is being read. Empty on any
// other page and where the author is no id (a deleted article's "-").
std::u16string AuthorAtCursor(const ScreenSnapshot& screen, const UnderstoodPage& page,
                              const ArticleInfo& open);

}  // namespace quillet
