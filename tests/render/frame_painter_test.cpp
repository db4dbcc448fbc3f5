#include "render/paint/frame_painter.h"

#include <gtest/gtest.h>
#include <random>

#include "tests/render/with_application.h"
#include "tests/support/screen_builder.h"

namespace quillet {
namespace {

class FramePainterTest : public WithApplication {
 protected:
  static QRgb Pixel(const FramePainter& painter, QPoint at) { return painter.Image().pixel(at) & 0xFFFFFF; }

  // A picture drawn whole by a painter that has drawn nothing before.
  static QImage Whole(const DisplaySettings& settings, QSize size, const FrameState& frame) {
    FramePainter painter;
    painter.ApplySettings(settings);
    painter.Resize(size.width(), size.height());
    painter.Update(frame);
    return painter.Image();
  }

  static FrameState FrameOf(ScreenBuilder& builder) { return {.screen = builder.screen}; }
};

// Any bytes, any attributes; now and then a whole character, so that pairs are frequent.
void Scribble(ScreenSnapshot& screen, std::minstd_rand& random) {
  const auto pick = [&](unsigned count) { return static_cast<unsigned>(random() >> 7) % count; };
  for (unsigned changes = pick(60); changes > 0; --changes) {
    const std::size_t row = pick(kRows);
    const std::size_t col = pick(kCols);
    screen.attr[row][col] = static_cast<std::uint8_t>(pick(256));
    if (pick(3) == 0) {
      screen.text[row][col] = static_cast<std::uint8_t>(pick(256));
    } else if (col + 1 < kCols) {
      screen.text[row][col] = static_cast<std::uint8_t>(0xA1 + pick(40));
      screen.text[row][col + 1] = static_cast<std::uint8_t>(0x40 + pick(63));
      screen.attr[row][col + 1] = static_cast<std::uint8_t>(pick(256));
    }
  }
  screen.cursorRow = static_cast<int>(pick(26)) - 1;
  screen.cursorCol = static_cast<int>(pick(84)) - 2;
}

TEST_F(FramePainterTest, PartialRedrawGivesTheSamePixelsAsAWholeOne) {
  std::minstd_rand random(5);
  const QSize sizes[] = {{1280, 720}, {801, 599}, {500, 300}, {97, 61}};
  for (const QSize size : sizes) {
    DisplaySettings settings;
    settings.lineSpacing = static_cast<int>(random() % 4);
    settings.smoothFont = random() >> 9 & 1;
    settings.darkColor = random() >> 9 & 1;
    FramePainter painter;
    painter.ApplySettings(settings);
    painter.Resize(size.width(), size.height());
    FrameState frame{.screen = ScreenBuilder().screen};
    painter.Update(frame);
    for (int round = 0; round < 25; ++round) {
      const QImage before = painter.Image().copy();
      Scribble(frame.screen, random);
      frame.showCaret = random() >> 9 & 1;
      frame.blinkOff = random() >> 9 & 1;
      const QRegion changed = painter.Update(frame);
      ASSERT_EQ(painter.Image(), Whole(settings, size, frame)) << size.width() << " round " << round;
      // What it does not report is as it was.
      EXPECT_TRUE(QRegion(painter.Image().rect()).contains(changed.boundingRect()) || changed.isEmpty());
      for (const QRect& rect : QRegion(before.rect()) - changed)
        ASSERT_EQ(before.copy(rect), painter.Image().copy(rect));
    }
  }
}

TEST_F(FramePainterTest, ReportsNothingWhenNothingCanBeSeenToChange) {
  FramePainter painter;
  painter.Resize(1280, 720);
  ScreenBuilder builder;
  builder.Put(3, 10, u"看板 Quillet");
  FrameState frame = FrameOf(builder);
  EXPECT_EQ(painter.Update(frame), QRegion(0, 0, 1280, 720));
  EXPECT_TRUE(painter.Update(frame).isEmpty());
  frame.blinkOff = true;  // nothing blinks
  frame.screen.pageFlags = 1;
  frame.screen.cursorCol = 40;   // the caret is not shown
  frame.screen.attr[20][5] = 3;  // a blank in another colour
  EXPECT_TRUE(painter.Update(frame).isEmpty());
  painter.Resize(1280, 720);
  EXPECT_TRUE(painter.Update(frame).isEmpty());
  painter.ApplySettings({});
  EXPECT_EQ(painter.Update(frame), QRegion(0, 0, 1280, 720));
}

TEST_F(FramePainterTest, ReportsTheCellsThatChanged) {
  FramePainter painter;
  painter.Resize(1280, 720);
  ScreenBuilder builder;
  FrameState frame = FrameOf(builder);
  painter.Update(frame);
  builder.Put(7, 20, u"字");
  EXPECT_EQ(painter.Update(FrameOf(builder)), QRegion(painter.CellRect(7, 20) | painter.CellRect(7, 21)));
}

TEST_F(FramePainterTest, CellsHaveThePalettesColoursAtTheirPlaces) {
  ScreenBuilder builder;
  for (int colour = 0; colour < 8; ++colour) {
    builder.Put(2, 4 * colour, u"█", static_cast<std::uint8_t>(colour));
    builder.Put(3, 4 * colour, u"█", static_cast<std::uint8_t>(colour | kAttrBold));
    builder.Fill(4, 4 * colour, 4 * colour + 2, static_cast<std::uint8_t>(colour << kAttrBackgroundShift));
  }
  builder.Put(5, 0, u"█", 1 | kAttrBold);
  builder.Fill(5, 1, 2, 2 | kAttrBold);
  for (const bool dark : {false, true}) {
    FramePainter painter;
    DisplaySettings settings;
    settings.darkColor = dark;
    settings.lighterDarkBlue = false;
    painter.ApplySettings(settings);
    painter.Resize(1000, 700);
    painter.Update(FrameOf(builder));
    const Palette& palette = PaletteOf(dark ? PaletteKind::kDark : PaletteKind::kNormal);
    for (std::size_t colour = 0; colour < 8; ++colour) {
      const int col = static_cast<int>(4 * colour);
      for (const QPoint corner :
           {painter.CellRect(2, col).topLeft(), painter.CellRect(2, col + 1).bottomRight()})
        EXPECT_EQ(Pixel(painter, corner), palette[colour]);
      EXPECT_EQ(Pixel(painter, painter.CellRect(3, col).center()), palette[colour + 8]);
      EXPECT_EQ(Pixel(painter, painter.CellRect(4, col + 1).center()), palette[colour + 16]);
    }
    EXPECT_EQ(Pixel(painter, painter.CellRect(5, 0).topRight()), palette[9]);
    EXPECT_EQ(Pixel(painter, painter.CellRect(5, 1).topLeft()), palette[10]);
  }
}

TEST_F(FramePainterTest, CaretUnderlinesTheCharacterItStandsOn) {
  ScreenBuilder builder;
  builder.Put(1, 0, u"中x", kAttrBlank);
  builder.Put(2, 0, u"ab", kAttrInputField);
  FramePainter painter;
  painter.Resize(1280, 720);
  const auto bottom = [&](int row, int col) {
    return Pixel(painter, painter.CellRect(row, col).bottomLeft());
  };
  FrameState frame = FrameOf(builder.Cursor(1, 0));
  painter.Update(frame);
  EXPECT_EQ(bottom(1, 0), 0x000000u);
  frame.showCaret = true;
  painter.Update(frame);
  EXPECT_EQ(bottom(1, 0), 0xC0C0C0u);
  EXPECT_EQ(bottom(1, 1), 0xC0C0C0u);
  EXPECT_EQ(bottom(1, 2), 0x000000u);
  frame.screen.cursorRow = 2;
  painter.Update(frame);
  EXPECT_EQ(bottom(1, 0), 0x000000u);
  EXPECT_EQ(bottom(2, 0), 0x000000u);
  EXPECT_EQ(bottom(2, 1), 0xC0C0C0u);
}

TEST_F(FramePainterTest, BlinkingTextVanishesAndItsBackgroundStays) {
  ScreenBuilder builder;
  builder.Put(0, 0, u"██", static_cast<std::uint8_t>(3 | kAttrBlink | 1 << kAttrBackgroundShift));
  FramePainter painter;
  painter.Resize(1280, 720);
  FrameState frame = FrameOf(builder);
  painter.Update(frame);
  EXPECT_EQ(Pixel(painter, painter.CellRect(0, 1).center()), 0x808000u);
  frame.blinkOff = true;
  EXPECT_FALSE(painter.Update(frame).isEmpty());
  EXPECT_EQ(Pixel(painter, painter.CellRect(0, 1).center()), 0x800000u);
}

TEST_F(FramePainterTest, AnySizeFontAndSpacingDrawsAFrame) {
  std::minstd_rand random(9);
  FrameState frame{.screen = ScreenBuilder().screen, .showCaret = true};
  FramePainter painter;
  const QSize sizes[] = {{1, 1},     {0, -3},     {3000, 1},    {1, 3000}, {47, 47},
                         {200, 720}, {1023, 767}, {7680, 4320}, {640, 400}};
  for (const QSize size : sizes) {
    for (int i = 0; i < 8; ++i)
      Scribble(frame.screen, random);
    DisplaySettings settings;
    settings.font = u"No Such Face";
    settings.lineSpacing = static_cast<int>(random() % 200) - 100;
    painter.ApplySettings(settings);
    painter.Resize(size.width(), size.height());
    painter.Update(frame);
    EXPECT_EQ(painter.Image().size(), QSize(std::max(size.width(), 1), std::max(size.height(), 1)));
    EXPECT_EQ(painter.Image().pixel(0, 0) >> 24, 0xFFu);
  }
}

TEST_F(FramePainterTest, WarmingUpEndsAndChangesNoPixel) {
  ScreenBuilder builder;
  builder.Put(3, 0, u"一乙丁七乃九了二人儿入八几刀刁力匕十卜又 ABC xyz");
  FramePainter painter;
  painter.Resize(800, 600);
  int rounds = 0;
  while (painter.WarmUp(20) && rounds < 10000)
    ++rounds;
  EXPECT_FALSE(painter.WarmUp(20));
  painter.Update(FrameOf(builder));
  EXPECT_EQ(painter.Image(), Whole({}, {800, 600}, FrameOf(builder)));
}

}  // namespace
}  // namespace quillet
