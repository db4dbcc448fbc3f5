#include "app/interaction/web_controller.h"

#include <QUrl>

namespace quillet {
namespace {

// Something to look up; only the host of its address is of interest.
constexpr std::u16string_view kAnyText = u"x";

PanelText DescribeNoBrowser(std::u16string_view address) {
  return {.title = u"無法開啟網頁"_qs,
          .lines = {QStringView(address).toString(), u"系統沒有開啟網頁的程式，或它沒有回應"_qs},
          .hint = u"Enter 關閉這個訊息"_qs,
          .tone = PanelTone::kProblem,
          .onEnter = PanelAction::kDismiss,
          .onEscape = PanelAction::kDismiss};
}

}  // namespace

void WebController::Open(const TextLink& link) {
  // Without a connection the article is still to be read on the web.
  const bool onBbs = link.article && (doc_.IsConnected() || link.address.empty());
  if (!onBbs) return OpenAddress(link.address);
  handlers_.beforeJump();
  if (!doc_.JumpTo(*link.article)) handlers_.tell(DescribeNoJump(doc_.IsConnected()));
}

void WebController::Search(SearchEngine engine, std::u16string_view text) {
  OpenAddress(SearchAddress(engine, text, doc_.Hosts()));
}

void WebController::OpenUserPage(std::u16string_view id) {
  OpenAddress(UserPageAddress(id, doc_.Hosts()));
}

bool WebController::HasEngine(SearchEngine engine) const {
  return !SearchAddress(engine, kAnyText, doc_.Hosts()).empty();
}

QString WebController::EngineName(SearchEngine engine) const {
  return QUrl(QString::fromStdU16String(SearchAddress(engine, kAnyText, doc_.Hosts()))).host();
}

void WebController::OpenAddress(std::u16string_view address) {
  if (address.empty()) return;
  if (!doc_.WebOpener().Open(address)) handlers_.tell(DescribeNoBrowser(address));
}

}  // namespace quillet
