#include "input/text/copy_text.h"

#include <gtest/gtest.h>

#include "tests/support/kept_lines.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

constexpr std::uint8_t kRed = 1;
constexpr std::uint8_t kBoldRed = 1 | kAttrBold;
constexpr std::uint8_t kOnBlue = 7 | 4 << kAttrBackgroundShift;

class CopyTextTest : public WithTables {
 protected:
  Selection All() const {
    Selection all;
    all.SelectAll(text);
    return all;
  }
  std::u16string Text() const { return SelectedText(All(), text); }
  std::u16string Ansi() const { return SelectedAnsi(All(), text); }
  std::u16string Html() const { return SelectedHtml(All(), text, look); }
  // What stands between the tags of the whole.
  std::u16string HtmlLines() const {
    const std::u16string html = Html();
    const std::size_t begin = html.find(u'>') + 1;
    return html.substr(begin, html.size() - begin - std::u16string_view(u"</pre>").size());
  }

  KeptLines text;
  CopyLook look{.plain = {0xA0B007, 0xA0B010}, .of = [this](int line) {
                  LineColours colours{};
                  for (std::size_t col = 0; col < colours.size(); ++col) {
                    const std::uint8_t attr = text.Line(line).attr[col];
                    colours[col] = {0xA0B000U + (attr & 0xFU), 0xA0B010U + unsigned(BackgroundOf(attr))};
                  }
                  return colours;
                }};
};

TEST_F(CopyTextTest, BlanksAtLineEndsGo) {
  text = {u"  one  ", u"二　　 ", u"", u"　", u"x"};
  EXPECT_EQ(Text(), u"  one\r\n二\r\n\r\n\r\nx");
  EXPECT_EQ(Ansi(), u"  one\n二\n\n\nx") << "there is no colour";
}

TEST_F(CopyTextTest, CodesWithoutACharacterAreLeftOutAndControlsAreBlanks) {
  text = {u"ab__cd", u"x_y", u""};
  text.lines[0].text[2] = 0x81;  // not in the table
  text.lines[0].text[3] = 0xFF;
  text.lines[1].text[1] = 0x1B;
  text.lines[2].text[kCols - 1] = 0xA4;  // half a character
  EXPECT_EQ(Text(), u"abcd\r\nx y\r\n");
}

TEST_F(CopyTextTest, ColourSequencesSayOnlyWhatChanges) {
  text = {u"", u""};
  PutInLine(text.lines[0], 0, u"a");
  PutInLine(text.lines[0], 1, u"b", kRed);
  PutInLine(text.lines[0], 2, u"推", kBoldRed);
  PutInLine(text.lines[0], 4, u"c", kRed);
  PutInLine(text.lines[0], 5, u"d", kAttrBlank);
  PutInLine(text.lines[0], 6, u"e", kOnBlue | kAttrBlink);
  PutInLine(text.lines[1], 0, u"f", kBoldRed);
  EXPECT_EQ(Ansi(),
            u"a\x1B[31mb\x1B[1m推\x1B[0;31mc\x1B[md\x1B[5;44me\x1B[m\n"
            u"\x1B[1;31mf\x1B[m");
}

TEST_F(CopyTextTest, ACharacterOfTwoColoursTakesTheFirst) {
  text = {u"中b"};
  text.lines[0].attr[0] = kRed;
  text.lines[0].attr[1] = kOnBlue;
  EXPECT_EQ(Ansi(), u"\x1B[31m中\x1B[mb");
  EXPECT_EQ(HtmlLines(), u"<span style=\"color:#a0b001;background-color:#a0b010\">中</span>b");
}

TEST_F(CopyTextTest, HtmlIsEscapedAndInTheColoursOfTheScreen) {
  text = {u"a & <b> \"c\"", u"x"};
  PutInLine(text.lines[1], 0, u"x<", kOnBlue | kAttrBold | kAttrBlink);
  EXPECT_EQ(HtmlLines(),
            u"a &amp; &lt;b&gt; &quot;c&quot;\n"
            u"<span style=\"color:#a0b00f;background-color:#a0b014\">x&lt;</span>");
  const std::u16string html = Html();
  EXPECT_TRUE(html.starts_with(u"<pre style=\"")) << "a fragment";
  EXPECT_NE(html.find(u"monospace"), std::u16string::npos);
  EXPECT_NE(html.find(u"color:#a0b007;background-color:#a0b010\">"), std::u16string::npos);
  // Readers of HTML drop a line end that follows the tag.
  text = {u"", u"x"};
  EXPECT_EQ(HtmlLines(), u"\n\nx");
  EXPECT_EQ(SelectedHtml({}, text, look), u"") << "nothing is selected";
}

TEST_F(CopyTextTest, AColumnIsCopiedInEveryForm) {
  text = {u"", u""};
  PutInLine(text.lines[0], 0, u"ab", kRed);
  PutInLine(text.lines[0], 2, u"cd");
  PutInLine(text.lines[1], 0, u"甲乙", kOnBlue);
  Selection column;
  column.Begin({0, 1}, SelectUnit::kCharacter, SelectShape::kColumn, text);
  column.ExtendTo({1, 3}, text);
  EXPECT_EQ(SelectedText(column, text), u"bc\r\n乙");
  EXPECT_EQ(SelectedAnsi(column, text), u"\x1B[31mb\x1B[mc\n\x1B[44m乙\x1B[m");
  EXPECT_NE(SelectedHtml(column, text, look).find(u">b</span>c\n<span"), std::u16string::npos);
}

}  // namespace
}  // namespace quillet
