// Site addresses: "telnet://host:port", "ssh://host", "wss://host/path", or a bare host. Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillet {

enum class TransportKind : int { kTelnet = 0, kSsh = 1, kWebSocket = 2 };

struct SiteAddress {
  TransportKind kind = TransportKind::kTelnet;
  std::string host;  // a WebSocket address keeps its path here
  std::string port = "23";
};

// Longer addresses are refused: no host name (253 characters) with scheme, port and path comes near it.
inline constexpr std::size_t kMaxAddressLength = 1024;

enum class AddressError { kNone, kUnknownScheme, kTooLong };

struct ParsedAddress {
  AddressError error = AddressError::kNone;
  SiteAddress address;
};

// Lower-cases and trims, takes the scheme off, and splits host and port at the last ":" outside of square
// brackets.
ParsedAddress ParseSiteAddress(std::string_view text);

// The host as the resolver wants it: without the brackets of an IPv6 address.
std::string_view HostForLookup(std::string_view host);

}  // namespace quillet
