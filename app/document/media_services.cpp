#include "app/document/media_services.h"

namespace quillet {

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
                .shortHost = endpoints.HostName("video/short_host")}};
}

}  // namespace quillet
