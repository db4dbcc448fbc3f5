#include "input/text/screen_text.h"

#include <gtest/gtest.h>

#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using ScreenTextTest = WithTables;

TEST_F(ScreenTextTest, RowsLoseTrailingBlanksAndTheBottomsEmptyRows) {
  ScreenBuilder page;
  page.Put(0, 0, u"【主功能表】  奧拉拉 ").Put(2, 4, u"看板 abc");
  EXPECT_EQ(ScreenAsText(page.screen), u"【主功能表】  奧拉拉\n\n    看板 abc\n");
  EXPECT_EQ(ScreenAsText(ScreenBuilder().screen), u"");
  // A lone lead byte in the last column, or a pair that no table holds, leaves no NULs.
  page.screen.text[1][3] = 0x81;
  page.screen.text[1][4] = 0xFF;
  page.screen.text[1][kCols - 1] = 0xA4;
  EXPECT_EQ(RowAsText(page.screen, 1).find(u'\0'), std::u16string::npos);
}

}  // namespace
}  // namespace quillet
