// A window over the demo BBS with an article open that has links to pictures, which a web server of the
// test's own gives.
#pragma once

#include <fstream>

#include <QMap>

#include "tests/app/demo_article_fixture.h"
#include "tests/support/drawn_pictures.h"
#include "tests/support/picture_server.h"

namespace quillet {

inline constexpr int kLink = 5;  // the row of the first link, and its line
inline constexpr int kTextLines = 60;

class PictureArticleTest : public DemoArticleTest {
 protected:
  void SetUp() override {
    QImage red(200, 100, QImage::Format_RGB32);
    red.fill(Qt::red);
    for (const char* const path : {"/a.png", "/e.png", "/t.png"})
      files[path] = PictureFileBytes(red, "PNG");
    DemoArticleTest::SetUp();
    View().FetchedPictures().SetLoopbackHosts({{"pictures.example", server.Port()}});
    doc->GetSettings().Store().Names().Set(u"troll", {});
    doc->GetSettings().Set({{&Settings::contentPic, PictureSize::kNormal},
                            {&Settings::pushPic, PictureSize::kThumbnail},
                            {&Settings::noScrollAnimation, true}});
    Open(shortest);
    ASSERT_TRUE(Until([&] { return Lines().IsComplete(); }));
    lines = Article().LineCount();
    ASSERT_EQ(Row(kLink).substr(0, 30), "https://pictures.example/a.png");
  }
  std::filesystem::path Content() override {
    const std::filesystem::path content = home.Path() / "content";
    std::filesystem::copy(QUILLET_SOURCE_DIR "/demo/content", content,
                          std::filesystem::copy_options::recursive);
    std::ofstream article(content / "boards" / "Cats" / "010.txt", std::ios::binary);
    article << "Author: chaircat (椅子是牠的)\nTitle: 圖\nDate: 2026-11-14 22:15:00\nFrom: 203.0.113.9\n"
               "Mark: m\n\nhttps://pictures.example/a.png\n";
    for (int line = 0; line < kTextLines; ++line)
      article << "line " << line << "\n";
    article << "----- pushes\n推|newbie77|https://pictures.example/e.png|203.0.113.9|11/15 00:28\n"
               "推|troll|https://pictures.example/t.png|203.0.113.9|11/15 00:29\n";
    return content;
  }

  void Choose(PictureScope scope) { doc->GetSettings().Set(&Settings::showPicMode, scope); }
  const std::vector<FramePicture>& Shown() { return View().Frame().pictures; }
  bool Shows(std::size_t count) {
    return Until([&] {
      return Shown().size() == count && std::all_of(Shown().begin(), Shown().end(), [](const auto& picture) {
               return !picture.image.isNull();
             });
    });
  }
  void Click(int row, int col, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QPointF at = View().Surface().CellRect(row, col).center();
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      const bool down = type == QEvent::MouseButtonPress;
      QMouseEvent event(type, at, View().mapToGlobal(at), Qt::LeftButton,
                        down ? Qt::MouseButtons(Qt::LeftButton) : Qt::MouseButtons(), modifiers);
      QCoreApplication::sendEvent(&View(), &event);
    }
  }
  QRgb PixelIn(const FramePicture& picture) {
    const Layout& layout = View().Surface().CurrentLayout();
    return View().Surface().Picture().pixel(layout.originX + 5, RowTop(layout, picture.firstRow) + 10);
  }

  QMap<QByteArray, QByteArray> files;
  QList<QByteArray> asked;
  PictureServer server{[this](QTcpSocket& client, const QByteArray& path) {
    asked.push_back(path);
    const QByteArray file = files.value(path);
    PictureServer::Answer(client, file.isEmpty() ? "404 Not Found" : "200 OK", "Content-Type: image/png\r\n",
                          file);
  }};
  int lines = 0;
};

}  // namespace quillet
