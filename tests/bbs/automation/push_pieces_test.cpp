#include "bbs/automation/push_pieces.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "core/charset.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

class PushPiecesTest : public WithTables {
 protected:
  static std::vector<std::u16string> Texts(std::u16string_view text, int columns) {
    std::vector<std::u16string> texts;
    for (const PushPiece& piece : CutIntoPushes(text, columns))
      texts.push_back(piece.text);
    return texts;
  }
};

using Pieces = std::vector<std::u16string>;

TEST_F(PushPiecesTest, EachLineOfTheTextIsAPieceOfItsOwn) {
  EXPECT_EQ(Texts(u"第一行\n\n  \t\n第二行  \r\n　\r\n  縮排\n", 30),
            (Pieces{u"第一行", u"第二行", u"  縮排"}));
  EXPECT_EQ(Texts(u"a\tb", 30), Pieces{u"a b"});
  EXPECT_TRUE(Texts(u" \n\t\n　", 30).empty());
}

TEST_F(PushPiecesTest, AFullLineIsCutBetweenCharactersNeverThroughOne) {
  EXPECT_EQ(Texts(u"一二三四五六", 9), (Pieces{u"一二三四", u"五六"}));
  EXPECT_EQ(Texts(u"a一二三四五六", 9), (Pieces{u"a一二三四", u"五六"}));
}

TEST_F(PushPiecesTest, APunctuationMarkNearTheEndIsWhereALineEnds) {
  EXPECT_EQ(Texts(u"今天天氣很好，我們出去走走吧", 20), (Pieces{u"今天天氣很好，", u"我們出去走走吧"}));
  // Too far from the end.
  EXPECT_EQ(Texts(u"好，我們出去走走吧今天天氣很好", 20), (Pieces{u"好，我們出去走走吧今", u"天天氣很好"}));
  // No line begins with a mark that closes something, or ends with one that opens something.
  EXPECT_EQ(Texts(u"一二三四五六七八九十。甲", 20), (Pieces{u"一二三四五六七八九", u"十。甲"}));
  EXPECT_EQ(Texts(u"一二三四五六七八九「甲乙」", 20), (Pieces{u"一二三四五六七八九", u"「甲乙」"}));
  EXPECT_EQ(Texts(u"一二三四五六七八九十 。甲", 20), (Pieces{u"一二三四五六七八九", u"十 。甲"}));
  // A blank between words is nearer to the end, but no pause.
  EXPECT_EQ(Texts(u"one two three, four five", 20), (Pieces{u"one two three,", u"four five"}));
}

TEST_F(PushPiecesTest, WordsAndAddressesStayWholeWhereTheyFit) {
  EXPECT_EQ(Texts(u"one two three four five", 12), (Pieces{u"one two", u"three four", u"five"}));
  EXPECT_EQ(Texts(u"請看 https://www.bbs.example/a?b=c,d", 32),
            (Pieces{u"請看", u"https://www.bbs.example/a?b=c,d"}));
  EXPECT_EQ(Texts(u"這個在https://bbs.example/abc裡面", 24),
            (Pieces{u"這個在", u"https://bbs.example/abc", u"裡面"}));
  // Longer than any line: cut where the line is full.
  EXPECT_EQ(Texts(u"看 01234567890123456789012345678901", 20),
            (Pieces{u"看 01234567890123456", u"789012345678901"}));
}

TEST_F(PushPiecesTest, WhatTheBbsCannotShowIsLeftOutAndNamedOnce) {
  const std::u16string text = u"好😀的\x1b[31m呀😀\u200D\uFE0F\u0e01";
  EXPECT_EQ(Texts(text, 40), Pieces{u"好的[31m呀"});
  EXPECT_EQ(UnpushableIn(text), u"😀\u0e01");
  EXPECT_TRUE(Texts(u"😀😀", 40).empty());
  EXPECT_EQ(UnpushableIn(u"平常的 text\n，。"), u"");
}

TEST_F(PushPiecesTest, AFieldWithoutRoomTakesNothing) {
  for (const int columns : {-5, 0, 1})
    EXPECT_FALSE(CutPushPiece(u"好", columns)) << columns;
  EXPECT_EQ(Texts(u"    好", 2), Pieces{u"好"});
}

// The visible characters of a text, as the BBS would show them.
std::string Ink(std::u16string_view text) {
  std::u16string ink;
  for (const char16_t unit : text)
    if (unit > 0x20 && unit != 0x7F && unit != 0x3000 && unit != 0xA0 && unit != 0x85) ink += unit;
  return ToBig5(ink);
}

TEST_F(PushPiecesTest, NothingIsLostOrTooWideWhateverTheText) {
  std::mt19937 random(20);
  const std::u16string alphabet = u"一二三，。「」！ab cd.e/:?=-  \t\n\r　😀ก\u200b\x01\x1b\u2028";
  for (int round = 0; round < 3000; ++round) {
    std::u16string text;
    const std::size_t length = random() % 120;
    while (text.size() < length)
      text += random() % 20 == 0 ? static_cast<char16_t>(random()) : alphabet[random() % alphabet.size()];
    const int columns = 2 + static_cast<int>(random() % 50);
    std::string ink;
    std::u16string_view rest = text;
    int count = 0;
    while (const auto piece = CutPushPiece(rest, columns)) {
      const std::string bytes = ToBig5(piece->text);
      ASSERT_GT(piece->taken, 0u);
      ASSERT_LE(piece->taken, rest.size());
      ASSERT_EQ(std::ssize(bytes), piece->columns);
      ASSERT_LE(piece->columns, columns);
      ASSERT_NE(piece->text, u"");
      ASSERT_NE(piece->text.back(), u' ');
      ASSERT_EQ(std::count_if(bytes.begin(), bytes.end(),
                              [](char byte) { return static_cast<unsigned char>(byte) < 0x20; }),
                0);
      ink += Ink(piece->text);
      rest.remove_prefix(piece->taken);
      ++count;
    }
    std::u16string known;
    for (const char16_t unit : text)
      if (ToBig5({&unit, 1}).size() <= 2 && UnpushableIn({&unit, 1}).empty()) known += unit;
    ASSERT_EQ(ink, Ink(known)) << "round " << round;
    ASSERT_EQ(CountPushes(text, columns), count);
  }
}

}  // namespace
}  // namespace quillet
