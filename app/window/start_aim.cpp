#include "app/window/start_aim.h"

#include <cstdio>

#include "platform/instance_link.h"
#include "platform/link_handler.h"
#include "platform/registry.h"

namespace quillet {

StartAim AimOfStart(std::u16string_view commandLine, const std::function<WebHosts()>& hosts) {
  if (!commandLine.starts_with(kLinkMarker)) return {};
  StartAim aim{.kind = StartAim::Kind::kOtherBrowser,
               .link = std::u16string(commandLine.substr(kLinkMarker.size()))};
  const bool isOurs = ParseArticleUrl(aim.link, hosts(), aim.article);
  if (isOurs && !aim.article.board.empty() && !aim.article.code.empty())
    aim.kind = StartAim::Kind::kArticle;
  else
    aim.article = {};
  return aim;
}

int PassLinkOn(const StartAim& aim, std::u16string_view commandLine) {
  if (aim.kind == StartAim::Kind::kArticle && SendToInstance(commandLine)) return 0;
  if (OpenInOtherBrowser(aim.link, OtherBrowser(*OpenUserRegistry()))) return 0;
  std::fputs("quillet: no other browser could be started for the link\n", stderr);
  return 1;
}

}  // namespace quillet
