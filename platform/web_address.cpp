#include "platform/web_address.h"

#include <algorithm>
#include <cstddef>

#include "platform/utf8.h"

namespace quillet {
namespace {

// Of a name in the domain name system.
constexpr std::size_t kLongestHost = 253;
constexpr std::size_t kLongestPort = 5;
constexpr unsigned kHighestPort = 65535;

// What an address consists of besides letters and digits.
constexpr std::u16string_view kAddressSigns = u"-._~:/?#[]@!$&'()*+,;=%";
// What people write around an address, and what may end the argument of a program.
constexpr std::u16string_view kNeverInLinks = u"\"<>`\\";

constexpr bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

constexpr char16_t Lower(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

constexpr bool IsLetterOrDigit(char16_t c) {
  return IsDigit(c) || (Lower(c) >= u'a' && Lower(c) <= u'z');
}

constexpr bool IsHexDigit(char16_t c) {
  return IsDigit(c) || (Lower(c) >= u'a' && Lower(c) <= u'f');
}

constexpr bool IsControl(char16_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

bool StartsWithAnyCase(std::u16string_view text, std::u16string_view lower) {
  return text.size() >= lower.size() &&
         std::equal(lower.begin(), lower.end(), text.begin(),
                    [](char16_t wanted, char16_t c) { return wanted == Lower(c); });
}

// 0: no scheme that may be opened.
std::size_t SchemeLength(std::u16string_view address) {
  for (const std::u16string_view scheme : {std::u16string_view(u"http://"), std::u16string_view(u"https://")})
    if (StartsWithAnyCase(address, scheme)) return scheme.size();
  return 0;
}

bool IsHostName(std::u16string_view host) {
  if (host.ends_with(u'.')) host.remove_suffix(1);  // the root's dot
  if (host.empty() || host.size() > kLongestHost) return false;
  bool labelBegins = true;
  for (const char16_t c : host) {
    const bool isDot = c == u'.';
    if (isDot ? labelBegins : !IsLetterOrDigit(c) && c != u'-' && c != u'_') return false;
    labelBegins = isDot;
  }
  return !labelBegins;
}

bool IsBracketedAddress(std::u16string_view host) {
  return host.size() > 2 && host.size() <= kLongestHost && host.find(u':') != host.npos &&
         std::all_of(host.begin() + 1, host.end() - 1,
                     [](char16_t c) { return IsHexDigit(c) || c == u':' || c == u'.'; });
}

bool IsPort(std::u16string_view digits) {
  if (digits.empty() || digits.size() > kLongestPort || !std::all_of(digits.begin(), digits.end(), IsDigit))
    return false;
  unsigned port = 0;
  for (const char16_t digit : digits)
    port = port * 10 + (digit - unsigned{u'0'});
  return port <= kHighestPort;
}

// Of a site, host and port, its host's length; 0: it is none.
std::size_t HostLength(std::u16string_view site) {
  const std::size_t bracket = site.starts_with(u'[') ? site.find(u']') : std::u16string_view::npos;
  const std::size_t length = bracket != site.npos ? bracket + 1 : std::min(site.find(u':'), site.size());
  const std::u16string_view host = site.substr(0, length);
  const std::u16string_view port = site.substr(length);
  if (!port.empty() && (port.front() != u':' || !IsPort(port.substr(1)))) return 0;
  const bool isHost = bracket != site.npos ? IsBracketedAddress(host) : IsHostName(host);
  return isHost ? length : 0;
}

// Host and port, as they stand behind a scheme that may be opened.
std::u16string_view SiteOf(std::u16string_view address) {
  const std::size_t begin = SchemeLength(address);
  if (begin == 0) return {};
  return address.substr(begin, std::min(address.find_first_of(u"/?#", begin), address.size()) - begin);
}

// Where the host and its port end; 0: scheme or host may not be opened.
std::size_t SiteEnd(std::u16string_view address) {
  if (address.size() > kLongestWebAddress) return 0;
  const std::u16string_view site = SiteOf(address);
  return HostLength(site) != 0 ? SchemeLength(address) + site.size() : 0;
}

void AppendEscape(std::string& out, char byte) {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  const auto value = static_cast<unsigned char>(byte);
  out += '%';
  out += kHexDigits[value >> 4];
  out += kHexDigits[value & 0xF];
}

bool IsEscape(std::string_view text) {
  return text.size() >= 3 && text[0] == '%' && IsHexDigit(static_cast<unsigned char>(text[1])) &&
         IsHexDigit(static_cast<unsigned char>(text[2]));
}

bool IsKept(char byte) {
  const auto unit = static_cast<char16_t>(static_cast<unsigned char>(byte));
  return IsLetterOrDigit(unit) || kAddressSigns.find(unit) != kAddressSigns.npos;
}

}  // namespace

bool IsWebAddress(std::u16string_view address) {
  const std::size_t site = SiteEnd(address);
  return site != 0 &&
         std::all_of(address.begin() + static_cast<std::ptrdiff_t>(site), address.end(), [](char16_t c) {
           return c > u' ' && c < 0x7F && kNeverInLinks.find(c) == kNeverInLinks.npos;
         });
}

std::string OpenableAddress(std::u16string_view address) {
  if (SiteEnd(address) == 0 || std::any_of(address.begin(), address.end(), IsControl)) return {};
  const std::string bytes = Utf8FromUtf16(address);
  std::string openable;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool isKept = bytes[i] == '%' ? IsEscape(std::string_view(bytes).substr(i)) : IsKept(bytes[i]);
    if (isKept)
      openable += bytes[i];
    else
      AppendEscape(openable, bytes[i]);
  }
  // The desktop looks for the program by the scheme as it is written.
  const auto scheme = openable.begin() + static_cast<std::ptrdiff_t>(SchemeLength(address));
  std::transform(openable.begin(), scheme, openable.begin(),
                 [](char c) { return static_cast<char>(Lower(static_cast<unsigned char>(c))); });
  return openable;
}

HostPlace HostIn(std::u16string_view address) {
  const std::size_t length = HostLength(SiteOf(address));
  const std::size_t first = SchemeLength(address);
  return length != 0 ? HostPlace{first, first + length} : HostPlace{};
}

}  // namespace quillet
