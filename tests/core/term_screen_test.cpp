#include "core/term_screen.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "tests/support/feeding.h"

namespace quillet {
namespace {

TEST(TermScreenTest, ClearRestoresTheBytesBehindTheRowsAndNothingElse) {
  TermScreen screen;
  screen.Feed(AsBytes(NumberedRows() + "\x1b[1;33;44m" + At(7, 5)));
  for (ScreenRow& row : screen.text)
    row.fill('x');
  for (ScreenRow& row : screen.attr)
    row.fill(0x40);
  screen.Clear();
  for (std::size_t row = 0; row < kRows; ++row) {
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(screen.text[row].data())), std::string(81, ' '));
    EXPECT_EQ(screen.text[row][81], 0);
    for (std::size_t col = 82; col < kRowStride; ++col)
      EXPECT_EQ(screen.text[row][col], ' ');
    for (const std::uint8_t attr : screen.attr[row])
      EXPECT_EQ(attr, kAttrBlank);
  }
  EXPECT_EQ(screen.cursorRow, 7);
  EXPECT_EQ(screen.cursorCol, 5);
  EXPECT_EQ(screen.curAttr, 0x8Bu);
}

}  // namespace
}  // namespace quillet
