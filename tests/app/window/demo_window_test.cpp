// The whole house in one process: the demo BBS over a real socket, the session, the window.
#include <gmock/gmock.h>

#include <QTemporaryDir>

#include "app/window/demo_host.h"
#include "demo/demo_server.h"
#include "input/text/screen_text.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

using DemoWindowTest = WindowTest;

TEST_F(DemoWindowTest, TheTourFindsEveryPageAndSavesItsPicture) {
  DemoServer demo(DemoOptions{.contentFolder = QUILLET_SOURCE_DIR "/demo/content",
                              .port = 0,
                              .writes = DemoOptions::Writes::kAsBbs,
                              .seed = 7,
                              .log = {}});
  ASSERT_EQ(demo.Error(), "");
  doc->GetConnection().Open(
      {.address = QString::fromStdString(demo.Address()), .name = {}, .makeTransport = {}});
  const QTemporaryDir folder;
  const TourResult result =
      WalkTour(*frame, {.folder = folder.filePath("new/pictures"), .only = {}, .prefix = {}});
  ASSERT_TRUE(result.ok) << result.message.toStdString();
  EXPECT_GE(result.pictures.size(), 8);
  for (const QString& file : result.pictures)
    EXPECT_FALSE(QImage(file).isNull()) << file.toStdString();
  doc->GetConnection().Disconnect();
}

TEST_F(DemoWindowTest, EveryServiceThatItsArticlesLinkToIsServed) {
  DemoHost host(QUILLET_SOURCE_DIR "/demo/content", {});
  const Site site = std::get<Site>(host.SiteBy(TransportKind::kTelnet));
  ASSERT_TRUE(site.webSites);
  EXPECT_NE(site.webSites->port, 0);
  const MediaHosts& services = site.webSites->services;
  for (const std::u16string& service :
       {services.shorteners[0], services.shorteners[1], services.photoShort, services.pageShort,
        services.imageShortener, services.images, services.pagedImages, services.blogImages,
        services.video.host, services.video.shortHost})
    EXPECT_THAT(site.webSites->hosts, testing::Contains(QString::fromStdU16String(service)));
}

}  // namespace
}  // namespace quillet
