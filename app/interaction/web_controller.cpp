#include "app/interaction/web_controller.h"

#include <utility>

#include <QUrl>

#include "app/messages/link_messages.h"

namespace quillet {
namespace {

// Something to look up; only the host of its address is of interest.
constexpr std::u16string_view kAnyText = u"x";

QString HostOf(SearchEngine engine, const Endpoints& hosts) {
  return QUrl(QString::fromStdU16String(SearchAddress(engine, kAnyText, hosts))).host();
}

}  // namespace

WebController::WebController(const Parts& parts, Handlers handlers)
    : parts_(parts),
      handlers_(std::move(handlers)),
      firstEngine_(HostOf(SearchEngine::kFirst, parts.hosts)),
      secondEngine_(HostOf(SearchEngine::kSecond, parts.hosts)) {}

void WebController::Open(const TextLink& link) {
  // Without a connection the article is still to be read on the web.
  const bool onBbs = link.article && (parts_.connection.IsConnected() || link.address.empty());
  onBbs ? OpenArticle(*link.article) : OpenAddress(link.address);
}

void WebController::OpenArticle(const ArticleReference& article) {
  handlers_.beforeJump();
  if (!parts_.automations.JumpTo(article)) handlers_.tell(DescribeNoJump(parts_.connection.IsConnected()));
}

void WebController::Search(SearchEngine engine, std::u16string_view text) {
  OpenAddress(SearchAddress(engine, text, parts_.hosts));
}

void WebController::OpenUserPage(std::u16string_view id) {
  OpenAddress(UserPageAddress(id, parts_.hosts));
}

void WebController::OpenAddress(std::u16string_view address) {
  if (address.empty()) return;
  if (!parts_.opener.Open(address)) handlers_.tell(DescribeNoBrowser(address));
}

}  // namespace quillet
