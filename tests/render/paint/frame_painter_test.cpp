#include "render/paint/frame_painter.h"

#include <gtest/gtest.h>
#include <random>

#include "render/palette.h"
#include "tests/render/paint/with_application.h"
#include "tests/support/screen_builder.h"

namespace quillet {
namespace {

// Everything a row can carry at once: any bytes, colours, styles, sizes and marks.
class RandomPage {
 public:
  explicit RandomPage(unsigned seed) : random_(seed) {}

  unsigned Pick(unsigned count) { return static_cast<unsigned>(random_() >> 7) % count; }

  // Changes some of what `frame` shows.
  void Scribble(FrameState& frame) {
    for (unsigned changes = Pick(60); changes > 0; --changes)
      ScribbleCell(frame.page[Pick(kRows)]);
    for (unsigned changes = Pick(4); changes > 0; --changes)
      ScribbleMarks(frame.page[Pick(kRows)]);
    for (unsigned changes = Pick(4); changes > 0; --changes)
      ScribbleGround(frame.page[Pick(kRows)]);
    frame.caretRow = static_cast<int>(Pick(28)) - 2;
    frame.caretCol = static_cast<int>(Pick(84)) - 2;
    frame.caretShape = Pick(2) == 0 ? CaretShape::kLine : CaretShape::kBlock;
    frame.blinkOff = Pick(2) == 0;
    if (Pick(8) == 0) frame.progress = Pick(11) / 10.0;
    if (Pick(8) == 0) frame.rightInset = static_cast<int>(Pick(60)) - 10;
    if (Pick(3) == 0) ScribblePictures(frame);
  }

 private:
  // From above the page to below it, with rows of text between some.
  void ScribblePictures(FrameState& frame) {
    static const QImage kImages[] = {QImage(), Spotted(QImage::Format_RGB32),
                                     Spotted(QImage::Format_RGBA8888)};
    frame.pictures.clear();
    int row = -static_cast<int>(Pick(8));
    while (row < kRows) {
      const int rows = 1 + static_cast<int>(Pick(7));
      frame.pictures.push_back({.firstRow = row,
                                .rows = rows,
                                .size = {static_cast<int>(Pick(300)), static_cast<int>(Pick(150))},
                                .image = kImages[Pick(3)],
                                .sign = Pick(2) == 0 ? PictureSign::kPlay : PictureSign::kNone});
      row += rows + static_cast<int>(Pick(6));
    }
  }
  static QImage Spotted(QImage::Format format) {
    QImage image(40, 30, format);
    image.fill(QColor(200, 30, 90, 120));
    image.setPixelColor(7, 9, Qt::green);
    return image;
  }

  // Now and then a whole character, so that pairs are frequent.
  void ScribbleCell(PageRow& row) {
    const std::size_t col = Pick(kCols);
    row.cells[col] = Cell(Pick(256));
    if (col + 1 == kCols || Pick(3) == 0) return;
    row.cells[col] = Cell(0xA1 + Pick(40));
    row.cells[col + 1] = Cell(0x40 + Pick(63));
  }

  PageCell Cell(unsigned byte) {
    const unsigned back = Pick(3) == 0 ? Pick(256) : 16;
    return {static_cast<std::uint8_t>(byte), static_cast<std::uint8_t>(Pick(50)),
            static_cast<std::uint8_t>(back), static_cast<std::uint8_t>(Pick(8))};
  }

  void ScribbleMarks(PageRow& row) {
    const std::u16string tags[] = {u"", u"", u"不錯的人",
                                   u"always argues about commas, semicolons and colons"};
    const std::u16string ages[] = {u"", u"5分鐘前", u"1個半小時前", u"12年前"};
    row.size = Pick(2) == 0 ? RowSize::kPush : RowSize::kOrdinary;
    row.pennants = static_cast<std::uint8_t>(Pick(3) == 0 ? Pick(256) : 0);
    row.tag = tags[Pick(4)];
    row.tagCol = static_cast<std::uint8_t>(Pick(90));
    row.tagEnd = static_cast<std::uint8_t>(Pick(2) == 0 ? kCols : Pick(90));
    row.age = ages[Pick(4)];
  }

