#include "render/place_row.h"

#include <gtest/gtest.h>
#include <string>

#include "core/charset.h"
#include "render/style_colours.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using PlaceRowTest = WithTables;

PageRow RowOf(std::u16string_view text) {
  const ScreenSnapshot screen = ScreenBuilder().Put(0, 0, text).screen;
  return PlainRow(screen.text[0], screen.attr[0]);
}

std::u16string TextOf(const PageRow& row) {
  std::string bytes;
  for (const PageCell& cell : row.cells)
    bytes += static_cast<char>(cell.byte);
  bytes.erase(bytes.find_last_not_of(' ') + 1);
  return FromBig5(bytes);
}

TEST_F(PlaceRowTest, APlaceStandsWhereItsAddressStoodOrBehindTheLine) {
  using enum PlaceSpot;
  const struct {
    std::u16string_view line, address, place, shown;
    PlaceSpot spot;
  } cases[] = {
      {u"推 a: 好            192.0.2.7 11/06", u"192.0.2.7", u"日本", u"推 a: 好                 日本 11/06",
       kOverAddress},
      {u"推 a: 好        192.0.2.7 11/06", u"192.0.2.7", u"*VPN#奧拉拉大學",
       u"推 a: 好  *VPN#奧拉拉大學 11/06", kOverAddress},
      {u"推 a: 好好好 192.0.2.7 11/06", u"192.0.2.7", u"奧拉拉大學", u"推 a: 好好好  奧拉拉… 11/06",
       kOverAddress},
      {u"推 a: 好192.0.2.7 11/06", u"192.0.2.7", u"*pxy奧拉拉大學", u"推 a: 好 *pxy奧… 11/06", kOverAddress},
      {u"※ 來自: 192.0.2.7 (臺灣)", u"192.0.2.7", u"#臺灣", u"※ 來自: 192.0.2.7 (臺灣) #臺灣", kBehindLine},
  };
  for (const auto& entry : cases) {
    PageRow row = RowOf(entry.line);
    const std::string bytes = ToBig5(entry.line.substr(0, entry.line.find(entry.address)));
    const int first = static_cast<int>(bytes.size());
    const CellRange address{first, first + static_cast<int>(entry.address.size())};
    const PageRow before = row;
    const CellRange cells = LayPlace(row, address, entry.place, entry.spot);
    EXPECT_EQ(TextOf(row), entry.shown) << ToBig5(entry.line);
    for (std::size_t col = 0; col < kCols; ++col) {
      const bool isTaken = cells.Has(static_cast<int>(col)) || address.Has(static_cast<int>(col));
      EXPECT_TRUE(isTaken || row.cells[col] == before.cells[col]) << col;
    }
  }
}

TEST_F(PlaceRowTest, MarksAreSeenAtAGlanceAndTheUnknownIsNone) {
  PageRow row = RowOf(u"192.0.2.7");
  const CellRange cells = LayPlace(row, {0, 9}, u"*VPN#日", PlaceSpot::kOverAddress);
  for (int col = cells.first; col < cells.last; ++col)
    EXPECT_EQ(row.cells[static_cast<std::size_t>(col)].fore, col < cells.first + 5 ? kPlaceMark : kQuietText);
  const PlaceText unknown = ReadPlaceText(u"*pxy#未知網域");
  EXPECT_TRUE(unknown.mark == u"*pxy" && !unknown.isUncertain && !unknown.isKnown);
  PageRow narrow = RowOf(u"");
  EXPECT_TRUE(LayPlace(narrow, {78, 81}, u"日本", PlaceSpot::kOverAddress).IsEmpty());
}

}  // namespace
}  // namespace quillet
