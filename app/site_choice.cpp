#include "app/site_choice.h"

#include <system_error>

#include "core/site_address.h"
#include "core/transport_factory.h"

namespace quillet {
namespace {

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
  if (CanBeConnected(usedLast)) return usedLast;
  if (mainHost.empty()) return {};
  return u"telnet://%1"_qs.arg(QString::fromUtf8(mainHost.data(), static_cast<qsizetype>(mainHost.size())));
}

}  // namespace quillet
