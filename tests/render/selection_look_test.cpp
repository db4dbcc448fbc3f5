#include "render/selection_look.h"

#include <gtest/gtest.h>

#include "render/contrast.h"
#include "render/palette.h"
#include "render/row_look.h"

namespace quillet {
namespace {

// How far apart two colours are in each channel, added up.
unsigned Distance(std::uint32_t one, std::uint32_t other) {
  unsigned sum = 0;
  for (const int shift : {0, 8, 16}) {
    const auto a = one >> shift & 0xFF;
    const auto b = other >> shift & 0xFF;
    sum += a < b ? b - a : a - b;
  }
  return sum;
}

TEST(SelectionLookTest, ItIsReadableAndItsGroundIsToldFromEveryOther) {
  for (const PaletteKind kind : {PaletteKind::kNormal, PaletteKind::kDark, PaletteKind::kDisguise}) {
    const LookColours colours(PaletteOf(kind));
    for (const CellStyle style : {CS_SELECTED, CS_FOUND, CS_FOUND_HERE}) {
      const PageCell cell{.byte = 'a', .fore = 4, .back = 24, .style = style};
      EXPECT_GE(Contrast(colours.Foreground(cell, u'a'), colours.Background(cell)), kReadableContrast);
    }
    // Backgrounds of the BBS, push lines, captions and the cursor bar.
    for (std::uint8_t back = 16; back <= 25; ++back)
      EXPECT_GE(Distance(colours.SelectedGround(), colours.At(back)), 100u) << static_cast<int>(back);
    EXPECT_GE(Distance(colours.SelectedGround(), colours.Bar()), 60u);
  }
}

TEST(SelectionLookTest, ItsColoursComeBeforeAllOthers) {
  PageRow row;
  for (PageCell& cell : row.cells)
    cell = {.byte = 'a', .fore = 16, .back = 24, .style = CS_BLINK | CS_UNDERLINE | CS_BAR};
  const PageRow before = row;
  const LookColours colours(PaletteOf(PaletteKind::kNormal));
  LaySelection(row, 78, 80);
  EXPECT_EQ(row.cells[77], before.cells[77]);
  EXPECT_EQ(colours.Background(row.cells[79]), colours.SelectedGround()) << "the bar does not lie over it";
  EXPECT_EQ(colours.Foreground(row.cells[79], u'a'), colours.SelectedText());
  LayFound(row, 79, 80, FoundLook::kHere);
  EXPECT_EQ(colours.Background(row.cells[79]), colours.SelectedGround()) << "nor does what is found";
  EXPECT_EQ(ResolveMargin(row, colours), ResolveMargin(before, colours)) << "the margin is not selected";
}

TEST(SelectionLookTest, ColumnsOutsideTheRowAreCut) {
  PageRow row;
  LaySelection(row, -10, 2);
  LaySelection(row, 78, 1000);
  LaySelection(row, 40, 30);
  EXPECT_NE(row.cells[0].style & CS_SELECTED, 0);
  EXPECT_NE(row.cells[79].style & CS_SELECTED, 0);
  EXPECT_EQ(row.cells[35], PageCell());
}

}  // namespace
}  // namespace quillet
