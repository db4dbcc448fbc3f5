#include "settings/files/text_lines.h"

#include <gtest/gtest.h>
#include <limits>

namespace quillet {
namespace {

using Lines = std::vector<std::u16string>;

TEST(TextLinesTest, MarkLineEndsAndBlanksAreNoPartOfLines) {
  const Lines expected{u"[Basic]", u"a b=中", u"last"};
  EXPECT_EQ(ReadLines("[Basic]\na b=中\nlast").lines, expected);
  EXPECT_EQ(ReadLines("\xEF\xBB\xBF \t[Basic]\r\n\r\n \t \r\na b=中\t\r\n\nlast \r\n").lines, expected);
  EXPECT_TRUE(ReadLines("").lines.empty());
  EXPECT_TRUE(ReadLines("\xEF\xBB\xBF").lines.empty());
  // Only what a writer puts first is a mark, and other blanks belong to the text.
  EXPECT_EQ(ReadLines("x\n\xEF\xBB\xBFy\n\u3000z").lines, (Lines{u"x", u"\uFEFFy", u"\u3000z"}));
}

TEST(TextLinesTest, LineLongerThanTheReadersBufferGoesOnAsAnother) {
  const auto line = [](std::size_t count) { return std::string(count, 'a') + "\nnext"; };
  EXPECT_EQ(ReadLines(line(511)).lines, (Lines{std::u16string(511, u'a'), u"next"}));
  EXPECT_EQ(ReadLines(line(512)).lines, (Lines{std::u16string(511, u'a'), u"a", u"next"}));
  EXPECT_EQ(ReadLines(line(1023)).lines,
            (Lines{std::u16string(511, u'a'), std::u16string(511, u'a'), u"a", u"next"}));
  // Leading blanks count, and each piece is trimmed.
  EXPECT_EQ(ReadLines(std::string(510, ' ') + "a   b").lines, (Lines{u"a", u"b"}));
}

TEST(TextLinesTest, PairIsNeverCutInTwo) {
  const std::u16string_view face = u"🙂";
  const TextLines read = ReadLines(std::string(510, 'a') + "🙂b");
  EXPECT_EQ(read.lines, (Lines{std::u16string(510, u'a'), std::u16string(face) + u"b"}));
  EXPECT_EQ(OneLine(std::u16string(3, u'a').append(face), 4), u"aaa");
  EXPECT_EQ(OneLine(std::u16string(3, u'a').append(face), 5), std::u16string(u"aaa").append(face));
}

TEST(TextLinesTest, LineThatIsNoTextIsLeftOutAndNamed) {
  const struct {
    const char* name;
    std::string bytes;
  } cases[] = {
      {"Big5", "\xA4\xA4\xA4\xE5"},           {"lonely continuation", "a\x80"},
      {"cut at the line's end", "\xE4\xB8"},  {"overlong of two", "\xC0\x80"},
      {"overlong of three", "\xE0\x9F\xBF"},  {"overlong of four", "\xF0\x8F\xBF\xBF"},
      {"surrogate", "\xED\xA0\x80"},          {"beyond the last character", "\xF4\x90\x80\x80"},
      {"five bytes", "\xF8\x88\x80\x80\x80"}, {"NUL", std::string("a\0b", 3)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const TextLines read = ReadLines("first\n\n" + c.bytes + "\nlast\n" + c.bytes);
    EXPECT_EQ(read.lines, (Lines{u"first", u"last"}));
    EXPECT_EQ(read.firstBadLine, 3U);
  }
  EXPECT_EQ(ReadLines("\xEF\xBF\xBF \xF4\x8F\xBF\xBF \xED\x9F\xBF \xC2\xA0 a\tb").firstBadLine, 0U);
  const TextLines controls = ReadLines("first\n\x1A id=a\x7F\xC2\x85\x1B[m\n\x1A\n");
  EXPECT_EQ(controls.lines, (Lines{u"first", u"id=a[m"}));
  EXPECT_EQ(controls.firstBadLine, 2U);
}

TEST(TextLinesTest, EncodedTextReadsBackWithEitherLineEnd) {
  const std::u16string text = u"a\nß\n中\n🙂\n";
  EXPECT_EQ(EncodeText(text, "\n"),
            "\xEF\xBB\xBF"
            "a\nß\n中\n🙂\n");
  EXPECT_EQ(EncodeText(u"a\nb\r\nc\r\n\n", "\r\n"),
            "\xEF\xBB\xBF"
            "a\r\nb\r\nc\r\n\r\n");
  EXPECT_EQ(ReadLines(EncodeText(text, "\r\n")).lines, (Lines{u"a", u"ß", u"中", u"🙂"}));
}

TEST(TextLinesTest, UnpairedSurrogateBecomesAReplacementCharacter) {
  const std::u16string broken{u'a', 0xDC00, 0xD800, u'b', 0xD83D};
  EXPECT_EQ(ReadLines(EncodeText(broken, "\n")).lines, (Lines{u"a\uFFFD\uFFFDb\uFFFD"}));
  EXPECT_EQ(OneLine(broken), u"a\uFFFD\uFFFDb\uFFFD");
}

TEST(TextLinesTest, OneLineHoldsNothingThatEndsALine) {
  EXPECT_EQ(OneLine(u"a\r\nb\tc\u0085d\u007F\u0000e"), u"a  b c d ");
  EXPECT_EQ(OneLine(std::u16string_view(u"a\0b", 3)), u"a b");
  EXPECT_EQ(OneLine(std::u16string(600, u'x')).size(), kLongestLine);
  EXPECT_EQ(OneLine(u"abc", 0), u"");
}

TEST(TextLinesTest, NumbersReadAsFarAsTheyGo) {
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  EXPECT_EQ(ToNumber(u" \t42 files"), 42);
  EXPECT_EQ(ToNumber(u"-7"), -7);
  EXPECT_EQ(ToNumber(u"+7"), 7);
  for (const std::u16string_view none : {u"", u"abc", u"-", u"- 1", u"+-1", u"４"})
    EXPECT_EQ(ToNumber(none), 0);
  EXPECT_EQ(ToNumber(u"2147483647"), kMost);
  EXPECT_EQ(ToNumber(u"2147483648"), kMost);
  EXPECT_EQ(ToNumber(u"-2147483648"), kLeast);
  EXPECT_EQ(ToNumber(u"-2147483649"), kLeast);
  EXPECT_EQ(ToNumber(std::u16string(300, u'9')), kMost);
  for (const int number : {kMost, kLeast, 0, -1})
    EXPECT_EQ(ToNumber(ToText(number)), number);
}

}  // namespace
}  // namespace quillet
