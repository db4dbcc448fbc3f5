#include "core/site_address.h"

#include <array>

#include "core/ascii.h"

namespace quillet {
namespace {

constexpr std::string_view kSchemeEnd = "://";

struct SchemeRow {
  std::string_view prefix;
  TransportKind kind;
};

constexpr std::array<SchemeRow, 3> kSchemes{{
    {"ssh://", TransportKind::kSsh},
    {"wss://", TransportKind::kWebSocket},
    {"telnet://", TransportKind::kTelnet},
}};

// The last ":" outside of square brackets; npos when there is none.
std::size_t FindPortColon(std::string_view text) {
  std::size_t colon = std::string_view::npos;
  bool inBrackets = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '[') inBrackets = true;
    if (text[i] == ']') inBrackets = false;
    if (text[i] == ':' && !inBrackets) colon = i;
  }
  return colon;
}

}  // namespace

ParsedAddress ParseSiteAddress(std::string_view text) {
  ParsedAddress parsed;
  const std::string_view trimmed = Trimmed(text);
  if (trimmed.size() > kMaxAddressLength) {
    parsed.error = AddressError::kTooLong;
    return parsed;
  }
  const std::string lower = AsciiLowered(trimmed);
  std::string_view rest = lower;

  const std::size_t schemeEnd = rest.find(kSchemeEnd);
  if (schemeEnd != std::string_view::npos) {
    parsed.error = AddressError::kUnknownScheme;
    for (const SchemeRow& row : kSchemes) {
      if (!rest.starts_with(row.prefix)) continue;
      parsed.error = AddressError::kNone;
      parsed.address.kind = row.kind;
    }
    if (parsed.error != AddressError::kNone) return parsed;
    rest.remove_prefix(schemeEnd + kSchemeEnd.size());
  }

  const std::size_t colon = FindPortColon(rest);
  if (colon != std::string_view::npos) {
    parsed.address.port = Trimmed(rest.substr(colon + 1));
    rest = rest.substr(0, colon);
  }
  parsed.address.host = Trimmed(rest);
  return parsed;
}

std::string_view HostForLookup(std::string_view host) {
  if (host.size() >= 2 && host.front() == '[' && host.back() == ']') return host.substr(1, host.size() - 2);
  return host;
}

}  // namespace quillet
