// Writing articles and replies: the title, the editor, and where the text goes. The client's thread.
#pragma once

#include <string>

#include "demo/page.h"

namespace quillet::demo {

void StartPost(PageHost& host, const std::string& board);
// Asks whether to answer on the board, by mail or both, and whether to quote.
void StartReply(PageHost& host, const std::string& board, const Article& article);
// Asks for the receiver and the title of a letter.
void StartMail(PageHost& host);

}  // namespace quillet::demo
