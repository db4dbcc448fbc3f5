#include "platform/host_port.h"

#include <algorithm>
#include <charconv>

namespace quillet {
namespace {

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool HasControlCharacter(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

bool IsPortNumber(std::string_view port) {
  unsigned number = 0;
  const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), number);
  return error == std::errc{} && end == port.data() + port.size() && number >= 1 && number <= 65535;
}

}  // namespace

std::string HostPortFault(std::string_view host, std::string_view port) {
  if (host.empty()) return "no host name";
  if (port.empty()) return "no port";
  if (HasControlCharacter(host)) return "not a host name";
  // "telnet" is a port as well: the system's services have names.
  const bool named = IsLetter(port.front()) && !HasControlCharacter(port);
  if (!named && !IsPortNumber(port)) return "not a port: " + std::string(port.substr(0, 32));
  return {};
}

}  // namespace quillet
