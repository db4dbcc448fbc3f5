// What the program is started for, told by its command line: the window, or one link, for which no window is
// opened. Before anything else; needs no display. User-interface thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "bbs/article_code.h"

namespace quillet {

struct StartAim {
  enum class Kind {
    kWindow,
    kArticle,      // for the window that there is, else for the other browser
    kOtherBrowser  // not ours
  } kind = Kind::kWindow;
  std::u16string link{};       // not of kWindow
  ArticleReference article{};  // of kArticle
};

// `commandLine` is without the program's name; `hosts` is asked only when there is a link. The marker counts
// at the very beginning only. A link of the BBS that names no article is not ours.
StartAim AimOfStart(std::u16string_view commandLine, const std::function<WebHosts()>& hosts);

// Passes the link of an aim that is none for the window on, and returns the program's exit code.
int PassLinkOn(const StartAim& aim, std::u16string_view commandLine);

}  // namespace quillet
