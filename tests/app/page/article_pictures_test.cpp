// Pictures below the lines of their links, in the window over the demo BBS, from a web server of the test's
// own.
#include "tests/app/picture_article_fixture.h"

namespace quillet {
namespace {

using ArticlePicturesTest = PictureArticleTest;

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
  ASSERT_TRUE(Shows(1)) << "the black-listed one's stays closed";
  EXPECT_EQ(Article().TopRow(), Last());
  EXPECT_TRUE(Row(22).find("t.png") != std::string::npos) << "the last line is the last row still";
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
  ASSERT_TRUE(Until([&] { return Article().TopRow() > 20; }));
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
  Escape();
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
  Press(Qt::Key_Home);  // the BBS stands at the end, which has been read
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
