#include "input/text/web_commands.h"

#include <cstddef>

#include "platform/utf8.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

struct Place {
  std::string_view host;  // its name among the endpoints
  std::u16string_view path;
};

constexpr Place kFirstEngine{"search/engine_1", u"/search?q="};
constexpr Place kSecondEngine{"search/engine_2", u"/?q="};
constexpr Place kUserPages{"web/user_pages", u"/user/"};
constexpr Place kShortener{"shortener/host", u"/api-create.php?url="};

// What stands in front of the text. Empty for a host that is not configured, or by something that is no text.
std::u16string Beginning(const Place& place, const Endpoints& endpoints) {
  const std::u16string host = Utf16FromUtf8(endpoints.Value(place.host)).value_or(u"");
  return host.empty() ? host : std::u16string(u"https://").append(host).append(place.path);
}

std::u16string_view EscapeOf(char16_t unit) {
  switch (unit) {
    case u'&':
      return u"%26";
    case u'#':
      return u"%23";
    case u'+':
      return u"%2B";
    default:
      return {};
  }
}

// No address holds control characters. The end of a line, which is two of them, becomes one blank.
std::u16string OnOneLine(std::u16string_view text) {
  std::u16string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.substr(i, 2) == u"\r\n") continue;
    const bool isControl = text[i] < 0x20 || (text[i] >= 0x7F && text[i] < 0xA0);
    line += isControl ? u' ' : text[i];
  }
  return line;
}

// The longest beginning of the text that leaves its escaped form within `room`, cut through no surrogate
// pair.
std::u16string EscapedWithin(std::u16string_view text, std::size_t room) {
  std::size_t size = 0;
  std::size_t count = 0;
  for (; count < text.size(); ++count) {
    const std::u16string_view escape = EscapeOf(text[count]);
    size += escape.empty() ? 1 : escape.size();
    if (size > room) break;
  }
  const bool inPair = count > 0 && count < text.size() && (text[count - 1] & 0xFC00) == 0xD800;
  return EscapeQuery(text.substr(0, inPair ? count - 1 : count));
}

std::u16string Compose(const Place& place, std::u16string_view text, const Endpoints& endpoints) {
  std::u16string address = Beginning(place, endpoints);
  if (text.empty() || address.empty() || address.size() > kLongestWebAddress) return {};
  return address.append(EscapedWithin(text, kLongestWebAddress - address.size()));
}

}  // namespace

std::u16string EscapeQuery(std::u16string_view text) {
  std::u16string escaped;
  escaped.reserve(text.size());
  for (const char16_t unit : text) {
    const std::u16string_view escape = EscapeOf(unit);
    if (escape.empty())
      escaped += unit;
    else
      escaped += escape;
  }
  return escaped;
}

std::u16string SearchAddress(SearchEngine engine, std::u16string_view text, const Endpoints& endpoints) {
  return Compose(engine == SearchEngine::kFirst ? kFirstEngine : kSecondEngine, OnOneLine(text), endpoints);
}

std::u16string UserPageAddress(std::u16string_view id, const Endpoints& endpoints) {
  return Compose(kUserPages, id, endpoints);
}

std::u16string ShortenerRequest(std::u16string_view text, const Endpoints& endpoints) {
  std::u16string request = Beginning(kShortener, endpoints);
  return request.empty() ? request : request.append(text);
}

}  // namespace quillet
