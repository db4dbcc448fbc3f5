#include "media/picture_link.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "media/ascii_case.h"
#include "media/link_site.h"
#include "media/video_link.h"

namespace quillet {
namespace {

constexpr std::array<std::u16string_view, 5> kPictureExtensions = {u"jpg", u"jpeg", u"bmp", u"png", u"gif"};
// A short film, which has a still picture under the name without its last letter.
constexpr std::u16string_view kFilmExtension = u"gifv";
constexpr std::size_t kLongestExtension = 9;

// In front of a host: its pictures themselves; its pages for telephones.
constexpr std::u16string_view kDirect = u"i.";
constexpr std::u16string_view kMobile = u"m.";
constexpr std::size_t kBehindSecureScheme = std::u16string_view(u"https://").size();

constexpr std::u16string_view kPhotoPath = u"/p/";

// In lower case; empty where the link's last part has none.
std::u16string ExtensionOf(std::u16string_view link) {
  const std::size_t slash = link.rfind(u'/');
  const std::size_t dot = link.rfind(u'.');
  if (slash == link.npos || dot == link.npos || dot < slash) return {};
  return LoweredUnits(link.substr(dot + 1, kLongestExtension));
}

bool IsPictureFile(std::u16string_view link, std::u16string_view extension) {
  return std::find(kPictureExtensions.begin(), kPictureExtensions.end(), extension) !=
             kPictureExtensions.end() ||
         link.find(u".jpg&") != link.npos || link.find(u".jpg?") != link.npos;
}

bool IsShortened(const LinkSite& site, const MediaHosts& hosts) {
  return std::any_of(hosts.shorteners.begin(), hosts.shorteners.end(),
                     [&](std::u16string_view host) { return site.Is(host); });
}

// The last part follows the host itself.
bool HasOnePart(std::u16string_view link, const LinkSite& site) {
  return link.rfind(u'/') == site.PathBegin();
}

// Of a link without an extension.
LinkMedia ClassifyByService(std::u16string& link, const MediaHosts& hosts) {
  const LinkSite site(link);
  if (IsShortened(site, hosts)) return LinkMedia::kShortened;
  const bool isPhoto =
      site.Is(hosts.photoShort) && std::u16string_view(link).substr(site.PathBegin()).starts_with(kPhotoPath);
  if (isPhoto || site.Is(hosts.pageShort)) return LinkMedia::kPicturePage;
  if (site.Is(hosts.imageShortener)) {
    link += u"@.jpg";
    return LinkMedia::kPicture;
  }
  if (site.Is(hosts.images) || site.Is(kDirect, hosts.images) || site.Is(kMobile, hosts.images)) {
    if (!HasOnePart(link, site)) return LinkMedia::kPicturePage;
    link += u".jpg";
    return LinkMedia::kPicture;
  }
  return site.Is(hosts.blogImages) ? LinkMedia::kPicture : LinkMedia::kNone;
}

}  // namespace

LinkMedia ClassifyLink(std::u16string& link, const MediaHosts& hosts) {
  const std::u16string extension = ExtensionOf(link);
  if (IsPictureFile(link, extension)) {
    const LinkSite site(link);
    if (site.IsSecure() && site.Is(hosts.pagedImages)) link.insert(kBehindSecureScheme, kDirect);
    return LinkMedia::kPicture;
  }
  if (extension == kFilmExtension) {
    link.pop_back();
    return LinkMedia::kPicture;
  }
  const LinkMedia byService = extension.empty() ? ClassifyByService(link, hosts) : LinkMedia::kNone;
  if (byService != LinkMedia::kNone) return byService;
  return VideoId(link, hosts.video).empty() ? LinkMedia::kNone : LinkMedia::kVideo;
}

}  // namespace quillet
