// Looking at the pictures of an article, with the keys and the mouse, in the window over the demo BBS.
#include "app/viewer/picture_viewer.h"

#include "tests/app/picture_article_fixture.h"

namespace quillet {
namespace {

class PictureViewerTest : public PictureArticleTest {
 protected:
  void SetUp() override {
    PictureArticleTest::SetUp();
    files["/a.png"] = PictureFileBytes(large, "PNG");
    files["/e.png"] = PictureFileBytes(DrawnPicture(60, 40), "PNG");
  }
  void ShowAll() {
    Choose(PictureScope::kAllPages);
    ASSERT_TRUE(Shows(1));
  }
  const PictureViewer& Viewer() { return View().Viewer(); }
  PictureViewer& Widget() { return *View().findChild<PictureViewer*>(); }
  void OpenFirst() {
    ShowAll();
    Click(kLink + 2, 3);
    ASSERT_TRUE(Viewer().IsOpen());
    ASSERT_TRUE(Until([&] { return Viewer().Now().stage == PictureStage::kReady; }));
  }
  void Send(QEvent::Type type, const QPointF& at, Qt::MouseButton button = Qt::LeftButton) {
    const bool up = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, View().mapToGlobal(at), button, up ? Qt::MouseButtons() : button, {});
    QCoreApplication::sendEvent(&Widget(), &event);
  }
  void WheelAt(const QPointF& at, int notches) {
    QWheelEvent event(at, View().mapToGlobal(at), {}, {0, notches * 120}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&Widget(), &event);
  }
  PixelSize Size() { return Viewer().Zoom().Place().size; }

