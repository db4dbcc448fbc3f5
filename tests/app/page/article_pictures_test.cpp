// Pictures below the lines of their links, in the window over the demo BBS, from a web server of the test's
// own.
#include <fstream>

#include <QMap>

#include "tests/app/demo_article_fixture.h"
#include "tests/support/drawn_pictures.h"
#include "tests/support/picture_server.h"

namespace quillet {
namespace {

constexpr int kLink = 5;  // the row of the first link, and its line
constexpr int kTextLines = 60;

class ArticlePicturesTest : public DemoArticleTest {
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

TEST_F(ArticlePicturesTest, APictureTakesRowsOfItsOwnBelowItsLink) {
  Choose(PictureScope::kCurrentPage);
  ASSERT_TRUE(Shows(1)) << Row(kLink + 1);
  const FramePicture picture = Shown()[0];
  const qreal scale = View().Surface().Scale();
  EXPECT_EQ(picture.size, (PixelSize{qRound(200 * scale), qRound(100 * scale)}));
  EXPECT_EQ(picture.firstRow, kLink + 1);
  EXPECT_EQ(Row(static_cast<std::size_t>(kLink + 1 + picture.rows)).substr(0, 6), "line 0");
  EXPECT_EQ(PixelIn(picture), qRgb(255, 0, 0));
  EXPECT_EQ(Article().LineCount(), lines);
  EXPECT_EQ(Article().Rows().Count(), lines + picture.rows);
  View().Commands().Run(Command::kSelectAll);
  EXPECT_NE(View().Selected().Text().find(u"a.png\r\nline 0\r\n"), std::u16string::npos);
  const int lastLine = kLinesShown - picture.rows;
  EXPECT_NE(Row(kBottomRow).find(std::to_string(lastLine) + " / " + std::to_string(lines)), std::string::npos)
      << Row(kBottomRow);
  Press(Qt::Key_End);
  EXPECT_TRUE(AtRest(Last()));
  EXPECT_TRUE(Row(22).find("t.png") != std::string::npos) << "the last line is the last row still";
  ASSERT_TRUE(Shows(1)) << "and the black-listed one's stays closed";
  EXPECT_FALSE(asked.contains("/t.png"));

  doc->GetSettings().Set(&Settings::work, true);
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Article().Rows().Count(), lines);
}

TEST_F(ArticlePicturesTest, WhatIsReadStaysWhilePicturesComeAboveIt) {
  const_cast<ArticleView&>(Article()).ScrollTo(20);
  const std::string top = Row(0);
  const std::string bottom = Row(22);
  Choose(PictureScope::kAllPages);
  ASSERT_TRUE(Until([&] { return Article().Rows().Count() > lines + 2; }));
  EXPECT_GT(Article().TopRow(), 20);
  EXPECT_EQ(Row(0), top);
  EXPECT_EQ(Row(22), bottom);
  Choose(PictureScope::kNone);
  EXPECT_EQ(Article().TopRow(), 20);
  EXPECT_EQ(Row(0), top);
}

TEST_F(ArticlePicturesTest, AClickOnTheLinkOpensAndClosesIt) {
  EXPECT_TRUE(asked.isEmpty()) << "nothing that was not asked for";
  Click(kLink, 3);
  ASSERT_TRUE(Shows(1));
  QString clicked;
  QObject::connect(&View().Pictures(), &ArticlePictures::PictureClicked, &View(),
                   [&](const QString& link) { clicked = link; });
  Click(kLink + 2, 3);
  EXPECT_EQ(clicked, "https://pictures.example/a.png");
  EXPECT_EQ(View().cursor().shape(), Qt::PointingHandCursor);
  Click(kLink, 3, Qt::ControlModifier);
  EXPECT_EQ(opener.opened, std::vector<std::u16string>{u"https://pictures.example/a.png"});
  EXPECT_EQ(Shown().size(), 1U);
  View().Commands().Run(Command::kTogglePictures);
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Article().Rows().Count(), lines);
}

TEST_F(ArticlePicturesTest, AFailureSaysWhyAndIsTriedAgainByAClick) {
  const QByteArray file = files.take("/a.png");
  Click(kLink, 3);
  ASSERT_TRUE(Until([&] { return FromBig5(Row(kLink + 1)).find(u"按一下再試") != std::u16string::npos; }));
  files["/a.png"] = file;
  Click(kLink + 1, 4);
  EXPECT_TRUE(Shows(1));
}

TEST_F(ArticlePicturesTest, OnAPageThatIsNoWholeArticleItOpensOverTheScreenUntilTheNextKey) {
  doc->GetSettings().Set(&Settings::webArticle, false);
  ASSERT_TRUE(Until([&] { return !Article().IsShown() && Row(kLink).find("a.png") != std::string::npos; }));
  Click(kLink, 3);
  ASSERT_TRUE(View().PictureOverScreen().IsOpen());
  EXPECT_TRUE(Until([&] { return asked.contains("/a.png"); }));
  const unsigned screens = View().ScreenCount();
  TypeText("q");
  EXPECT_FALSE(View().PictureOverScreen().IsOpen());
  EXPECT_EQ(View().ScreenCount(), screens);
}

}  // namespace
}  // namespace quillet
