#include "app/viewer/video_dialog.h"

#include <gtest/gtest.h>

#include <QDialogButtonBox>

#include "tests/support/drawn_pictures.h"
#include "tests/support/event_wait.h"
#include "tests/support/picture_server.h"

namespace quillet {
namespace {

TEST(VideoDialogTest, ItShowsWhatIsKnownAndLeadsToTheBrowserOnly) {
  PictureServer server([](QTcpSocket& client, const QByteArray& path) {
    const bool isFacts = path.startsWith("/info");
    PictureServer::Answer(client, "200 OK", isFacts ? "Content-Type: application/json\r\n" : "",
                          isFacts ? R"({"title":"<b>Cats</b>","duration":3725})"
                                  : PictureFileBytes(DrawnPicture(320, 180), "PNG"));
  });
  PictureStoreOptions options;
  options.hosts.video = {.host = u"video.example",
                         .shortHost = u"vid.example",
                         .thumbnail = u"https://pics.example/thumb/{id}.png",
                         .info = u"https://pics.example/info/{id}"};
  options.loopbackHosts = {{"pics.example", server.Port()}};
  PictureStore store(options);
  int opened = 0;
  VideoDlg dialog(store, "https://vid.example/abc-EFG_123", [&] { ++opened; });
  dialog.show();
  const auto says = [&](const QString& words) {
    const auto labels = dialog.findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
      return label->isVisible() && label->textFormat() == Qt::PlainText && label->text().contains(words);
    });
  };
  const auto hasThumbnail = [&] {
    const auto labels = dialog.findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(),
                       [](const QLabel* label) { return !label->pixmap().isNull(); });
  };
  EXPECT_TRUE(says("https://vid.example/abc-EFG_123"));
  EXPECT_TRUE(WaitWithEvents(hasThumbnail));
  EXPECT_TRUE(WaitWithEvents([&] { return says("<b>Cats</b>") && says("1:02:05"); }))
      << "and none of it is markup";
  dialog.findChild<QDialogButtonBox*>()->buttons().first()->click();
  EXPECT_EQ(opened, 1);
  EXPECT_FALSE(dialog.isVisible());
}

}  // namespace
}  // namespace quillet
