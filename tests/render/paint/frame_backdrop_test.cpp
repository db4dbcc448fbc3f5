#include <gtest/gtest.h>

#include "render/contrast.h"
#include "render/paint/frame_painter.h"
#include "tests/render/paint/with_application.h"
#include "tests/support/screen_builder.h"

namespace quillet {
namespace {

constexpr QSize kWindow(1280, 720);

// Red on the left, green in the middle, blue on the right.
QImage Stripes(QSize size) {
  QImage picture(size, QImage::Format_RGB32);
  for (int x = 0; x < size.width(); ++x)
    for (int y = 0; y < size.height(); ++y)
      picture.setPixel(x, y, 0xFF0000u >> (x * 3 / size.width() * 8));
  return picture;
}

class FrameBackdropTest : public WithApplication {
 protected:
  FrameBackdropTest() { painter_.Resize(kWindow.width(), kWindow.height()); }

  QRgb Pixel(QPoint at) const { return painter_.Image().pixel(at) & 0xFFFFFF; }
  QRgb Left() const { return Pixel({3, 360}); }
  QRgb Middle() const { return Pixel({640, 360}); }
  QRgb Right() const { return Pixel({1276, 360}); }

  unsigned MostBlueIn(const QRect& rect) const {
    unsigned most = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
      for (int x = rect.left(); x <= rect.right(); ++x)
        most = std::max(most, Pixel({x, y}) & 0xFFu);
    return most;
  }
  // Halves of bytes are rounded up or down.
  static void ExpectNear(QRgb colour, QRgb wanted) {
    for (const int shift : {0, 8, 16})
      EXPECT_NEAR(colour >> shift & 0xFF, wanted >> shift & 0xFF, 1) << std::hex << colour << " " << wanted;
  }

  FramePainter painter_;
  FrameState frame_;
};

TEST_F(FrameBackdropTest, ShowsThroughTheGroundOfCellsAndMarginsOnly) {
  ScreenBuilder builder;
  builder.Put(5, 4, u"█a");
  builder.Fill(6, 4, 8, static_cast<std::uint8_t>(3 << kAttrBackgroundShift));
  frame_.page = PlainPage(builder.screen);
  painter_.SetBackdrop({Stripes({300, 100}), BackdropStyle::kStretch, 50});
  EXPECT_EQ(painter_.Update(frame_), QRegion(QRect(QPoint(0, 0), kWindow)));
  ExpectNear(Left(), 0x800000u);
  ExpectNear(Middle(), 0x008000u);
  ExpectNear(Right(), 0x000080u);
  EXPECT_EQ(Pixel(painter_.CellRect(5, 4).center()), 0xC0C0C0u);
  ExpectNear(Pixel(painter_.CellRect(5, 6).topLeft()), 0x800000u);  // beside the letter's strokes
  EXPECT_EQ(Pixel(painter_.CellRect(6, 5).center()), 0x808000u);
  // The letter has its own colour, not a mixture with a ground that is not there.
  EXPECT_GT(MostBlueIn(painter_.CellRect(5, 6)), 0x90u);
}

TEST_F(FrameBackdropTest, ShinesALittleThroughTheGroundOfPushLinesAndCaptions) {
  frame_.page[2].cells[3].back = 25;
  for (PageCell& cell : frame_.page[5].cells)
    cell.back = 24;
  frame_.page[5].cells[6].byte = 'l';
  painter_.SetBackdrop({Stripes({300, 100}), BackdropStyle::kStretch, 100});
  painter_.Update(frame_);
  const auto mixed = [](std::uint32_t ground) { return MixColours(0xFF0000, ground, 192); };
  ExpectNear(Pixel(painter_.CellRect(2, 3).center()), mixed(0x101010));
  ExpectNear(Pixel(painter_.CellRect(5, 5).center()), mixed(0x1A1A1A));
  ExpectNear(Pixel({0, painter_.CellRect(5, 0).top()}), mixed(0x1A1A1A));
  ExpectNear(Pixel(painter_.CellRect(5, 6).topLeft()), mixed(0x1A1A1A));  // beside the letter's stroke
  // Words do not let it through: the picture has no blue of its own.
  EXPECT_GT(MostBlueIn(painter_.CellRect(5, 6)), 0xA0u);
}

TEST_F(FrameBackdropTest, OpacityStylesAndDisguise) {
  const QImage stripes = Stripes({300, 100});
  for (const auto& [percent, red] : {std::pair{0, 0u}, {100, 0xFF0000u}, {-50, 0u}, {900, 0xFF0000u}}) {
    painter_.SetBackdrop({stripes, BackdropStyle::kStretch, percent});
    painter_.Update(frame_);
    EXPECT_EQ(Left(), red) << percent;
  }
  for (const Backdrop& none :
       {Backdrop{stripes, BackdropStyle::kNone, 100}, {{}, BackdropStyle::kCrop, 100}}) {
    painter_.SetBackdrop(none);
    painter_.Update(frame_);
    EXPECT_EQ(Left(), 0u);
  }
  DisplaySettings settings;
  settings.work = true;
  painter_.SetBackdrop({stripes, BackdropStyle::kCrop, 100});
  painter_.ApplySettings(settings);
  painter_.Update(frame_);
  EXPECT_EQ(Middle(), 0xFFFFFFu);
}

TEST_F(FrameBackdropTest, OnlyTheMovingPictureFollowsTheText) {
  for (const QSize size : {QSize(900, 100), QSize(9000, 10)}) {  // the second is longer than is kept whole
    painter_.SetBackdrop({Stripes(size), BackdropStyle::kMovingCrop, 100});
    painter_.Update(frame_);
    EXPECT_EQ(Middle(), 0xFF0000u);
    frame_.progress = 1;
    EXPECT_FALSE(painter_.Update(frame_).isEmpty());
    EXPECT_EQ(Middle(), 0x0000FFu);
    frame_.progress = 0.5;
    painter_.Update(frame_);
    EXPECT_EQ(Middle(), 0x00FF00u);
    EXPECT_TRUE(painter_.Update(frame_).isEmpty());
    frame_.progress = 0;

    painter_.SetBackdrop({Stripes(size), BackdropStyle::kCrop, 100});
    painter_.Update(frame_);
    EXPECT_EQ(Middle(), 0x00FF00u);
    frame_.progress = 1;
    EXPECT_TRUE(painter_.Update(frame_).isEmpty());
    frame_.progress = 0;
  }
}

}  // namespace
}  // namespace quillet
