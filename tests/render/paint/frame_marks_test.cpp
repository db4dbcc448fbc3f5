#include <gtest/gtest.h>
#include <set>

#include "render/contrast.h"
#include "render/paint/frame_painter.h"
#include "render/palette.h"
#include "tests/render/paint/with_application.h"
#include "tests/support/screen_builder.h"

namespace quillet {
namespace {

constexpr QSize kWindow(1280, 720);

class FrameMarksTest : public WithApplication {
 protected:
  FrameMarksTest() { painter_.Resize(kWindow.width(), kWindow.height()); }

  void Use(PaletteKind kind) {
    settings_.darkColor = kind == PaletteKind::kDark;
    settings_.work = kind == PaletteKind::kDisguise;
    painter_.ApplySettings(settings_);
    palette_ = &PaletteOf(kind);
  }
  QRgb Pixel(int x, int y) const { return painter_.Image().pixel(x, y) & 0xFFFFFF; }
  // The row's part of the window from column `col` on, -1: from the left edge.
  QRect RowFrom(int row, int col) const {
    const int left = col < 0 ? 0 : painter_.CellRect(row, col).left();
    return {left, painter_.CellRect(row, 0).top(), kWindow.width() - left,
            painter_.CurrentLayout().rowHeight};
  }
  QRect Margin(int row) const { return RowFrom(row, -1).adjusted(0, 0, -RowFrom(row, 0).width(), 0); }
  std::set<QRgb> ColoursIn(const QRect& rect) const {
    std::set<QRgb> colours;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
      for (int x = rect.left(); x <= rect.right(); ++x)
        colours.insert(Pixel(x, y));
    return colours;
  }
  double BestContrast(const QRect& rect, QRgb ground) const {
    double best = 1;
    for (const QRgb colour : ColoursIn(rect))
      best = std::max(best, Contrast(colour, ground));
    return best;
  }
  // The smallest rectangle of `area` that holds all that is not ground.
  QRect InkIn(const QRect& area) const {
    QRect ink;
    for (int y = area.top(); y <= area.bottom(); ++y)
      for (int x = area.left(); x <= area.right(); ++x)
        if (Pixel(x, y) != (*palette_)[16]) ink |= QRect(x, y, 1, 1);
    return ink;
  }

