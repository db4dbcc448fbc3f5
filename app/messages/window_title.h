// What the window's title says. Pure.
#pragma once

#include <QString>

#include "app/session/session_facts.h"

namespace quillet {

struct TitleFacts {
  bool work = false;     // work mode: a text editor's title, whatever the site
  bool news = false;     // something has come that the user does not know of
  bool logging = false;  // what the site shows is written to a file
  QString id;            // the user's, where the title shall name it; else empty
};

// "site - Quillet", with what the user should know of its state.
QString DescribeTitle(const SessionFacts& session, const TitleFacts& facts);

}  // namespace quillet
