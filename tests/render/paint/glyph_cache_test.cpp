#include "render/paint/glyph_cache.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

#include "tests/render/paint/with_application.h"

namespace quillet {
namespace {

constexpr CellSize kSizes[] = {{12, 12}, {18, 19}, {26, 30}, {30, 30}, {30, 31}, {90, 90}};

class GlyphTest : public WithApplication {
 protected:
  GlyphTest() { cache.SetFaces(FaceFamilies(QStringLiteral("細明體")), true); }

  // The rows and columns that ink takes in a tile; empty when there is none.
  struct Ink {
    int left = 1000, right = -1, top = 1000, bottom = -1;
    bool Empty() const { return right < left; }
  };
  static Ink InkOf(GlyphSheet& sheet, char16_t unit, GlyphWidth width, int threshold = 96) {
    const std::uint8_t* tile = sheet.Tile(unit, width);
    const int columns = width == GlyphWidth::kWide ? sheet.Cell().fontSize : sheet.Cell().fontSize / 2;
    Ink ink;
    for (int y = 0; y < sheet.Cell().rowHeight; ++y)
      for (int x = 0; x < columns; ++x) {
        if (tile[y * sheet.Stride(width) + x] < threshold) continue;
        ink.left = std::min(ink.left, x);
        ink.right = std::max(ink.right, x);
        ink.top = std::min(ink.top, y);
        ink.bottom = std::max(ink.bottom, y);
      }
    return ink;
  }

  static constexpr std::size_t kBudget = 4u << 20;
  GlyphCache cache{kBudget};
};

TEST_F(GlyphTest, LettersStandOnOneBaselineAndNoneIsLost) {
  for (const CellSize cell : kSizes) {
    GlyphSheet& sheet = cache.Select(cell, cell).ordinary;
    const int foot = InkOf(sheet, u'H', GlyphWidth::kHalf).bottom;
    for (const char16_t unit : std::u16string_view(u"ABDEFHIKLMNPRTXZhiklmnrxz0123456789"))
      EXPECT_NEAR(InkOf(sheet, unit, GlyphWidth::kHalf).bottom, foot, 1)
          << int{unit} << " at " << cell.fontSize;
    for (const char16_t unit : std::u16string_view(u"gjpqy"))
      EXPECT_GT(InkOf(sheet, unit, GlyphWidth::kHalf).bottom, foot) << int{unit} << " at " << cell.fontSize;
    for (char16_t unit = 0x21; unit < 0x7F; ++unit)
      EXPECT_FALSE(InkOf(sheet, unit, GlyphWidth::kHalf, 24).Empty()) << int{unit} << " at " << cell.fontSize;
  }
}

TEST_F(GlyphTest, ChineseCharactersStandInTheMiddleOfTheirCell) {
  for (const CellSize cell : kSizes) {
    GlyphSheet& sheet = cache.Select(cell, cell).ordinary;
    for (const char16_t unit : std::u16string_view(u"國圖團※★□●")) {
      const Ink ink = InkOf(sheet, unit, GlyphWidth::kWide);
      ASSERT_FALSE(ink.Empty()) << int{unit};
      EXPECT_NEAR(ink.left, cell.fontSize - 1 - ink.right, std::max(2, cell.fontSize / 10)) << int{unit};
      EXPECT_NEAR(ink.top, cell.rowHeight - 1 - ink.bottom, std::max(3, cell.rowHeight / 6)) << int{unit};
    }
  }
}

TEST_F(GlyphTest, CharacterThatNoFaceHasIsASmallMark) {
  GlyphSheet& sheet = cache.Select({30, 30}, {30, 30}).ordinary;
  const Ink ink = InkOf(sheet, 0xFFFD, GlyphWidth::kWide, 1);
  ASSERT_FALSE(ink.Empty());
  EXPECT_LE(ink.right - ink.left, 6);
  EXPECT_LE(ink.bottom - ink.top, 6);
}

TEST_F(GlyphTest, RoughEdgesAreEitherCoveredOrNot) {
  cache.SetFaces(FaceFamilies(QStringLiteral("細明體")), false);
  GlyphSheet& sheet = cache.Select({30, 30}, {30, 30}).ordinary;
  const std::uint8_t* tile = sheet.Tile(u'國', GlyphWidth::kWide);
  int covered = 0;
  for (int y = 0; y < 30; ++y)
    for (int x = 0; x < 30; ++x) {
      const std::uint8_t coverage = tile[y * sheet.Stride(GlyphWidth::kWide) + x];
      EXPECT_TRUE(coverage == 0 || coverage == 255);
      covered += coverage == 255;
    }
  EXPECT_GT(covered, 100);
}

TEST_F(GlyphTest, CacheKeepsToItsBudgetAndTheSizesInUse) {
  for (int round = 0; round < 3; ++round)
    for (int size = 12; size < 60; size += 2) {
      const SheetPair sheets = cache.Select({size, size}, {size + 20, size});
      EXPECT_LE(cache.Bytes(), kBudget);
      EXPECT_NE(&sheets.ordinary, &sheets.push);
      const std::uint8_t* ordinary = sheets.ordinary.Tile(u'國', GlyphWidth::kWide);
      const std::uint8_t* push = sheets.push.Tile(u'國', GlyphWidth::kWide);
      const SheetPair again = cache.Select({size, size}, {size + 20, size});
      EXPECT_EQ(again.ordinary.Tile(u'國', GlyphWidth::kWide), ordinary);
      EXPECT_EQ(again.push.Tile(u'國', GlyphWidth::kWide), push);
    }
  const SheetPair one = cache.Select({30, 30}, {30, 30});
  EXPECT_EQ(&one.ordinary, &one.push);
  // Sizes in use that have grown past the budget begin anew.
  const SheetPair large = cache.Select({180, 180}, {170, 180});
  for (char16_t unit = 0x4E00; unit < 0x4E00 + 100; ++unit) {
    large.ordinary.Tile(unit, GlyphWidth::kWide);
    large.push.Tile(unit, GlyphWidth::kWide);
  }
  EXPECT_GT(cache.Bytes(), kBudget);
  cache.Select({180, 180}, {170, 180});
  EXPECT_LE(cache.Bytes(), kBudget);
}

}  // namespace
}  // namespace quillet