  DisplaySettings settings_;
  FramePainter painter_;
  const Palette* palette_ = &PaletteOf(PaletteKind::kNormal);
  FrameState frame_;
};

TEST_F(FrameMarksTest, AllPennantsFitTheMarginInOrderEachInItsColour) {
  frame_.page[3].pennants = 0xFE;
  frame_.page[5].pennants = 1 << 2;
  painter_.Update(frame_);
  EXPECT_GE(InkIn(Margin(5)).right(), Margin(5).right() - 3) << "one alone is near the text";
  const QRect ink = InkIn(RowFrom(3, -1));
  EXPECT_TRUE(Margin(3).contains(ink));
  EXPECT_GE(ink.right(), Margin(3).right() - 3);
  std::vector<QRgb> poles;
  for (int x = ink.left(); x <= ink.right(); ++x)
    if (const QRgb colour = Pixel(x, ink.bottom()); colour != 0) poles.push_back(colour);
  ASSERT_EQ(poles.size(), 7u);
  EXPECT_GE(Contrast(poles[3], 0), kReadableContrast) << "blue is as light as has to be";
  poles[3] = 0x0000FF;
  EXPECT_EQ(poles, (std::vector<QRgb>{0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF}));
}

TEST_F(FrameMarksTest, WithoutAMarginPennantsAreSegmentsUnderTheFirstCells) {
  painter_.SetLayoutMode(LayoutMode::kNarrow);
  frame_.page[20].pennants = 1 << 2 | 1 << 7;
  painter_.Update(frame_);
  const auto foot = [&](int col) {
    return Pixel(painter_.CellRect(20, col).left(), painter_.CellRect(20, col).bottom());
  };
  EXPECT_EQ(foot(0), 0x00FF00u);
  EXPECT_EQ(foot(1), 0xFFFFFFu);
  EXPECT_EQ(foot(2), 0x000000u);
  frame_.page[20].pennants = 0;
  painter_.Update(frame_);
  EXPECT_EQ(foot(0), 0x000000u);
}

TEST_F(FrameMarksTest, InBlackAndWhiteEachPennantIsAHollowSquareAtAPlaceOfItsOwn) {
  Use(PaletteKind::kDisguise);
  frame_.page[3].pennants = 1 << 2 | 1 << 7;
  painter_.Update(frame_);
  for (int number = 1; number <= 7; ++number) {
    const QRect square = InkIn(painter_.CellRect(3, number - 1));
    EXPECT_EQ(square.isEmpty(), number != 2 && number != 7) << number;
    if (square.isEmpty()) continue;
    EXPECT_EQ(square.width(), square.height());
    EXPECT_LT(square.width(), painter_.CurrentLayout().halfCell / 2);
    EXPECT_EQ(Pixel(square.center().x(), square.center().y()), 0xFFFFFFu);
  }
}

TEST_F(FrameMarksTest, GroundOfPushLinesSpansTheWindowWhateverTheSizeOfTheirCells) {
  const int y = painter_.CellRect(5, 0).center().y();
  for (const auto& [spacing, pushSpacing] : {std::pair{0, 0}, {0, 3}, {5, 0}}) {
    settings_.lineSpacing = spacing;
    settings_.pushLineSpacing = pushSpacing;
    painter_.ApplySettings(settings_);
    frame_.page[5] = {};
    frame_.page[5].size = RowSize::kPush;
    for (PageCell& cell : frame_.page[5].cells)
      cell.back = 24;
    painter_.Update(frame_);
    EXPECT_GE(painter_.CellRect(5, 0).left(), 40);
    EXPECT_LE(painter_.CellRect(5, 79).right(), 1239);
    EXPECT_EQ(ColoursIn(RowFrom(5, -1)), std::set<QRgb>{0x1A1A1A});
    // A BBS's background ends with its cells.
    frame_.page[5].cells[79].back = 17;
    EXPECT_FALSE(painter_.Update(frame_).isEmpty());
    EXPECT_EQ(Pixel(0, y), 0x000000u);
    EXPECT_EQ(Pixel(painter_.CellRect(5, 79).right(), y), 0x800000u);
    EXPECT_EQ(Pixel(painter_.CellRect(5, 79).right() + 1, y), 0x000000u);
  }
}

// A row with an age, one with an age under the bar, one with a tag over blocks, and letters to compare with.
TEST_F(FrameMarksTest, AgesAndTagsCanBeReadInEveryPalette) {
  ScreenBuilder builder;
  builder.Put(7, 0, u"前", kAttrBlank);
  for (int col = 0; col < 80; col += 2)
    builder.Put(4, col, u"█", 2 | kAttrBold);
  for (const PaletteKind kind : {PaletteKind::kNormal, PaletteKind::kDark, PaletteKind::kDisguise}) {
    SCOPED_TRACE(static_cast<int>(kind));
    Use(kind);
    frame_.page = PlainPage(builder.screen);
    frame_.page[5].age = u"1個半小時前";
    for (PageCell& cell : frame_.page[6].cells)
      cell = {' ', 7, 24, CS_BAR};
    frame_.page[6].age = u"快23小時前";
    frame_.page[4].tag = u"愛吵架";
    frame_.page[4].tagCol = 11;
    frame_.rightInset = 14;
    painter_.Update(frame_);

    const QRect age = InkIn(RowFrom(5, -1));
    EXPECT_GE(age.left(), painter_.CellRect(5, 78).left() + painter_.CellRect(5, 78).width() / 2);
    EXPECT_GE(age.height(), 0.6 * InkIn(RowFrom(7, -1)).height());
    EXPECT_LT(age.right(), kWindow.width() - 14);
    const double best = BestContrast(age, (*palette_)[16]);
    EXPECT_GE(best, kReadableContrast);
    // Seven tenths of the palette's colour where a stroke covers a pixel.
    EXPECT_LE(best, Contrast(MixColours((*palette_)[16], (*palette_)[14], 179), (*palette_)[16]) + 0.2);

    const QRgb bar = Pixel(painter_.CellRect(6, 3).left(), painter_.CellRect(6, 3).top());
    EXPECT_NE(bar, (*palette_)[24]);
    EXPECT_EQ(Pixel(kWindow.width() - 1, painter_.CellRect(6, 3).top()), bar) << "to the window's edge";
    EXPECT_GE(BestContrast(RowFrom(6, 78), bar), kReadableContrast);

    const QRect from = RowFrom(4, 11);
    const QRgb ground = Pixel(from.left() + 2, from.center().y());
    EXPECT_NE(ground, (*palette_)[10]);
    EXPECT_NE(ground, (*palette_)[16]);
    // Three characters and no more; nothing shines through.
    const QRect tag(from.left() + 2, from.top(), 3 * 18, from.height());
    EXPECT_EQ(ColoursIn(tag).count((*palette_)[10]), kind == PaletteKind::kDisguise ? 1u : 0u);
    EXPECT_EQ(Pixel(painter_.CellRect(4, 30).left(), from.center().y()), (*palette_)[10]);
    EXPECT_GE(BestContrast(tag, ground), kReadableContrast);
  }
}

TEST_F(FrameMarksTest, AgesStartBehindTheLastColumnsWhereTheseHoldText) {
  frame_.page[5].age = u"3天前";
  frame_.page[5].cells[79] = {'x', 7, 16, 0};
  painter_.Update(frame_);
  const int end = painter_.CellRect(5, 79).right();
  const QRect age = InkIn(RowFrom(5, -1).adjusted(end + 1, 0, 0, 0));
  EXPECT_FALSE(age.isEmpty());
  // The letter is where it was, nothing is written over it.
  FrameState without = frame_;
  without.page[5].age.clear();
  const QImage before = painter_.Image().copy(painter_.CellRect(5, 79));
  painter_.Update(without);
  EXPECT_EQ(painter_.Image().copy(painter_.CellRect(5, 79)), before);
}

TEST_F(FrameMarksTest, AgesThatWouldBeTooSmallToReadAreLeftOut) {
  frame_.page[5].age = u"1個半小時前";
  frame_.rightInset = 40;
  painter_.Update(frame_);
  EXPECT_TRUE(InkIn(RowFrom(5, -1)).isEmpty());
  frame_.rightInset = 0;
  EXPECT_FALSE(painter_.Update(frame_).isEmpty());
  EXPECT_FALSE(InkIn(RowFrom(5, -1)).isEmpty());
  painter_.Resize(500, 300);
  painter_.Update(frame_);
  EXPECT_TRUE(InkIn({0, painter_.CellRect(5, 0).top(), 500, painter_.CurrentLayout().rowHeight}).isEmpty());
}

TEST_F(FrameMarksTest, TagsLeaveNoHalfOfACharacterOrAnAge) {
  ScreenBuilder builder;
  for (int col = 0; col < 78; col += 2)
    builder.Put(4, col, u"█", 2 | kAttrBold);
  // From every column, so that the tag's end lies everywhere in a character and in the age.
  for (int col = 1; col < 78; ++col) {
    frame_.page = PlainPage(builder.screen);
    frame_.page[4].age = u"5分鐘前";
    painter_.Update(frame_);
    const QImage age = painter_.Image().copy(RowFrom(4, 78));
    frame_.page[4].tag = u"愛吵架";
    frame_.page[4].tagCol = static_cast<std::uint8_t>(col);
    painter_.Update(frame_);
    for (int other = 0; other < 78; other += 2) {
      const QRect foot(painter_.CellRect(4, other).bottomLeft(),
                       painter_.CellRect(4, other + 1).bottomRight());
      EXPECT_EQ(ColoursIn(foot).size(), 1u) << col << " " << other;
    }
    // The age is whole, or nothing of it is left beside the tag.
    QImage rest = painter_.Image().copy(RowFrom(4, 78));
    if (rest == age) continue;
    const int feet = rest.height() * 4 / 5;
    EXPECT_TRUE(InkIn(RowFrom(4, 78).adjusted(60, feet, 0, 0)).isEmpty()) << col;
  }
}

TEST_F(FrameMarksTest, LongTagsEndBeforeTheRightEdge) {
  frame_.page[4].tag = std::u16string(400, u'長');
  frame_.page[4].tagCol = 60;
  frame_.rightInset = 30;
  painter_.Update(frame_);
  const QRect ink = InkIn(RowFrom(4, -1));
  EXPECT_EQ(ink.left(), painter_.CellRect(4, 60).left());
  EXPECT_LT(ink.right(), kWindow.width() - 30);
  EXPECT_GT(ink.right(), kWindow.width() - 70);
  frame_.page[4].tag = u"x\u0000y\nz";
  frame_.page[4].tagCol = 255;
  painter_.Update(frame_);
  EXPECT_TRUE(InkIn(RowFrom(4, -1)).isEmpty());
}

TEST_F(FrameMarksTest, UnderlinesJoinAcrossCellsAndCharacters) {
  ScreenBuilder builder;
  builder.Put(6, 10, u"中 a", kAttrBlank);
  frame_.page = PlainPage(builder.screen);
  for (std::size_t col = 10; col < 14; ++col) {
    frame_.page[6].cells[col].style = CS_UNDERLINE;
    frame_.page[6].cells[col].fore = 11;
  }
  painter_.Update(frame_);
  const QRect cells = painter_.CellRect(6, 10) | painter_.CellRect(6, 13);
  const int thickness = painter_.CurrentLayout().rowHeight / 14;
  for (int y = cells.bottom() - thickness + 1; y <= cells.bottom(); ++y) {
    for (int x = cells.left(); x <= cells.right(); ++x)
      ASSERT_EQ(Pixel(x, y), 0xFFFF00u);
    EXPECT_EQ(Pixel(cells.left() - 1, y), 0x000000u);
    EXPECT_EQ(Pixel(cells.right() + 1, y), 0x000000u);
  }
}

}  // namespace
}  // namespace quillet
