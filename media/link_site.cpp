#include "media/link_site.h"

#include "media/ascii_case.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

constexpr std::size_t kSecureSchemeLength = std::u16string_view(u"https://").size();

}  // namespace

LinkSite::LinkSite(std::u16string_view link) {
  const HostPlace place = HostIn(link);
  if (place.IsEmpty() || !link.substr(place.last).starts_with(u'/')) return;
  host_ = LoweredUnits(link.substr(place.first, place.last - place.first));
  path_ = place.last;
}

bool LinkSite::Is(std::u16string_view prefix, std::u16string_view host) const {
  const std::u16string_view own = host_;
  return !host.empty() && own.starts_with(prefix) && own.substr(prefix.size()) == host;
}

bool LinkSite::IsSecure() const {
  return !host_.empty() && path_ - host_.size() == kSecureSchemeLength;
}

}  // namespace quillet
