// Which address the connect dialog proposes. Pure but for the transport factory, which it asks what this
// build can connect to. User-interface thread.
#pragma once

#include <string_view>

#include <QString>

namespace quillet {

// The address used last where it can be connected to, else the BBS's main host by telnet; empty when none is
// configured.
QString ProposedAddress(const QString& usedLast, std::string_view mainHost);

}  // namespace quillet
