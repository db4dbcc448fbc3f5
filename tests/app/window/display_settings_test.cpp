// Every setting of the picture acts at once: the picture is another one before the next event, and the same
// one again when the setting is set back.
#include "tests/app/demo_article_fixture.h"

namespace quillet {
namespace {

struct Switch {
  template <typename T>
  Switch(T Settings::*field, const std::type_identity_t<T>& otherValue,
         const std::type_identity_t<T>& usualValue)
      : other(field, otherValue), usual(field, usualValue) {}

  SettingChange other, usual;
};

class DisplaySettingsTest : public DemoArticleTest {
 protected:
  QImage Picture() { return View().Surface().Picture().copy(); }
  QRgb Pixel(QPoint at) { return View().Surface().Picture().pixel(at) & 0xFFFFFF; }

  void ExpectEachToAct(const std::vector<Switch>& switches) {
    const QImage usual = Picture();
    for (const Switch& one : switches) {
      SCOPED_TRACE(QStringView(one.other.row->key).toString().toStdString());
      doc->GetSettings().Set({one.other});
      EXPECT_NE(Picture(), usual);
      doc->GetSettings().Set({one.usual});
      EXPECT_EQ(Picture(), usual);
    }
  }
  void GoToList() {
    Press(Qt::Key_Left);
    ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_ARTICLE_LIST_CURSOR) != 0; }));
  }
  std::u16string PictureFile(QColor colour) {
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(colour);
    const QString file = QString::fromStdString((home.Path() / "ground.png").string());
    EXPECT_TRUE(image.save(file));
    return file.toStdU16String();
  }
};

TEST_F(DisplaySettingsTest, ThePictureOfAnArticleFollowsEachSwitch) {
  OpenWhole(talkative);
  View().Commands().Run(Command::kFirstPush);
  ASSERT_TRUE(
      Until([&] { return Article().TopLine() > 0 && Article().TopLine() == Article().TargetLine(); }));
  ExpectEachToAct({{&Settings::lineSpacing, 3, 0},
                   {&Settings::pushLineSpacing, 3, 0},
                   {&Settings::smoothFont, false, true},
                   {&Settings::darkColor, true, false},
                   {&Settings::work, true, false},
                   {&Settings::grayBackgroundPush, false, true},
                   {&Settings::lighterPushLine, false, true},
                   {&Settings::mergePush, false, true},
                   {&Settings::hideTopLeftIcons, true, false},
                   {&Settings::webArticle, false, true}});
  // A face that is not installed changes nothing, and leaves no boxes.
  const QImage usual = Picture();
  doc->GetSettings().Set(&Settings::font, u"No Such Face At All");
  EXPECT_EQ(Picture(), usual);
}

TEST_F(DisplaySettingsTest, ListsFollowTheirs) {
  OpenWhole(talkative);
  GoToList();
  ExpectEachToAct({{&Settings::showHighlight, false, true}, {&Settings::darkerReadArticle, false, true}});

  const std::u16string author = PageFacts::ParseListAuthor(View().Screen(), View().Screen().cursorRow);
  doc->GetSettings().Store().Names().Set(author, {});
  ExpectEachToAct({{&Settings::blackTitle, TitleTreatment::kMaskId, TitleTreatment::kNone}});
  doc->GetSettings().Set(&Settings::blackTitle, TitleTreatment::kMaskId);
  ExpectEachToAct({{&Settings::hideCharShowStar, false, true}});
}

TEST_F(DisplaySettingsTest, DarkBlueIsLighterWhereTheUserWantsIt) {
  OpenScript();
  script->Deliver("\x1B[2J\x1B[34mdark blue words");
  ASSERT_TRUE(Until([&] { return View().Screen().TextAt(0, 0) == 'd'; }));
  ExpectEachToAct({{&Settings::lighterDarkBlue, false, true}});
}

TEST_F(DisplaySettingsTest, DisguiseLooksLikeATextEditorAndGoesAgain) {
  OpenWhole(talkative);
  const QString title = frame->windowTitle();
  const Layout usual = View().Surface().CurrentLayout();
  doc->GetSettings().Set(&Settings::work, true);
  EXPECT_EQ(frame->windowTitle(), u"新文字文件.txt - 記事本"_qs);
  EXPECT_FALSE(frame->windowIcon().isNull());
  EXPECT_EQ(View().Surface().CurrentLayout().originX, 0);
  EXPECT_EQ(View().Surface().CurrentLayout().originY, 0);
  EXPECT_TRUE(ScrollBar().isVisible());
  const QRectF blank = View().Surface().CellRect(4, 40);
  EXPECT_EQ(Pixel((blank.center() * View().Surface().Scale()).toPoint()), 0xFFFFFFu);
  GoToList();
  EXPECT_TRUE(ScrollBar().isVisible()) << "a text editor always has one";
  EXPECT_FALSE(ScrollBar().isEnabled());
  EXPECT_EQ(ScrollBar().styleSheet(), "");
  doc->GetSettings().Set(&Settings::work, false);
  EXPECT_FALSE(ScrollBar().isVisible());
  EXPECT_EQ(frame->windowTitle(), title);
  EXPECT_EQ(View().Surface().CurrentLayout(), usual);
}

TEST_F(DisplaySettingsTest, ABackgroundPictureShinesThroughAndItsStyleAndOpacityActAtOnce) {
  OpenWhole(talkative);
  const QRgb ground = Pixel({2, 2});
  doc->GetSettings().Set(&Settings::backPicOpacity, 100);
  doc->GetSettings().Set(&Settings::backgroundPicture, PictureFile(Qt::red));
  ASSERT_TRUE(Until([&] { return Pixel({2, 2}) != ground; }));
  EXPECT_EQ(Pixel({2, 2}), 0xFF0000u);
  doc->GetSettings().Set(&Settings::backPicOpacity, 0);
  EXPECT_EQ(Pixel({2, 2}), ground);
  doc->GetSettings().Set(&Settings::backPicOpacity, 100);
  doc->GetSettings().Set(&Settings::backgroundPictureStyle, BackdropStyle::kNone);
  EXPECT_EQ(Pixel({2, 2}), ground);
  doc->GetSettings().Set(&Settings::backgroundPictureStyle, BackdropStyle::kMovingCrop);
  doc->GetSettings().Set(&Settings::work, true);
  EXPECT_EQ(Pixel({2, View().height() - 2}), 0xFFFFFFu) << "not in disguise";
  doc->GetSettings().Set(&Settings::work, false);
  doc->GetSettings().Set(&Settings::backgroundPicture, u"/no/such/picture.png");
  EXPECT_TRUE(Until([&] { return PanelSays(u"背景圖片無法顯示"_qs); }));
  EXPECT_EQ(Pixel({2, 2}), ground);
}

}  // namespace
}  // namespace quillet
