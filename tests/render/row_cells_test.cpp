#include "render/row_cells.h"

#include <gtest/gtest.h>
#include <memory>
#include <string_view>

#include "render/contrast.h"
#include "render/row_look.h"
#include "render/style_colours.h"

namespace quillet {
namespace {

constexpr PaletteKind kPalettes[] = {PaletteKind::kNormal, PaletteKind::kDark, PaletteKind::kDisguise};

class RowCellsTest : public testing::Test {
 protected:
  RowCellsTest() {
    tables_->big5ToUnicode[0xA4 + 256 * 0xA4] = u'中';
    tables_->big5ToUnicode[0xA4 + 256 * 0x40] = u'一';
    tables_->big5ToUnicode[0xA1 + 256 * 0x40] = u'　';
  }
  RowCells Decode(std::string_view bytes, std::size_t at = 0) {
    for (const char byte : bytes)
      row_.cells[at++].byte = static_cast<std::uint8_t>(byte);
    return DecodeRow(row_.cells, *tables_);
  }
  RowLook Look(Caret caret = {}, bool blinkOff = false, bool lighter = true,
               PaletteKind palette = PaletteKind::kNormal) const {
    return ResolveRow(row_, caret, blinkOff, *tables_, LookColours(PaletteOf(palette), lighter));
  }
  void Colour(std::size_t col, int fore, int back = 16, int style = 0) {
    row_.cells[col].fore = static_cast<std::uint8_t>(fore);
    row_.cells[col].back = static_cast<std::uint8_t>(back);
    row_.cells[col].style = static_cast<std::uint8_t>(style);
  }

