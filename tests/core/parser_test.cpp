// What the parser does to the grid; who is told about it is tested in hand_over_test.cpp.
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

TEST_F(ParserTest, PlacesTheCursor) {
  Feed("\x1b[2;5H");
  ExpectCursor(1, 4);
  Feed("\x1b[H");
  ExpectCursor(0, 0);
  Feed("\x1b[24H");
  ExpectCursor(23, 0);
  Feed("\x1b[0;0H");
  ExpectCursor(0, 0);
  Feed("\x1b[;7H");
  ExpectCursor(0, 6);
  Feed("\x1b[3;4;5;6H");
  ExpectCursor(2, 3);
  Feed("\x1b[258;256H");  // 2 and 0 in eight bits
  ExpectCursor(1, 0);
}

TEST_F(ParserTest, RenditionTable) {
  struct Row {
    const char* params;
    std::uint8_t from, to;
  };
  const Row rows[] = {
      {"", 0xFF, 0x07},    {"0", 0xFF, 0x07},   {"1", 0x07, 0x0F},        {"22", 0xFF, 0xF7},
      {"3", 0x07, 0xE0},   {"7", 0x8B, 0x6C},   {"7", 0x1C, 0x98},        {"5", 0x07, 0x17},
      {"6", 0x07, 0x17},   {"25", 0x17, 0x17},  {"2", 0x0F, 0x0F},        {"4", 0x07, 0x07},
      {"30", 0x0F, 0x08},  {"37", 0x08, 0x0F},  {"38", 0x0A, 0x0A},       {"39", 0x09, 0x0F},
      {"40", 0xE7, 0x07},  {"47", 0x07, 0xE7},  {"48", 0x47, 0x47},       {"49", 0xE9, 0x09},
      {"300", 0x07, 0x87}, {"90", 0x07, 0x07},  {"1;33;44", 0x07, 0x8B},  {"44;7;31", 0x07, 0xE1},
      {"7;7", 0x8B, 0x8B}, {"0;1", 0xE0, 0x0F}, {";;31", 0xE8, 0x01},     {"1;7;0;5", 0x8B, 0x17},
      {"7;1", 0x07, 0xE8}, {"3;5", 0x0A, 0x58}, {"38;5;196", 0x07, 0x17}, {"31;7;44;3", 0x07, 0x04},
      {"1;", 0x00, 0x07},  {"01", 0x07, 0x0F},  {"7;40;22;7", 0x8B, 0x80}};
  for (const Row& row : rows) {
    // Twice: as a whole, and a byte at a time.
    const std::string sequence = std::string("\x1b[") + row.params + "m";
    screen.curAttr = row.from;
    Feed(sequence + "          ");
    EXPECT_EQ(screen.curAttr, row.to) << row.params;
    screen.curAttr = row.from;
    for (const char byte : sequence)
      Feed({&byte, 1});
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

TEST_F(ParserTest, SplitSequenceIsCompletedByNextRead) {
  Feed("\x1b[1;3");
  Feed("1m");
  EXPECT_EQ(screen.curAttr, 0x0Fu - 6);
  Feed("\x1b");
  Feed("[");
  Feed("12;");
  Feed("34Hx");
  EXPECT_EQ(screen.TextAt(11, 33), 'x');
}

TEST_F(ParserTest, ANewLineOrBellInsideASequenceEndsIt) {
  Feed("\x1b[2;\n5Hx");
  EXPECT_EQ(Row(screen, 0), "5Hx");
  Feed("\x1b[3\x1b[4;1H");  // the second ESC ends the first sequence, its "[" is text
  EXPECT_EQ(Row(screen, 0), "5Hx[4;1H");
}

TEST_F(ParserTest, UnknownSequencesAreSwallowedOrPrinted) {
  Feed("\x1b[5A\x1b[5B\x1b[5C\x1b[5D\x1b[2;3f\x1b[1;5r\x1b[s\x1b[ a\x1b(B\x1b\x1b|\x1b[?25lz");
  EXPECT_EQ(Row(screen, 0), "aB|25lz");
  ExpectCursor(0, 7);
}

TEST_F(ParserTest, ControlBytesOutsideTheFewAreCells) {
  Feed(
      std::string_view("a\t\0\x01\x1a\x1c\x7f\xff"
                       "b",
                       9));
  EXPECT_EQ(Row(screen, 0), std::string_view("a\t\0\x01\x1a\x1c\x7f\xff"
                                             "b",
                                             9));
}

TEST_F(ParserTest, NoWrapAtTheRightEdge) {
  std::string bytes;
  for (int i = 0; i < 85; ++i)
    bytes += static_cast<char>('!' + i);
  Feed(bytes);
  EXPECT_EQ(Row(screen, 0), bytes.substr(0, 79) + bytes.back());
  ExpectCursor(0, 79);
  EXPECT_EQ(Row(screen, 1), "");

  // Exactly full, one at a time, and with the edge at every place within a word.
  for (int start = 60; start < 80; ++start) {
    for (int count = 1; count < 40; ++count) {
      Feed("\x1b[J" + At(5, start));
      Feed(bytes.substr(0, static_cast<std::size_t>(count)) + "\x1b[m\x1b[m\x1b[m\x1b[m");
      const int last = std::min(start + count - 1, 79);
      ASSERT_EQ(screen.TextAt(5, last),
                static_cast<std::uint8_t>(bytes[static_cast<std::size_t>(count - 1)]));
      ASSERT_EQ(screen.cursorCol, std::min(start + count, 79));
    }
  }
}

TEST_F(ParserTest, LeadByteInTheLastColumnIsOverwrittenByItsTrail) {
  Feed(At(3, 79) + "\xa4\x40");
  EXPECT_EQ(screen.TextAt(3, 79), 0x40);
}

TEST_F(ParserTest, ReturnBackspaceAndLineFeed) {
  Feed("abc\b\bX\rY\b\b\n");
  EXPECT_EQ(Row(screen, 0), "YXc");
  ExpectCursor(1, 0);
  Feed(NumberedRows() + At(22, 3) + "\n");
  ExpectCursor(23, 3);
  EXPECT_EQ(Row(screen, 0).substr(0, 2), "0.");
  Feed("\x1b[44m\n");
  ExpectCursor(23, 3);
  EXPECT_EQ(Row(screen, 0).substr(0, 2), "1.");
  EXPECT_EQ(Row(screen, 22).substr(0, 3), "23.");
  EXPECT_EQ(Row(screen, 23), "");
  EXPECT_EQ(screen.AttrAt(23, 40), kAttrBlank);
}

TEST_F(ParserTest, EraseIgnoresItsParameter) {
  for (const char* erase : {"\x1b[K", "\x1b[1K", "\x1b[2K"}) {
    Feed(NumberedRows() + "\x1b[47m" + At(6, 4) + erase);
    EXPECT_EQ(Row(screen, 6), "6...");
    EXPECT_EQ(screen.AttrAt(6, 4), kAttrBlank);
    EXPECT_EQ(Row(screen, 7).size(), 80u);
    ExpectCursor(6, 4);
  }
  for (const char* erase : {"\x1b[J", "\x1b[2J"}) {
    Feed(NumberedRows() + At(6, 4) + erase);
    EXPECT_EQ(Row(screen, 0) + Row(screen, 23), "");
    ExpectCursor(6, 4);
  }
}

TEST_F(ParserTest, InsertLinesBlanksOnlyTheCursorRow) {
  Feed(NumberedRows() + At(10, 3) + "\x1b[2L");
  EXPECT_EQ(Row(screen, 10), "");
  EXPECT_EQ(Row(screen, 11).substr(0, 3), "11.");
  EXPECT_EQ(Row(screen, 12).substr(0, 3), "10.");
  EXPECT_EQ(Row(screen, 23).substr(0, 3), "21.");
  ExpectCursor(10, 3);

  Feed(NumberedRows() + At(22, 0) + "\x1b[0L");
  EXPECT_EQ(Row(screen, 22), "");
  EXPECT_EQ(Row(screen, 23).substr(0, 3), "22.");

  for (const char* many : {"\x1b[14L", "\x1b[127L"}) {  // further than there are rows
    Feed(NumberedRows() + At(10, 0) + many);
    EXPECT_EQ(Row(screen, 10), "");
    EXPECT_EQ(Row(screen, 23).substr(0, 3), "23.");
  }
  Feed(NumberedRows() + At(10, 0) + "\x1b[200L");  // negative
  EXPECT_EQ(Row(screen, 10).substr(0, 3), "10.");
}

TEST_F(ParserTest, EscapeMOpensALineAndStepsDown) {
  Feed(NumberedRows() + At(10, 3) + "\x1bM");
  EXPECT_EQ(Row(screen, 10), "10.");  // the row's start stays
  EXPECT_EQ(Row(screen, 11).size(), 80u);
  EXPECT_EQ(Row(screen, 11).substr(0, 3), "10.");
  EXPECT_EQ(Row(screen, 23).substr(0, 3), "22.");
  ExpectCursor(11, 3);

  Feed(NumberedRows() + At(23, 3) + "\x1bM");
  EXPECT_EQ(Row(screen, 22).substr(0, 3), "22.");
  EXPECT_EQ(Row(screen, 23), "23.");
  ExpectCursor(23, 3);
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