  const QImage large = DrawnPicture(3200, 1600);
};

TEST_F(PictureViewerTest, KeysAreItsOwnUntilTheArticleIsBackWhereItWas) {
  const int top = Article().TopRow();
  const unsigned screens = View().ScreenCount();
  OpenFirst();
  EXPECT_TRUE(Viewer().Caption().startsWith(u"1/2　3200 × 1600　"_qs)) << Viewer().Caption().toStdString();
  EXPECT_TRUE(Viewer().Caption().endsWith("https://pictures.example/a.png"));
  EXPECT_TRUE(Widget().hasFocus() && Widget().size() == View().size());
  EXPECT_FALSE(QInputMethod::queryFocusObject(Qt::ImEnabled, {}).toBool());
  const PixelSize fitted = Size();
  Press(Qt::Key_Space, " ");
  EXPECT_EQ(Size(), (PixelSize{3200, 1600}));
  Press(Qt::Key_Plus, "+");
  EXPECT_EQ(Size(), (PixelSize{4000, 2000}));
  Press(Qt::Key_0, "0");
  EXPECT_EQ(Size(), fitted);
  Press(Qt::Key_Right);
  ASSERT_TRUE(Until([&] { return Viewer().Caption().startsWith(u"2/2　60 × 40　"_qs); }));
  const int scale = qRound(Viewer().devicePixelRatioF() * 60);
  EXPECT_EQ(Size().width, scale) << "never larger than it is";
  Press(Qt::Key_PageDown);
  EXPECT_EQ(Viewer().Link(), "https://pictures.example/e.png") << "there is no other one";
  Press(Qt::Key_PageUp);
  EXPECT_EQ(Viewer().Link(), "https://pictures.example/a.png");
  TypeText("jx/1");
  Press(Qt::Key_T, "t", Qt::AltModifier);
  QKeyEvent reconnects(QEvent::ShortcutOverride, Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
  reconnects.ignore();
  QCoreApplication::sendEvent(&Widget(), &reconnects);
  EXPECT_TRUE(reconnects.isAccepted()) << "no menu takes it";
  TypeText("q");
  EXPECT_FALSE(Viewer().IsOpen());
  EXPECT_TRUE(View().hasFocus());
  EXPECT_EQ(Article().TopRow(), top);
  EXPECT_EQ(View().ScreenCount(), screens);
  EXPECT_TRUE(doc->GetConnection().IsConnected());
  Press(Qt::Key_Down);
  EXPECT_EQ(Article().TargetRow(), top + 1) << "keys are the article's again";
}

TEST_F(PictureViewerTest, TheMouseZoomsMovesAndLeaves) {
  ShowAll();
  const QPointF picture = View().Surface().CellRect(kLink + 2, 3).center();
  QMouseEvent hover(QEvent::MouseMove, picture, View().mapToGlobal(picture), Qt::NoButton, {}, {});
  QCoreApplication::sendEvent(&View(), &hover);
  EXPECT_EQ(View().cursor().shape(), Qt::PointingHandCursor);
  OpenFirst();
  const qreal scale = Widget().devicePixelRatioF();
  const QPointF at(200, 250);
  const auto underPointer = [&] {
    const ZoomPlace place = Viewer().Zoom().Place();
    return (at.x() * scale - place.left) / place.size.width;
  };
  const double before = underPointer();
  WheelAt(at, 4);
  EXPECT_NEAR(underPointer(), before, 1e-3);
  EXPECT_GT(Size().width, qRound(View().width() * scale));
  const ZoomPlace from = Viewer().Zoom().Place();
  Send(QEvent::MouseButtonPress, at);
  Send(QEvent::MouseMove, at + QPointF(-60, 0));
  EXPECT_EQ(Widget().cursor().shape(), Qt::ClosedHandCursor);
  Send(QEvent::MouseButtonRelease, at + QPointF(-60, 0));
  EXPECT_NEAR(Viewer().Zoom().Place().left, from.left - 60 * scale, 1);
  WheelAt(at, -40);
  ASSERT_TRUE(Viewer().Zoom().IsFitted());

  Send(QEvent::MouseButtonDblClick, at);
  EXPECT_TRUE(Viewer().Zoom().IsFitted()) << "the second of the two clicks that have opened it";
  ASSERT_TRUE(Until([&] {
    Send(QEvent::MouseButtonDblClick, at);
    return !Viewer().Zoom().IsFitted();
  }));
  EXPECT_EQ(Viewer().Zoom().Factor(), 1);
  Press(Qt::Key_0, "0");
  Send(QEvent::MouseButtonPress, at);
  Send(QEvent::MouseButtonRelease, at);
  EXPECT_TRUE(Viewer().IsOpen()) << "a click on it";
  const QPointF beside(View().width() / 2.0, 3);
  Send(QEvent::MouseButtonPress, beside);
  Send(QEvent::MouseButtonRelease, beside);
  EXPECT_FALSE(Viewer().IsOpen());
}

TEST_F(PictureViewerTest, InItsActualSizeEachPixelIsOneOfTheScreens) {
  OpenFirst();
  Press(Qt::Key_Space, " ");
  ASSERT_TRUE(Until([&] { return Viewer().Now().image.width() == 3200; }));
  const ZoomPlace place = Viewer().Zoom().Place();
  const QImage drawn = Widget().grab().toImage();
  for (const QPoint at : {QPoint(0, 0), QPoint(301, 207), QPoint(drawn.width() - 2, 333)})
    EXPECT_EQ(drawn.pixel(at), large.pixel(at - QPoint(place.left, place.top))) << at.x() << "," << at.y();
}

TEST_F(PictureViewerTest, AFailureSaysWhyAndIsTriedAgain) {
  const QByteArray file = files.take("/e.png");
  // One that fails out of sight is not open.
  Choose(PictureScope::kAllPages);
  Press(Qt::Key_End);
  ASSERT_TRUE(Until([&] { return asked.contains("/e.png") && Article().TopRow() > 0; }));
  ASSERT_TRUE(Until([&] {
    return View().FetchedPictures().Look("https://pictures.example/e.png", {}).stage == PictureStage::kFailed;
  }));
  Press(Qt::Key_Home);
  ASSERT_TRUE(Until([&] { return Article().TopRow() == 0; }));
  OpenFirst();
  Press(Qt::Key_Right);
  ASSERT_TRUE(Until([&] { return Viewer().Now().stage == PictureStage::kFailed; }))
      << Viewer().Caption().toStdString();
  auto* const again = Widget().findChild<QPushButton*>();
  ASSERT_TRUE(again != nullptr && again->isVisible());
  EXPECT_TRUE(Widget().rect().contains(again->geometry()));
  files["/e.png"] = file;
  again->click();
  EXPECT_TRUE(Until([&] { return Viewer().Now().stage == PictureStage::kReady; }));
  EXPECT_FALSE(again->isVisible());
}

TEST_F(PictureViewerTest, ItOutlivesWhatItWasOpenedFromAndGoesInDisguise) {
  OpenFirst();
  Press(Qt::Key_W, {}, Qt::AltModifier);
  EXPECT_FALSE(Viewer().IsOpen()) << "the window's own key";
  EXPECT_TRUE(Fields().work);
  Press(Qt::Key_W, {}, Qt::AltModifier);
  ASSERT_TRUE(Shows(1));

  OpenFirst();
  Open(talkative);
  EXPECT_TRUE(Viewer().IsOpen()) << "another article has come";
  EXPECT_EQ(Viewer().Now().stage, PictureStage::kReady);
  demo.reset();
  ASSERT_TRUE(Until([&] { return !doc->GetConnection().IsConnected(); }));
  Press(Qt::Key_Right);
  frame->resize(320, 60);
  View().SetLayoutMode(LayoutMode::kNarrow);
  EXPECT_FALSE(Widget().grab().isNull());
  Escape();
  EXPECT_FALSE(Viewer().IsOpen());
  EXPECT_TRUE(View().Panel().IsActive());
}

}  // namespace
}  // namespace quillet
