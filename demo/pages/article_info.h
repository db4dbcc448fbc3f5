// Boxes over a list or the reader: an article's code and link, a board's description. The client's thread.
#pragma once

#include <string>

#include "demo/page.h"

namespace quillet::demo {

void OpenArticleInfo(PageHost& host, const std::string& board, const Article& article);
void OpenBoardInfo(PageHost& host, const BoardInfo& board);

}  // namespace quillet::demo
