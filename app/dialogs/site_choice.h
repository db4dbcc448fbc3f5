// Which addresses the connect dialog and the login form propose. Pure; any thread.
#pragma once

#include <array>
#include <string_view>

#include <QString>

#include "core/endpoints.h"
#include "core/site_address.h"

namespace quillet {

// The address used last where it can be connected to, else the BBS's main host by telnet; empty when none is
// configured.
QString ProposedAddress(const QString& usedLast, std::string_view mainHost);

// By which ways one can log in to a site.
struct LoginSites {
  struct Way {
    TransportKind kind = TransportKind::kTelnet;
    QString address;        // empty when no host is configured for it
    bool possible = false;  // there is an address to connect to
  };
  std::array<Way, 3> ways;  // Telnet, SSH, WSS
  TransportKind proposed = TransportKind::kTelnet;

  const Way& Of(TransportKind kind) const { return ways[static_cast<std::size_t>(kind)]; }
};

// The BBS's own addresses, but for the way of `preferred` (an address, perhaps empty or unfit), which has
// that one and is proposed where it is possible.
LoginSites ProposedLogin(const QString& preferred, const Endpoints& endpoints);

}  // namespace quillet
