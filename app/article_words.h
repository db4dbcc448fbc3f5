// What the window says about the open article and what belongs to its picture. Pure.
#pragma once

#include <QString>

#include "app/quill_doc.h"
#include "app/session_words.h"
#include "bbs/article_reading.h"

namespace quillet {

// Empty: there is nothing to say.
QString DescribeNews(const ArticleNews& news);
QString DescribeBookmarkEnd(BookmarkEnd end);
// A command that is of no use now.
QString DescribeNoCommand(bool connected);

// A switch that nothing acts on in this version.
QString DescribeActsNotYet(const QString& name);

// The background picture the user has chosen cannot be shown; `reason` is the loader's.
PanelText DescribeNoBackground(const QString& source, const QString& reason);

}  // namespace quillet
