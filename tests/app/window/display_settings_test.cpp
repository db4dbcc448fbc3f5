// Every setting of the picture acts at once: the picture is another one before the next event, and the same
// one again when the setting is set back.
#include "tests/app/demo_article_fixture.h"

namespace quillet {
namespace {

struct Switch {
  std::u16string key;
  std::u16string other;
  std::u16string usual;
};

class DisplaySettingsTest : public DemoArticleTest {
 protected:
  QImage Picture() { return View().Surface().Picture().copy(); }
  QRgb Pixel(QPoint at) { return View().Surface().Picture().pixel(at) & 0xFFFFFF; }
  void Set(const std::u16string& key, const std::u16string& value) { doc->Change(u"Basic", key, value); }

  void ExpectEachToAct(const std::vector<Switch>& switches) {
    const QImage usual = Picture();
    for (const Switch& one : switches) {
      SCOPED_TRACE(QString::fromStdU16String(one.key).toStdString());
      Set(one.key, one.other);
      EXPECT_NE(Picture(), usual);
      Set(one.key, one.usual);
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
  ExpectEachToAct({{u"LineSpacing", u"3", u"0"},
                   {u"PushLineSpacing", u"3", u"0"},
                   {u"SmoothFont", u"0", u"1"},
                   {u"DarkColor", u"1", u"0"},
                   {u"Work", u"1", u"0"},
                   {u"GrayBackgroundPush", u"0", u"1"},
                   {u"LighterPushLine", u"0", u"1"},
                   {u"MergePush", u"0", u"1"},
                   {u"HideTopLeftIcons", u"1", u"0"},
                   {u"WebArticle", u"0", u"1"}});
  // A face that is not installed changes nothing, and leaves no boxes.
  const QImage usual = Picture();
  Set(u"Font", u"No Such Face At All");
  EXPECT_EQ(Picture(), usual);
}

TEST_F(DisplaySettingsTest, ListsFollowTheirs) {
  OpenWhole(talkative);
  GoToList();
  ExpectEachToAct({{u"ShowHighlight", u"0", u"1"}, {u"DarkerReadArticle", u"0", u"1"}});

  const std::u16string author = PageFacts::ParseListAuthor(View().Screen(), View().Screen().cursorRow);
  doc->Store().Names().Set(author, {});
  ExpectEachToAct({{u"BlackTitle", u"2", u"0"}});
  Set(u"BlackTitle", u"2");
  ExpectEachToAct({{u"HideCharShowStar", u"0", u"1"}});
}

TEST_F(DisplaySettingsTest, DarkBlueIsLighterWhereTheUserWantsIt) {
  OpenScript();
  script->Deliver("\x1B[2J\x1B[34mdark blue words");
  ASSERT_TRUE(Until([&] { return View().Screen().TextAt(0, 0) == 'd'; }));
  ExpectEachToAct({{u"LighterDarkBlue", u"0", u"1"}});
}

TEST_F(DisplaySettingsTest, DisguiseLooksLikeATextEditorAndGoesAgain) {
  OpenWhole(talkative);
  const QString title = frame->windowTitle();
  const Layout usual = View().Surface().CurrentLayout();
  Set(u"Work", u"1");
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
  Set(u"Work", u"0");
  EXPECT_FALSE(ScrollBar().isVisible());
  EXPECT_EQ(frame->windowTitle(), title);
  EXPECT_EQ(View().Surface().CurrentLayout(), usual);
}

TEST_F(DisplaySettingsTest, ABackgroundPictureShinesThroughAndItsStyleAndOpacityActAtOnce) {
  OpenWhole(talkative);
  const QRgb ground = Pixel({2, 2});
  Set(u"BackPicOpacity", u"100");
  Set(u"BackgroundPicture", PictureFile(Qt::red));
  ASSERT_TRUE(Until([&] { return Pixel({2, 2}) != ground; }));
  EXPECT_EQ(Pixel({2, 2}), 0xFF0000u);
  Set(u"BackPicOpacity", u"0");
  EXPECT_EQ(Pixel({2, 2}), ground);
  Set(u"BackPicOpacity", u"100");
  Set(u"BackgroundPictureStyle", u"0");
  EXPECT_EQ(Pixel({2, 2}), ground);
  Set(u"BackgroundPictureStyle", u"3");
  Set(u"Work", u"1");
  EXPECT_EQ(Pixel({2, View().height() - 2}), 0xFFFFFFu) << "not in disguise";
  Set(u"Work", u"0");
  Set(u"BackgroundPicture", u"/no/such/picture.png");
  EXPECT_TRUE(Until([&] { return PanelSays(u"背景圖片無法顯示"_qs); }));
  EXPECT_EQ(Pixel({2, 2}), ground);
}

}  // namespace
}  // namespace quillet
