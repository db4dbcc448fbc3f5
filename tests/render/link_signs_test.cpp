#include "render/link_signs.h"

#include <gtest/gtest.h>

#include "render/contrast.h"
#include "render/row_look.h"
#include "render/style_colours.h"

namespace quillet {
namespace {

// The columns that a picture's sign takes behind a link that ends before `last`; nothing else may change.
std::string SignBehind(int last, PageRow row, LinkKind kind = LinkKind::kPicture) {
  LinkPlaces links;
  links.Add({1, static_cast<std::uint8_t>(last), kind});
  const PageRow before = row;
  LayLinkSigns(links, row);
  std::string cols;
  for (std::size_t col = 0; col < kCols; ++col)
    if (IsSign(std::exchange(row.cells[col].fore, kPlainFore))) cols += std::to_string(col) + " ";
  EXPECT_EQ(row, before);
  return cols;
}

TEST(LinkSignsTest, ASignStandsOnlyWhereTheRowIsFree) {
  PageRow row;
  for (const LinkKind kind : {LinkKind::kPicture, LinkKind::kPicturePage, LinkKind::kVideo})
    EXPECT_EQ(SignBehind(9, row, kind), "10 11 ");
  for (const LinkKind kind : {LinkKind::kWeb, LinkKind::kArticleCode, LinkKind::kShortened})
    EXPECT_EQ(SignBehind(9, row, kind), "");
  EXPECT_EQ(SignBehind(74, row), "75 76 ");
  EXPECT_EQ(SignBehind(75, row), "") << "ages begin there";
  row.cells[13].byte = 'a';
  EXPECT_EQ(SignBehind(9, row), "10 11 ");
  EXPECT_EQ(SignBehind(10, row), "");
  row.cells[5].style = CS_HIDDEN;
  EXPECT_EQ(SignBehind(9, row), "") << "what hides the link hides its sign";
  row.cells[22].back = 17;
  EXPECT_EQ(SignBehind(20, row), "") << "on a coloured ground";
}

TEST(LinkSignsTest, SignsAreQuieterThanTextAndCanBeReadInEveryPalette) {
  for (const PaletteKind kind : {PaletteKind::kNormal, PaletteKind::kDark, PaletteKind::kDisguise})
    for (const std::uint8_t ground : {kPlainGround, kPushGround}) {
      PageRow row;
      row.cells[0] = {.byte = 'a', .back = ground};
      row.cells[1] = row.cells[2] = {.fore = kVideoSign, .back = ground};
      const RowLook look = ResolveRow(row, {}, false, Charset(), LookColours(PaletteOf(kind)));
      const double sign = Contrast(look[1].foreground, look[1].background);
      EXPECT_EQ(look[1].part, CellPart::kLead);
      EXPECT_GE(sign, kReadableContrast);
      EXPECT_LT(sign, Contrast(look[0].foreground, look[0].background));
    }
}

}  // namespace
}  // namespace quillet
