#include "app/session/site.h"

#include <string>
#include <string_view>

#include "core/site_address.h"

namespace quillet {
namespace {

constexpr std::u16string_view kOwnSite = u"*";
// No host has such a name.
constexpr std::u16string_view kDemoSite = u"+demo";

}  // namespace

std::u16string SiteKey(const QString& address, const Endpoints& endpoints) {
  const ParsedAddress parsed = ParseSiteAddress(address.toStdString());
  if (parsed.error != AddressError::kNone) return {};
  const std::string_view whole = parsed.address.host;
  // A WebSocket address has its path, and a port before that, in the host.
  std::string_view host = whole.substr(0, whole.find('/'));
  if (host.empty()) return {};
  for (const std::string& own : {endpoints.mainHost, endpoints.secondaryHost, endpoints.webSocketHost})
    if (host == own) return std::u16string(kOwnSite);
  return QString::fromUtf8(host.data(), static_cast<qsizetype>(host.size())).toStdU16String();
}

std::u16string SiteKey(const Site& site, const Endpoints& endpoints) {
  return site.isBbs ? std::u16string(kDemoSite) : SiteKey(site.address, endpoints);
}

}  // namespace quillet
