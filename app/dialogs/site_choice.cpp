#include "app/dialogs/site_choice.h"

namespace quillet {
namespace {

QString AddressOn(const char* scheme, std::string_view host, const char* path = "") {
  if (host.empty()) return {};
  return QString::fromLatin1(scheme) + QString::fromUtf8(host.data(), static_cast<qsizetype>(host.size())) +
         QString::fromLatin1(path);
}

bool CanBeConnected(const QString& address) {
  const ParsedAddress parsed = ParseSiteAddress(address.toStdString());
  return parsed.error == AddressError::kNone && !parsed.address.host.empty();
}

}  // namespace

QString ProposedAddress(const QString& usedLast, std::string_view mainHost) {
  return CanBeConnected(usedLast) ? usedLast : AddressOn("telnet://", mainHost);
}

LoginSites ProposedLogin(const QString& preferred, const Endpoints& endpoints) {
  LoginSites sites;
  sites.ways = {{{TransportKind::kTelnet, AddressOn("telnet://", endpoints.mainHost), false},
                 {TransportKind::kSsh, AddressOn("ssh://", endpoints.mainHost), false},
                 {TransportKind::kWebSocket, AddressOn("wss://", endpoints.webSocketHost, "/bbs"), false}}};
  if (CanBeConnected(preferred)) {
    sites.proposed = ParseSiteAddress(preferred.toStdString()).address.kind;
    sites.ways[static_cast<std::size_t>(sites.proposed)].address = preferred.trimmed();
  }
  for (LoginSites::Way& way : sites.ways)
    way.possible = CanBeConnected(way.address);
  return sites;
}

}  // namespace quillet
