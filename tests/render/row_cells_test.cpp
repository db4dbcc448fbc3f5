#include "render/row_cells.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string_view>

#include "render/row_look.h"

namespace quillet {
namespace {

class RowCellsTest : public testing::Test {
 protected:
  RowCellsTest() {
    tables_->big5ToUnicode[0xA4 + 256 * 0xA4] = u'中';
    tables_->big5ToUnicode[0xA4 + 256 * 0x40] = u'一';
    tables_->big5ToUnicode[0xA1 + 256 * 0x40] = u'　';
    text_.fill(' ');
    attr_.fill(kAttrBlank);
  }
  RowCells Decode(std::string_view bytes, std::size_t at = 0) {
    std::copy(bytes.begin(), bytes.end(), text_.begin() + static_cast<std::ptrdiff_t>(at));
    return DecodeRow(text_, *tables_);
  }
  RowLook Look(int caretCol = -1, bool blinkOff = false, bool lighter = true) const {
    return ResolveRow(text_, attr_, caretCol, *tables_,
                      {&PaletteOf(PaletteKind::kNormal), lighter, blinkOff});
  }

  std::unique_ptr<CharsetTables> tables_ = std::make_unique<CharsetTables>();
  ScreenRow text_;
  ScreenRow attr_;
};

TEST_F(RowCellsTest, PairsBecomeOneCharacterInTwoCells) {
  const RowCells cells = Decode("a\xA4\xA4\xA4\x40z");
  EXPECT_EQ(cells[0], (RowCell{u'a', CellPart::kSingle}));
  EXPECT_EQ(cells[1], (RowCell{u'中', CellPart::kLead}));
  EXPECT_EQ(cells[2], (RowCell{u'中', CellPart::kTrail}));
  EXPECT_EQ(cells[3], (RowCell{u'一', CellPart::kLead}));
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
  // The byte behind the last column is no trail.
  text_[80] = 0xA4;
  EXPECT_EQ(Decode("\xA4", 79)[79], blank);
}

TEST_F(RowCellsTest, AnyBytesKeepTheGrid) {
  std::minstd_rand random(3);
  for (int round = 0; round < 2000; ++round) {
    for (auto& byte : text_)
      byte = static_cast<std::uint8_t>(random() >> 8);
    const RowCells cells = DecodeRow(text_, *tables_);
    for (std::size_t col = 0; col < kCols; ++col) {
      const bool lead = cells[col].part == CellPart::kLead;
      const bool trailFollows = col + 1 < kCols && cells[col + 1].part == CellPart::kTrail;
      EXPECT_EQ(lead, trailFollows);
      if (lead) {
        EXPECT_EQ(cells[col].unit, cells[col + 1].unit);
      }
    }
  }
}

TEST_F(RowCellsTest, HalvesOfACharacterHaveTheirOwnColoursAndBlink) {
  Decode("\xA4\xA4");
  attr_[0] = 1 | kAttrBold;
  attr_[1] = static_cast<std::uint8_t>(2 | 4 << kAttrBackgroundShift | kAttrBlink);
  const RowLook look = Look();
  EXPECT_EQ(look[0].foreground, 0xFF0000u);
  EXPECT_EQ(look[1].foreground, 0x008000u);
  EXPECT_EQ(look[1].background, 0x000080u);
  EXPECT_EQ(look[1].unit, u'中');
  EXPECT_EQ(Look(-1, true)[0].unit, u'中');
  EXPECT_EQ(Look(-1, true)[1].unit, 0);
}

TEST_F(RowCellsTest, BlanksOfAnyForegroundLookTheSame) {
  Decode("\xA1\x40 ");
  const RowLook white = Look();
  attr_[0] = attr_[1] = attr_[2] = 3;
  EXPECT_EQ(Look(), white);
  attr_[2] = 3 | 1 << kAttrBackgroundShift;
  EXPECT_NE(Look(), white);
}

TEST_F(RowCellsTest, CaretIsAsWideAsItsCharacter) {
  Decode("x\xA4\xA4y");
  for (const int col : {1, 2}) {
    const RowLook look = Look(col);
    EXPECT_FALSE(look[0].caret);
    EXPECT_TRUE(look[1].caret && look[2].caret);
    EXPECT_FALSE(look[3].caret);
  }
  EXPECT_TRUE(Look(0)[0].caret);
  EXPECT_FALSE(Look(0)[1].caret);
}

TEST_F(RowCellsTest, DarkBlueIsLighterOnBlackOnly) {
  Decode("abcd");
  attr_[0] = 4;
  attr_[1] = 4 | kAttrBold;
  attr_[2] = 4 | 7 << kAttrBackgroundShift;
  const RowLook plain = Look(-1, false, false);
  EXPECT_EQ(plain[0].foreground, 0x000080u);
  EXPECT_EQ(plain[1].foreground, 0x0000FFu);
  const RowLook lighter = Look();
  EXPECT_NE(lighter[0].foreground, plain[0].foreground);
  EXPECT_NE(lighter[1].foreground, plain[1].foreground);
  EXPECT_NE(lighter[0].foreground, lighter[1].foreground);
  EXPECT_EQ(lighter[2].foreground, 0x000080u);
}

TEST_F(RowCellsTest, BlueBlocksStayAsBlueAsTheBackgroundsBesideThem) {
  tables_->big5ToUnicode[0xF9 + 256 * 0xFE] = u'▓';
  Decode("\xF9\xFE");
  attr_[0] = attr_[1] = 4;
  attr_[2] = 4 << kAttrBackgroundShift;
  const RowLook look = Look();
  EXPECT_EQ(look[0].foreground, look[2].background);
  EXPECT_EQ(look[1].foreground, look[2].background);
}

TEST_F(RowCellsTest, CaretCanBeSeenWhateverTheAttribute) {
  for (unsigned attr = 0; attr < 256; ++attr) {
    attr_[0] = static_cast<std::uint8_t>(attr);
    const CellLook cell = Look(0)[0];
    const std::uint32_t caret = CaretColour(cell);
    int distance = 0;
    for (const int shift : {0, 8, 16})
      distance += std::abs(static_cast<int>(caret >> shift & 0xFF) -
                           static_cast<int>(cell.background >> shift & 0xFF));
    EXPECT_GE(distance, 96) << attr;
  }
}

}  // namespace
}  // namespace quillet
