#include "app/dialogs/site_choice.h"

#include <system_error>

#include "core/transport_factory.h"

namespace quillet {
namespace {

QString AddressOn(const char* scheme, std::string_view host, const char* path = "") {
  if (host.empty()) return {};
  return QString::fromLatin1(scheme) + QString::fromUtf8(host.data(), static_cast<qsizetype>(host.size())) +
         QString::fromLatin1(path);
}

bool CanBeConnected(const QString& address) {
  const ParsedAddress parsed = ParseSiteAddress(address.toStdString());
  if (parsed.error != AddressError::kNone || parsed.address.host.empty()) return false;
  try {
    return MakeTransport(parsed.address) != nullptr;
  } catch (const std::system_error&) {
    return true;  // short of handles now; connecting will say so
  }
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
  const ParsedAddress parsed = ParseSiteAddress(preferred.toStdString());
  const bool fits = parsed.error == AddressError::kNone && !parsed.address.host.empty();
  if (fits) sites.ways[static_cast<std::size_t>(parsed.address.kind)].address = preferred.trimmed();
  for (LoginSites::Way& way : sites.ways)
    way.possible = CanBeConnected(way.address);
  if (fits && sites.Of(parsed.address.kind).possible) sites.proposed = parsed.address.kind;
  return sites;
}

}  // namespace quillet
