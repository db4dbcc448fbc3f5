#include "input/text/selection.h"

#include <gtest/gtest.h>

#include "input/text/copy_text.h"
#include "tests/support/kept_lines.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

class SelectionTest : public WithTables {
 protected:
  void Begin(TextPoint at, SelectUnit unit = SelectUnit::kCharacter,
             SelectShape shape = SelectShape::kStream) {
    selection.Begin(at, unit, shape, text);
  }
  std::u16string To(TextPoint at) {
    selection.ExtendTo(at, text);
    return SelectedText(selection, text);
  }
  std::u16string Between(TextPoint from, TextPoint to, SelectShape shape = SelectShape::kStream) {
    Begin(from, SelectUnit::kCharacter, shape);
    return To(to);
  }
  std::u16string Word(int col) {
    Begin({0, col}, SelectUnit::kWord);
    return SelectedText(selection, text);
  }

  KeptLines text;
  Selection selection;
};

TEST_F(SelectionTest, ItIsTheTextBetweenTwoPoints) {
  text = {u"first line", u"第二行 of three", u"last"};
  EXPECT_EQ(Between({0, 6}, {2, 2}), u"line\r\n第二行 of three\r\nla");
  EXPECT_EQ(Between({1, 2}, {1, 6}), u"二行");
  EXPECT_EQ(Between({1, 6}, {1, 6}), u"");
  EXPECT_TRUE(selection.IsEmpty());
  EXPECT_EQ(Between({0, 6}, {1, 0}), u"line\r\n") << "the line's end";
}

TEST_F(SelectionTest, ACharacterIsInWhenItsFirstHalfIs) {
  text = {u"a中文b"};
  EXPECT_EQ(Between({0, 0}, {0, 2}), u"a中");
  EXPECT_EQ(Between({0, 2}, {0, 6}), u"文b");
  EXPECT_EQ(Between({0, 1}, {0, 4}), u"中文");
  EXPECT_EQ(Between({0, 2}, {0, 3}), u"") << "the same point, as the second halves have none";
}

TEST_F(SelectionTest, PointsOutsideTheTextCountAsTheNearestInside) {
  text = {u"one", u"two"};
  EXPECT_EQ(Between({-5, 40}, {99, -7}), u"one\r\ntwo");
  EXPECT_EQ(Between({1, -9}, {1, 900}), u"two");
  EXPECT_EQ(selection.Range(1, text), (ColumnSpan{0, kCols}));
  EXPECT_TRUE(selection.Range(-1, text).IsEmpty());
  EXPECT_TRUE(selection.Range(2, text).IsEmpty());
}

TEST_F(SelectionTest, NothingCanBeSelectedWhereThereIsNoText) {
  Begin({3, 3}, SelectUnit::kWord);
  EXPECT_EQ(To({5, 5}), u"");
  selection.SelectAll(text);
  EXPECT_TRUE(selection.IsEmpty());
}

TEST_F(SelectionTest, ALineTakenAwayUnderneathIsLeftOut) {
  text = {u"one", u"two", u"three"};
  Between({0, 0}, {2, 5});
  text.lines.pop_back();
  EXPECT_EQ(SelectedText(selection, text), u"one\r\ntwo");
  EXPECT_TRUE(selection.Range(2, text).IsEmpty());
}

TEST_F(SelectionTest, AColumnIsTheSameCellsOfEachLine) {
  text = {u"abcdef", u"甲乙丙", u"x"};
  EXPECT_EQ(Between({0, 1}, {2, 4}, SelectShape::kColumn), u"bcd\r\n乙\r\n");
  EXPECT_EQ(Between({0, 4}, {2, 1}, SelectShape::kColumn), u"bcd\r\n乙\r\n") << "by its other diagonal";
  EXPECT_EQ(Between({0, 2}, {1, 3}, SelectShape::kColumn), u"c\r\n乙") << "a first half is enough";
  Between({0, 3}, {2, 3}, SelectShape::kColumn);
  EXPECT_TRUE(selection.IsEmpty());
}

TEST_F(SelectionTest, WordsEndWhereTheKindOfCharacterChanges) {
  text = {u"推 some_id-2: 今天天氣，Ａ１ カナ(x)"};
  EXPECT_EQ(Word(0), u"推");
  EXPECT_EQ(Word(5), u"some_id-2");
  EXPECT_EQ(Word(11), u"some_id-2") << "its last cell";
  EXPECT_EQ(Word(12), u":");
  EXPECT_EQ(Word(15), u"今天天氣") << "a second half";
  EXPECT_EQ(Word(22), u"，");
  EXPECT_EQ(Word(24), u"Ａ１");
  EXPECT_EQ(Word(29), u"カナ");
  EXPECT_EQ(Word(33), u"(");
  Word(2);
  EXPECT_EQ(selection.Range(0, text), (ColumnSpan{2, 3})) << "a blank";
}

TEST_F(SelectionTest, AWebAddressIsOneWord) {
  text = {u"看這裡https://bbs.example/bbs/Test/M.1.A.0.html?a=1&b=2#c這個 (HTTP://x.example) http: end"};
  EXPECT_EQ(Word(20), u"https://bbs.example/bbs/Test/M.1.A.0.html?a=1&b=2#c");
  EXPECT_EQ(Word(6), u"https://bbs.example/bbs/Test/M.1.A.0.html?a=1&b=2#c");
  EXPECT_EQ(Word(0), u"看這裡");
  EXPECT_EQ(Word(57), u"這個");
  EXPECT_EQ(Word(64), u"HTTP://x.example)");
  EXPECT_EQ(Word(62), u"(") << "not the sign before it";
}

TEST_F(SelectionTest, WordsAndLinesAreAddedWholeAndTheFirstOneStays) {
  text = {u"one two three", u"四五，六"};
  Begin({0, 5}, SelectUnit::kWord);
  EXPECT_EQ(To({0, 9}), u"two three");
  EXPECT_EQ(To({0, 7}), u"two") << "up to it, but not into it";
  To({0, 8});
  EXPECT_EQ(selection.Range(0, text), (ColumnSpan{4, 8})) << "up to the next one";
  EXPECT_EQ(To({0, 5}), u"two");
  EXPECT_EQ(To({0, 1}), u"one two");
  EXPECT_EQ(To({1, 0}), u"two three\r\n");
  EXPECT_EQ(To({1, 2}), u"two three\r\n四五");
  EXPECT_EQ(To({1, 5}), u"two three\r\n四五，");
  Begin({1, 2}, SelectUnit::kLine);
  EXPECT_EQ(selection.Range(1, text), (ColumnSpan{0, kCols}));
  EXPECT_EQ(To({0, 80}), u"one two three\r\n四五，六");
}

TEST_F(SelectionTest, AWordCanBeMadeShorterByCharacters) {
  text = {u"one two three"};
  Begin({0, 5}, SelectUnit::kWord);
  selection.ContinueByCharacter();
  EXPECT_EQ(To({0, 6}), u"tw");
  Begin({0, 5}, SelectUnit::kWord);
  To({0, 1});
  selection.ContinueByCharacter();
  EXPECT_EQ(To({0, 2}), u"e two");
}

}  // namespace
}  // namespace quillet
