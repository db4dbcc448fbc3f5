#include "media/video_link.h"

#include <algorithm>
#include <cstddef>

#include "media/ascii_case.h"
#include "media/link_site.h"

namespace quillet {
namespace {

constexpr std::u16string_view kWatch = u"watch?";
constexpr std::u16string_view kShorts = u"shorts/";
constexpr std::u16string_view kParameter = u"v=";

bool IsIdUnit(char16_t c) {
  const char16_t lower = LowerUnit(c);
  return IsDigitUnit(c) || (lower >= u'a' && lower <= u'z') || c == u'-' || c == u'_';
}

// What stands before the first of `ends`.
std::u16string_view Until(std::u16string_view text, std::u16string_view ends) {
  return text.substr(0, std::min(text.find_first_of(ends), text.size()));
}

std::u16string_view CheckedId(std::u16string_view id) {
  return id.size() == kVideoIdLength && std::all_of(id.begin(), id.end(), IsIdUnit) ? id
                                                                                    : std::u16string_view();
}

std::u16string_view IdOfPath(std::u16string_view path) {
  return CheckedId(Until(path, u"/?&#"));
}

std::u16string_view IdOfQuery(std::u16string_view query) {
  query = Until(query, u"#");
  while (!query.empty()) {
    const std::u16string_view parameter = Until(query, u"&");
    if (parameter.starts_with(kParameter)) return CheckedId(parameter.substr(kParameter.size()));
    query.remove_prefix(std::min(parameter.size() + 1, query.size()));
  }
  return {};
}

}  // namespace

std::u16string_view VideoId(std::u16string_view link, const VideoHosts& hosts) {
  const LinkSite site(link);
  const bool isShort = site.Is(hosts.shortHost);
  if (!isShort && !site.Is(hosts.host) && !site.Is(u"www.", hosts.host) && !site.Is(u"m.", hosts.host))
    return {};
  const std::u16string_view path = link.substr(site.PathBegin() + 1);
  if (isShort) return IdOfPath(path);
  if (path.starts_with(kWatch)) return IdOfQuery(path.substr(kWatch.size()));
  if (path.starts_with(kShorts)) return IdOfPath(path.substr(kShorts.size()));
  return {};
}

}  // namespace quillet
