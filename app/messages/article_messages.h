// What the window says about the open article and what belongs to its picture. Pure.
#pragma once

#include <QString>

#include "app/messages/panel_text.h"
#include "app/session/session_facts.h"
#include "bbs/article/article_reading.h"

namespace quillet {

// Empty: there is nothing to say.
QString DescribeNews(const ArticleNews& news);
QString DescribeBookmarkEnd(BookmarkEnd end);
// The hits of a text in the open article.
struct SearchTally {
  int here = -1;  // the number of the hit at which the user is, from 0; -1: at none
  int count = 0;
  bool stillReading = false;
};
namespace SearchMessages {
QString Label();
QString Hint();
QString Previous();
QString Next();
QString Tally(const SearchTally& tally);
// To be filled with the tally: the search has gone on at the other end.
QString FromTop();
QString FromEnd();
QString NoMoreYet();
}  // namespace SearchMessages
// A command that is of no use now.
QString DescribeNoCommand(bool connected);

// The background picture the user has chosen cannot be shown; `reason` is the loader's.
PanelText DescribeNoBackground(const QString& source, const QString& reason);

}  // namespace quillet
