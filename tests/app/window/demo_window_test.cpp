// The whole house in one process: the demo BBS over a real socket, the session, the window.
#include <QTemporaryDir>

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

}  // namespace
}  // namespace quillet
