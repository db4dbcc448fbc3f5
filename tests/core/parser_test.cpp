// What the parser makes of renditions, of too many parameters and of a cursor outside the screen. All else is
// held against the plain reference (parser_equality_test.cpp).
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "core/term_screen.h"
#include "tests/support/feeding.h"

namespace quillet {
namespace {

struct ParserTest : testing::Test {
  ParserTest() { Feed("\x1b[m"); }
  void Feed(std::string_view bytes) { screen.Feed(AsBytes(bytes)); }
  void ExpectCursor(int row, int col) {
    EXPECT_EQ(screen.cursorRow, row);
    EXPECT_EQ(screen.cursorCol, col);
  }
  TermScreen screen;
};

TEST_F(ParserTest, RenditionTable) {
  struct Row {
    const char* params;
    std::uint8_t from, to;
  };
  const Row rows[] = {{"", 0xFF, 0x07},        {"22", 0xFF, 0xF7},      {"3", 0x07, 0xE0},
                      {"7", 0x8B, 0x6C},       {"7;7", 0x8B, 0x8B},     {"6", 0x07, 0x17},
                      {"39", 0x09, 0x0F},      {"49", 0xE9, 0x09},      {"300", 0x07, 0x87},
                      {"1;33;44", 0x07, 0x8B}, {"44;7;31", 0x07, 0xE1}, {"38;5;196", 0x07, 0x17}};
  for (const Row& row : rows) {
    screen.curAttr = row.from;
    Feed(std::string("\x1b[") + row.params + "m");
    EXPECT_EQ(screen.curAttr, row.to) << row.params;
  }
}

TEST_F(ParserTest, ParametersAfterTheSixteenthAreDropped) {
  Feed("\x1b[31;1;1;1;1;1;1;1;1;1;1;1;1;1;1;44;32;5;0;300;;;;m");
  EXPECT_EQ(screen.curAttr, 0x89u);
  Feed("\x1b[" + std::string(600, ';') + "1m");
  EXPECT_EQ(screen.curAttr, kAttrBlank);
  Feed("\x1b[" + std::string(300, ';') + "5;9H");
  ExpectCursor(0, 0);
}

TEST_F(ParserTest, ACursorOutsideTheScreenTouchesNothing) {
  Feed(NumberedRows());
  const auto before = screen.text;
  const std::string longText(300, '#');
  for (const char* place :
       {"\x1b[25;1H", "\x1b[99;99H", "\x1b[127;5H", "\x1b[200;1H", "\x1b[5;81H", "\x1b[5;127H"}) {
    Feed(std::string(place) + "some text\x1b[K" + longText + "\x1b[K");
    EXPECT_EQ(screen.text, before) << place;
  }
  Feed("\x1b[99;3H\x1b[5L\x1bM\n\n\r");
  EXPECT_EQ(screen.text, before);
  ExpectCursor(100, 0);
  Feed("\x1b[128;128H");
  ExpectCursor(-128, -128);
  Feed("\x1b[127;127H" + longText + std::string(300, '\n'));
  ExpectCursor(127, 127);
}

}  // namespace
}  // namespace quillet
