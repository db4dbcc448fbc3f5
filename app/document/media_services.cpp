#include "app/document/media_services.h"

#include "platform/utf8.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

// Empty where it would be no address, or the same one for all videos.
std::u16string PatternOf(std::string_view value) {
  if (value.find("{id}") == value.npos) return {};
  const std::u16string pattern = Utf16FromUtf8(value).value_or(std::u16string());
  return HostIn(pattern).IsEmpty() ? std::u16string() : pattern;
}

}  // namespace

MediaHosts MediaHostsOf(const Endpoints& endpoints) {
  return {
      .shorteners = {endpoints.HostName("pictures/shortener_1"), endpoints.HostName("pictures/shortener_2"),
                     endpoints.HostName("pictures/shortener_3"), endpoints.HostName("pictures/shortener_4")},
      .photoShort = endpoints.HostName("pictures/photo_short"),
      .pageShort = endpoints.HostName("pictures/page_short"),
      .imageShortener = endpoints.HostName("pictures/image_shortener"),
      .images = endpoints.HostName("pictures/images"),
      .pagedImages = endpoints.HostName("pictures/paged_images"),
      .blogImages = endpoints.HostName("pictures/blog_images"),
      .video = {.host = endpoints.HostName("video/host"),
                .shortHost = endpoints.HostName("video/short_host"),
                .thumbnail = PatternOf(endpoints.Value("video/thumbnail")),
                .info = PatternOf(endpoints.Value("video/info"))}};
}

}  // namespace quillet