  // The grounds of whole rows, as push lines and captions have; and the end of a row without the rest.
  void ScribbleGround(PageRow& row) {
    const std::uint8_t grounds[] = {16, 24, 24, 25};
    const std::uint8_t ground = grounds[Pick(4)];
    const std::uint8_t styles[] = {0, 0, CS_BAR, CS_HOVER};
    const std::uint8_t style = styles[Pick(4)];
    for (std::size_t col = Pick(2) == 0 ? 0 : 79; col < kCols; ++col) {
      row.cells[col].back = ground;
      row.cells[col].style = style;
    }
  }

  std::minstd_rand random_;
};

class FramePainterTest : public WithApplication {
 protected:
  static QRgb Pixel(const FramePainter& painter, QPoint at) { return painter.Image().pixel(at) & 0xFFFFFF; }

  static FrameState FrameOf(const ScreenBuilder& builder) { return {.page = PlainPage(builder.screen)}; }
};

// A picture in which no two places look alike.
QImage Motley(QSize size) {
  QImage picture(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y)
    for (int x = 0; x < size.width(); ++x)
      picture.setPixel(x, y, qRgb(x * 255 / size.width(), y * 255 / size.height(), (x ^ y) & 0xFF));
  return picture;
}

// The smallest rectangle that holds every pixel that differs.
QRect Difference(const QImage& one, const QImage& other) {
  QRect rect;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x)
      if (one.pixel(x, y) != other.pixel(x, y)) rect |= QRect(x, y, 1, 1);
  return rect;
}

// All that decides about a frame beside the frame.
struct Terms {
  QSize size;
  DisplaySettings settings = {};
  LayoutMode mode = LayoutMode::kOrdinary;
  Backdrop backdrop = {};

  void Apply(FramePainter& painter) const {
    painter.ApplySettings(settings);
    painter.SetLayoutMode(mode);
    painter.SetBackdrop(backdrop);
    painter.Resize(size.width(), size.height());
  }
  // A picture drawn whole by a painter that has drawn nothing before.
  QImage Whole(const FrameState& frame) const {
    FramePainter painter;
    Apply(painter);
    painter.Update(frame);
    return painter.Image();
  }
};

Terms RandomTerms(RandomPage& random, QSize size) {
  Terms terms{.size = size};
  terms.settings.lineSpacing = static_cast<int>(random.Pick(5)) - 1;
  terms.settings.pushLineSpacing = static_cast<int>(random.Pick(5)) - 1;
  terms.settings.smoothFont = random.Pick(4) != 0;
  terms.settings.darkColor = random.Pick(2) == 0;
  terms.settings.work = random.Pick(5) == 0;
  terms.mode = static_cast<LayoutMode>(random.Pick(3));
  terms.backdrop = {Motley({211, 97}), static_cast<BackdropStyle>(random.Pick(4)), 60};
  return terms;
}

TEST_F(FramePainterTest, PartialRedrawGivesTheSamePixelsAsAWholeOne) {
  // Another run with --gtest_random_seed=N.
  RandomPage random(5 + static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed()));
  const QSize sizes[] = {{1280, 720}, {1300, 720}, {801, 599}, {640, 900}, {500, 300},
                         {700, 210},  {300, 720},  {97, 61},   {47, 23},   {1, 1}};
  for (const QSize size : sizes) {
    const Terms terms = RandomTerms(random, size);
    FramePainter painter;
    terms.Apply(painter);
    FrameState frame;
    painter.Update(frame);
    for (int round = 0; round < 25; ++round) {
      const QImage before = painter.Image().copy();
      random.Scribble(frame);
      const QRegion changed = painter.Update(frame);
      ASSERT_EQ(Difference(painter.Image(), terms.Whole(frame)), QRect())
          << size.width() << " round " << round;
      // What it does not report is as it was.
      EXPECT_TRUE(QRegion(painter.Image().rect()).contains(changed.boundingRect()) || changed.isEmpty());
      for (const QRect& rect : QRegion(before.rect()) - changed)
        ASSERT_EQ(before.copy(rect), painter.Image().copy(rect));
    }
  }
}

