#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

class ViewDrawingTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    OpenScript();
    script->Deliver(ToBig5(u"\x1B[1;1H\x1B[44m看板列表 abc\x1B[m\x1B[24;1Hbottom"));
    ASSERT_TRUE(Until([&] { return View().Screen().TextAt(23, 0) == 'b'; }));
  }
};

TEST_F(ViewDrawingTest, TheWindowShowsThePaintersPictureUnchanged) {
  doc->GetSettings().Set(&Settings::hideTopLeftIcons, true);  // the buttons lie over the picture
  frame->resize(1000, 700);
  const QImage shown = View().grab().toImage().convertToFormat(QImage::Format_RGB32);
  EXPECT_EQ(shown, View().Surface().Picture().copy(shown.rect()));
  const QPointF cell = View().Surface().CellRect(0, 0).topLeft() * View().Surface().Scale();
  EXPECT_EQ(QColor(shown.pixel(cell.toPoint())).blue(), 0x80) << "the blue bar is there";
}

TEST_F(ViewDrawingTest, EverySizeKeepsTheWholeGridAndThePictureFollows) {
  CQuillView alone(*doc);
  alone.show();
  for (const QSize size : {QSize(1, 1), QSize(3, 900), QSize(900, 3), QSize(480, 288), QSize(1280, 720),
                           QSize(1281, 719), QSize(3840, 2160)}) {
    alone.resize(size);
    // At a broken scale factor the last pixel is shared with what lies beside; the picture covers it.
    const QSize pixels = alone.grab().toImage().size();
    const QSize spare = alone.Surface().Picture().size() - pixels;
    EXPECT_TRUE(spare.width() >= 0 && spare.width() <= 1 && spare.height() >= 0 && spare.height() <= 1);
    const Layout& layout = alone.Surface().CurrentLayout();
    if (size.width() >= 480 && size.height() >= 288) {
      EXPECT_GE(layout.originX, 0);
      EXPECT_GE(layout.originY, 0);
      EXPECT_LE(layout.originY + 24 * layout.rowHeight, pixels.height());
      EXPECT_LE(layout.originX + 80 * layout.halfCell, pixels.width());
    }
  }
}

TEST_F(ViewDrawingTest, TheCaretShowsOnlyWhereTypingGoes) {
  script->Deliver("\x1B[10;10H");
  ASSERT_TRUE(Until([&] { return View().Screen().cursorRow == 9; }));
  const QRect cell = View().Surface().CellRect(9, 9).toRect();
  const auto lit = [&] {
    const QImage part = View().grab(cell).toImage();
    for (int y = 0; y < part.height(); ++y)
      for (int x = 0; x < part.width(); ++x)
        if (QColor(part.pixel(x, y)).lightness() > 60) return true;
    return false;
  };
  ASSERT_TRUE(View().hasFocus());
  EXPECT_TRUE(Until([&] { return lit(); }));
  EXPECT_TRUE(Until([&] { return !lit(); })) << "it blinks";
  View().clearFocus();
  EXPECT_FALSE(lit());
}

TEST_F(ViewDrawingTest, APanelLiesOverTheScreenInAnyWindow) {
  const QImage before = View().grab().toImage();
  script->End(EndReason::kClosedByPeer);
  ASSERT_TRUE(Until([&] { return View().Panel().IsShown(); }));
  EXPECT_NE(View().grab().toImage(), before);
  for (const QSize size : {QSize(1, 1), QSize(200, 60), QSize(3840, 2160)}) {
    CQuillView alone(*doc);
    alone.resize(size);
    EXPECT_EQ(alone.grab().deviceIndependentSize().toSize(), size);
  }
}

}  // namespace
}  // namespace quillet
