// What is new in an article that has been read before. Pure; any thread.
#pragma once

#include "bbs/article/article_lines.h"

namespace quillet {

struct ArticleNews {
  int newPushes = 0;    // push lines more than before
  bool edited = false;  // the author has changed the text

  bool operator==(const ArticleNews&) const = default;
};

// `edited`: the lines above the first push line read differently, or the BBS says more often than before that
// the article has been edited.
ArticleNews CompareArticle(const ArticleLines& before, const ArticleLines& now);

}  // namespace quillet
