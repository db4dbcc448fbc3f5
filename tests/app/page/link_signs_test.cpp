#include <filesystem>
#include <fstream>

#include "tests/app/demo_article_fixture.h"

namespace quillet {
namespace {

constexpr const char* kArticle =
    "Author: chaircat (椅子是牠的)\nTitle: 圖\nDate: 2026-11-14 22:15:00\nFrom: 203.0.113.9\nMark: m\n\n"
    "https://pictures.example/a.jpg\n"
    "https://www.video.example/watch?v=abc-EFG_123    https://one.example/a  .\n"
    "https://pictures.example/b.gif 貓 https://main.example/c/d\n"
    "----- pushes\n推|newbie77|https://pictures.example/e.png|203.0.113.9|11/15 00:28\n";

class LinkSignsTest : public DemoArticleTest {
 protected:
  LinkSignsTest() {
    endpoints.values = {{"video/host", "video.example"},
                        {"pictures/shortener_1", "one.example"},
                        {"pictures/images", "main.example"}};
  }
  std::filesystem::path Content() override {
    const std::filesystem::path content = home.Path() / "content";
    std::filesystem::copy(QUILLET_SOURCE_DIR "/demo/content", content,
                          std::filesystem::copy_options::recursive);
    std::ofstream(content / "boards" / "Cats" / "010.txt", std::ios::binary) << kArticle;
    return content;
  }
  // Where signs begin in the picture: "v" for a video, "p" for a picture.
  std::string Signs() {
    std::string signs;
    for (std::size_t row = 0; row < kRows; ++row)
      for (std::size_t col = 0; col < kCols; ++col)
        if (const std::uint8_t sign = View().Frame().page[row].cells[col].fore; IsSign(sign))
          signs += std::to_string(row) + ":" + std::to_string(col++) + (sign == kVideoSign ? "v " : "p ");
    return signs;
  }
  QImage Cell(int row, int col) {
    const QRectF cell = View().Surface().CellRect(row, col);
    const qreal scale = View().Surface().Scale();
    return View().Surface().Picture().copy(QRectF(cell.topLeft() * scale, cell.size() * scale).toRect());
  }
  QString ToldAt(int row, int col) {
    const QPointF at = View().Surface().CellRect(row, col).center();
    QMouseEvent move(QEvent::MouseMove, at, View().mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&View(), &move);
    const auto& link = View().Links().Current();
    return link ? LinkHover::DescriptionOf(*link) : QString();
  }
};

TEST_F(LinkSignsTest, PicturesAndVideosHaveSignsThatAreNoText) {
  constexpr int kFirst = 5, kPush = 12;
  for (const bool isLocal : {true, false}) {
    doc->GetSettings().Set(&Settings::webArticle, isLocal);
    ASSERT_TRUE(doc->GetAutomations().JumpTo(shortest));
    ASSERT_TRUE(Until([&] {
      return IsIdle() && Article().IsShown() == isLocal && Row(kPush).find("e.png") != std::string::npos;
    })) << ScreenAsUtf8();
    EXPECT_EQ(Signs(), "5:31p 6:46v 7:59p 12:44p ");
    EXPECT_NE(Cell(kFirst, 31), Cell(kFirst, 41));
    EXPECT_EQ(Cell(kFirst, 33), Cell(kFirst, 41));
    EXPECT_EQ(ToldAt(kFirst, 3), u"圖片：https://pictures.example/a.jpg"_qs);
    EXPECT_EQ(ToldAt(kFirst + 1, 3), u"影片：https://www.video.example/watch?v=abc-EFG_123"_qs);
    EXPECT_EQ(ToldAt(kFirst + 1, 50), u"短網址，可能是圖片：https://one.example/a"_qs);
    View().Commands().Run(Command::kSelectAll);
    EXPECT_NE(View().Selected().Text().find(u"\r\nhttps://pictures.example/a.jpg\r\n"), std::u16string::npos);
  }
}

}  // namespace
}  // namespace quillet
