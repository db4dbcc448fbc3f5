// What the window says about links: those that lead out of it, those that other programs hand to it, and its
// being the program for them. Pure.
#pragma once

#include <string_view>

#include <QString>

#include "app/messages/panel_text.h"
#include "bbs/article_code.h"
#include "platform/link_handler.h"

namespace quillet {

// Nothing could be started for the address, or it has given up.
PanelText DescribeNoBrowser(std::u16string_view address);

// Why an article that another program asks for is not opened yet.
enum class ArticleWaitsFor { kLogin, kAutomation };
QString DescribeWaitingArticle(const ArticleReference& article, ArticleWaitsFor what);

// Below the button that makes the program the one for links.
QString DescribeLinkHandlerButton(bool asksUser);
// What has come of pressing it; empty where the system tells it itself.
QString DescribeLinkChoice(LinkChoice choice);

}  // namespace quillet
