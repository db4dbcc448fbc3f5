#include "app/document/media_services.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(MediaServicesTest, TheShippedFileNamesEachSiteByItsPlainName) {
  Endpoints endpoints;
  ASSERT_TRUE(LoadEndpoints(QUILLET_SOURCE_DIR "/Data/endpoints.ini", endpoints));
  const auto& [shorteners, photo, page, shortener, images, paged, blog, video] = MediaHostsOf(endpoints);
  for (const std::u16string& host : {shorteners[0], shorteners[1], shorteners[2], shorteners[3], photo, page,
                                     shortener, images, paged, blog, video.host, video.shortHost})
    EXPECT_TRUE(host.find(u'.') != host.npos && !host.starts_with(u"www."));
}

}  // namespace
}  // namespace quillet