  std::unique_ptr<CharsetTables> tables_ = std::make_unique<CharsetTables>();
  PageRow row_;
};

TEST_F(RowCellsTest, PairsBecomeOneCharacterInTwoCells) {
  const RowCells cells = Decode("a\xA4\xA4\xA4\x40z");
  EXPECT_EQ(cells[0], (RowCell{u'a', CellPart::kSingle}));
  EXPECT_EQ(cells[1], (RowCell{u'中', CellPart::kLead}));
  EXPECT_EQ(cells[2], (RowCell{u'中', CellPart::kTrail}));
  EXPECT_EQ(cells[5], (RowCell{u'z', CellPart::kSingle}));
  EXPECT_EQ(Decode("\x81\x81")[0], (RowCell{kUnknownUnit, CellPart::kLead}));
}

TEST_F(RowCellsTest, BytesWithoutAPartnerAreBlankAndLeaveTheirNeighboursAlone) {
  const RowCell blank;
  // A lead whose trail was overwritten, control bytes, bytes that are never a lead.
  const RowCells cells = Decode("\xA4 \x01\x1F\x7F\x80\xFF\xA4\x31q");
  for (const std::size_t col : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u})
    EXPECT_EQ(cells[col], blank) << col;
  EXPECT_EQ(cells[8].unit, u'1');
  EXPECT_EQ(cells[9].unit, u'q');
  // Nothing follows the last column.
  EXPECT_EQ(Decode("\xA4", 79)[79], blank);
}

TEST_F(RowCellsTest, HalvesOfACharacterHaveTheirOwnColoursAndBlink) {
  Decode("\xA4\xA4");
  Colour(0, 9);
  Colour(1, 2, 20, CS_BLINK);
  const RowLook look = Look();
  EXPECT_EQ(look[0].foreground, 0xFF0000u);
  EXPECT_EQ(look[1].foreground, 0x008000u);
  EXPECT_EQ(look[1].background, 0x000080u);
  EXPECT_EQ(look[1].unit, u'中');
  EXPECT_EQ(Look({}, true)[0].unit, u'中');
  EXPECT_EQ(Look({}, true)[1].unit, 0);
}

TEST_F(RowCellsTest, CaretIsAsWideAsItsCharacter) {
  Decode("x\xA4\xA4y");
  for (const int col : {1, 2}) {
    const RowLook look = Look({col});
    EXPECT_FALSE(look[0].caret);
    EXPECT_TRUE(look[1].caret && look[2].caret);
    EXPECT_FALSE(look[3].caret);
    const RowLook block = Look({col, CaretShape::kBlock});
    EXPECT_TRUE(block[1] != Look()[1] && block[2] != Look()[2]);
    EXPECT_TRUE(block[0] == Look()[0] && block[3] == Look()[3]);
  }
}

TEST_F(RowCellsTest, DarkBlueIsLighterOnTheDarkGroundsOnly) {
  Decode("abcdef");
  Colour(0, 4);
  Colour(1, 12);
  Colour(2, 4, 23);
  Colour(3, 4, 24);
  Colour(4, 4, 25);
  Colour(5, 4, 16, CS_BAR);
  const RowLook plain = Look({}, false, false);
  EXPECT_EQ(plain[0].foreground, 0x000080u);
  EXPECT_EQ(plain[1].foreground, 0x0000FFu);
  const RowLook lighter = Look();
  EXPECT_NE(lighter[0].foreground, lighter[1].foreground);
  EXPECT_EQ(lighter[2].foreground, 0x000080u);
  for (const std::size_t col : {0u, 1u, 3u, 4u, 5u})
    EXPECT_GE(Contrast(lighter[col].foreground, lighter[col].background), kReadableContrast) << col;
}

TEST_F(RowCellsTest, WhatLinesAreDressedInCanBeReadAndReadTitlesAreNoBrighterThanOthers) {
  Decode("ab");
  for (const PaletteKind kind : kPalettes)
    for (const int back : {16, 20, 24, 25})
      for (const std::uint8_t fore : {kReadTitle, kMyId, kKeywordColour, kPlaceMark, kLighterPushText}) {
        Colour(0, fore, back);
        Colour(1, kPlainFore, back);
        const RowLook look = Look({}, false, true, kind);
        const double contrast = Contrast(look[0].foreground, look[0].background);
        EXPECT_GE(contrast, kReadableContrast) << static_cast<int>(kind) << " " << +fore << " on " << back;
        const double others = Contrast(look[1].foreground, look[1].background);
        EXPECT_TRUE(fore != kReadTitle || contrast <= others) << static_cast<int>(kind) << " on " << back;
      }
}

TEST_F(RowCellsTest, BlueBlocksStayAsBlueAsTheBackgroundsBesideThem) {
  tables_->big5ToUnicode[0xF9 + 256 * 0xFE] = u'▓';
  Decode("\xF9\xFE");
  Colour(0, 4);
  Colour(1, 4);
  Colour(2, 7, 20);
  const RowLook look = Look();
  EXPECT_EQ(look[0].foreground, look[2].background);
  EXPECT_EQ(look[1].foreground, look[2].background);
}

// The pointer's row is quieter than the cursor's.
TEST_F(RowCellsTest, BarIsAQuietGroundThatEverythingWrittenCanBeReadOn) {
  Decode("ab c");
  for (const PaletteKind kind : kPalettes)
    for (int fore = 0; fore < 45; ++fore) {
      const Palette& palette = PaletteOf(kind);
      Colour(0, fore, 16, CS_BAR);
      Colour(1, fore, 17, CS_BAR);  // a colour of the BBS's own stays
      Colour(2, fore, 24, CS_BAR);
      const RowLook look = Look({}, false, true, kind);
      EXPECT_NE(look[0].background, palette[16]);
      EXPECT_LT(Contrast(look[0].background, palette[16]), 2);
      EXPECT_EQ(look[0].ground, CellGround::kOpaque);
      EXPECT_EQ(look[1].background, palette[17]);
      EXPECT_EQ(look[2].background, look[0].background);
      EXPECT_EQ(look[3].background, palette[16]);
      EXPECT_EQ(look[3].ground, CellGround::kPage);
      Colour(0, fore, 16, CS_HOVER);
      const CellLook hover = Look({}, false, true, kind)[0];
      EXPECT_GT(Contrast(hover.background, palette[16]), 1.05);
      EXPECT_LT(Contrast(hover.background, palette[16]), Contrast(look[0].background, palette[16]));
      EXPECT_TRUE(hover.foreground == hover.background ||
                  Contrast(hover.foreground, hover.background) >= kReadableContrast);
      // What is written in the ground's colour is hidden, and is not given away.
      if (palette[static_cast<std::size_t>(fore)] == palette[16]) {
        EXPECT_EQ(look[0].foreground, look[0].background) << fore;
      } else {
        EXPECT_GE(Contrast(look[0].foreground, look[0].background), kReadableContrast) << fore;
      }
    }
}

TEST_F(RowCellsTest, UnderlineHasTheForegroundOfItsCellOnBlanksToo) {
  Decode("a b");
  for (const std::size_t col : {0u, 1u, 2u})
    Colour(col, 11, 16, col < 2 ? CS_UNDERLINE | CS_BLINK : 0);
  const RowLook look = Look({}, true);
  EXPECT_TRUE(look[0].underline && look[1].underline);
  EXPECT_FALSE(look[2].underline);
  EXPECT_EQ(look[1].foreground, 0xFFFF00u);
  EXPECT_EQ(look[0].unit, 0);
}

TEST_F(RowCellsTest, ColoursOutsideThePaletteAreSomeColour) {
  Decode("ab");
  for (int index = 48; index < kPictureSign; ++index) {
    Colour(0, index, index, index & ~(CS_SELECTED | CS_FOUND | CS_FOUND_HERE));
    Colour(1, index, 16, CS_BAR);
    EXPECT_EQ(Look()[0].background, PaletteOf(PaletteKind::kNormal)[47]);
    EXPECT_EQ(Look()[1].foreground, PaletteOf(PaletteKind::kNormal)[47]);
  }
}

TEST_F(RowCellsTest, CaretCanBeSeenWhateverTheColours) {
  Decode("x");
  for (const PaletteKind kind : kPalettes)
    for (int fore = 0; fore < 48; ++fore)
      for (int back = 16; back < 26; ++back) {
        Colour(0, fore, back);
        const CellLook line = Look({0}, false, true, kind)[0];
        EXPECT_GE(Contrast(CaretColour(line), line.background), 3) << fore << " on " << back;
        const CellLook block = Look({0, CaretShape::kBlock}, false, true, kind)[0];
        EXPECT_EQ(block.background, CaretColour(line));
        EXPECT_GE(Contrast(block.foreground, block.background), kReadableContrast);
        EXPECT_EQ(block.ground, CellGround::kOpaque);
      }
}

}  // namespace
}  // namespace quillet
