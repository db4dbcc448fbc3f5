// How an article is opened: at once, behind a notice that it is disputed, behind the question whether to play
// it, or not at all. The client's thread.
#pragma once

#include <string>

#include "demo/page.h"
#include "demo/pages/reader_page.h"

namespace quillet::demo {

void OpenArticle(PageHost& host, const std::string& board, const ArticlePtr& article,
                 const ArticleStepper& stepper);

}  // namespace quillet::demo