TEST_F(FramePainterTest, APictureOfItsRoomsSizeIsDrawnPixelForPixelAndEndsAboveTheBar) {
  FramePainter painter;
  painter.Resize(1280, 720);
  const QImage picture = Motley({300, 200});
  FrameState frame;
  frame.pictures.push_back({.firstRow = 4, .rows = 8, .size = {300, 200}, .image = picture});
  painter.Update(frame);
  const Layout& layout = painter.CurrentLayout();
  const QPoint at(layout.originX, RowTop(layout, 4) + PictureGap(layout.rowHeight));
  EXPECT_EQ(painter.Image().copy(QRect(at, picture.size())), picture);
  frame.pictures[0].firstRow = 20;
  painter.Update(frame);
  const QRect bar(at.x(), RowTop(layout, kBottomRow), 300, layout.rowHeight);
  const QImage below = painter.Image().copy(bar);
  frame.pictures.clear();
  EXPECT_FALSE(painter.Update(frame).intersects(bar));
  EXPECT_EQ(painter.Image().copy(bar), below);
}

TEST_F(FramePainterTest, ReportsNothingWhenNothingCanBeSeenToChange) {
  FramePainter painter;
  painter.Resize(1280, 720);
  ScreenBuilder builder;
  builder.Put(3, 10, u"看板 Quillet");
  FrameState frame = FrameOf(builder);
  EXPECT_EQ(painter.Update(frame), QRegion(0, 0, 1280, 720));
  EXPECT_TRUE(painter.Update(frame).isEmpty());
  frame.blinkOff = true;             // nothing blinks
  frame.caretCol = 40;               // the caret is not shown
  frame.page[20].cells[5].fore = 3;  // a blank in another colour
  frame.page[20].tagCol = 7;         // there is no tag
  frame.progress = 0.5;              // nor a moving picture
  frame.rightInset = 20;             // nor anything that keeps away
  EXPECT_TRUE(painter.Update(frame).isEmpty());
  painter.Resize(1280, 720);
  EXPECT_TRUE(painter.Update(frame).isEmpty());
  painter.ApplySettings({});
  EXPECT_EQ(painter.Update(frame), QRegion(0, 0, 1280, 720));
  frame.page[7].cells[20].byte = 'x';
  EXPECT_EQ(painter.Update(frame), QRegion(painter.CellRect(7, 20))) << "the cell that changed";
}

TEST_F(FramePainterTest, CellsHaveThePalettesColoursAtTheirPlaces) {
  ScreenBuilder builder;
  for (int colour = 0; colour < 8; ++colour) {
    builder.Put(2, 4 * colour, u"█", static_cast<std::uint8_t>(colour));
    builder.Put(3, 4 * colour, u"█", static_cast<std::uint8_t>(colour | kAttrBold));
    builder.Fill(4, 4 * colour, 4 * colour + 2, static_cast<std::uint8_t>(colour << kAttrBackgroundShift));
  }
  for (const bool dark : {false, true}) {
    FramePainter painter;
    painter.ApplySettings({.darkColor = dark, .lighterDarkBlue = false});
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
  FrameState frame = FrameOf(builder);
  frame.caretRow = 1;
  painter.Update(frame);
  EXPECT_EQ(bottom(1, 0), 0xC0C0C0u);
  EXPECT_EQ(bottom(1, 1), 0xC0C0C0u);
  EXPECT_EQ(bottom(1, 2), 0x000000u);
  frame.caretRow = 2;
  painter.Update(frame);
  EXPECT_EQ(bottom(2, 0), 0x000000u);
  EXPECT_EQ(bottom(2, 1), 0xC0C0C0u);
}

TEST_F(FramePainterTest, LayoutFollowsModeAndDisguise) {
  FramePainter painter;
  painter.Resize(1281, 723);
  EXPECT_NE(painter.CurrentLayout().originX, 0);
  painter.Update({});
  painter.SetLayoutMode(LayoutMode::kNarrow);
  EXPECT_EQ(painter.CurrentLayout(),
            RecalcLayout({.width = 1281, .height = 723, .mode = LayoutMode::kNarrow}));
  EXPECT_FALSE(painter.Update({}).isEmpty());
  DisplaySettings settings{.work = true};
  painter.ApplySettings(settings);
  painter.SetLayoutMode(LayoutMode::kOrdinary);
  EXPECT_EQ(painter.CurrentLayout(), RecalcLayout({.width = 1281, .height = 723, .atTopLeft = true}));
  painter.Update({});
  EXPECT_EQ(Pixel(painter, {1280, 722}), 0xFFFFFFu);
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
  EXPECT_EQ(painter.Image(), (Terms{.size = {800, 600}}.Whole(FrameOf(builder))));
}

}  // namespace
}  // namespace quillet
