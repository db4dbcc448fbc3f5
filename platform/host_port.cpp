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

// No character is cut.
std::string_view Shortened(std::string_view text) {
  constexpr std::size_t kMost = 32;
  if (text.size() <= kMost) return text;
  std::size_t end = kMost;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
    --end;
  return text.substr(0, end);
}

}  // namespace

std::string HostPortFault(std::string_view host, std::string_view port) {
  if (host.empty()) return "沒有主機名稱";
  if (port.empty()) return "沒有埠號";
  if (HasControlCharacter(host)) return "主機名稱含有控制字元";
  // "telnet" is a port as well: the system's services have names.
  const bool named = IsLetter(port.front()) && !HasControlCharacter(port);
  if (!named && !IsPortNumber(port)) return "不是埠號：" + std::string(Shortened(port));
  return {};
}

}  // namespace quillet
