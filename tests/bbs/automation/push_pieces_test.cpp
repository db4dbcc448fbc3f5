#include "bbs/automation/push_pieces.h"

#include <algorithm>
#include <random>

#include "core/charset.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using PushPiecesTest = WithTables;
using Pieces = std::vector<std::u16string>;

Pieces Texts(std::u16string_view text, int columns) {
  Pieces texts;
  for (const PushPiece& piece : CutIntoPushes(text, columns))
    texts.push_back(piece.text);
  return texts;
}

TEST_F(PushPiecesTest, LinesAreCutAsOneWouldCutThemByHand) {
  const struct {
    std::u16string text;
    int columns;
    Pieces pieces;
  } cases[] = {
      // Each line of the text is a piece of its own.
      {u"第一行\n\n  \t\n第二行  \r\n　\r\n  縮排\n", 30, {u"第一行", u"第二行", u"  縮排"}},
      {u"a\tb", 30, {u"a b"}},
      {u" \n\t\n　", 30, {}},
      {u"    好", 2, {u"好"}},
      // Between characters, never through one.
      {u"一二三四五六", 9, {u"一二三四", u"五六"}},
      {u"a一二三四五六", 9, {u"a一二三四", u"五六"}},
      // At a punctuation mark near the end, but not too far from it.
      {u"今天天氣很好，我們出去走走吧", 20, {u"今天天氣很好，", u"我們出去走走吧"}},
      {u"好，我們出去走走吧今天天氣很好", 20, {u"好，我們出去走走吧今", u"天天氣很好"}},
      // No line begins with a mark that closes something, or ends with one that opens something.
      {u"一二三四五六七八九十。甲", 20, {u"一二三四五六七八九", u"十。甲"}},
      {u"一二三四五六七八九「甲乙」", 20, {u"一二三四五六七八九", u"「甲乙」"}},
      {u"一二三四五六七八九十 。甲", 20, {u"一二三四五六七八九", u"十 。甲"}},
      // A blank between words is nearer to the end, but no pause.
      {u"one two three, four five", 20, {u"one two three,", u"four five"}},
      // Words and addresses stay whole where they fit.
      {u"one two three four five", 12, {u"one two", u"three four", u"five"}},
      {u"請看 https://www.bbs.example/a?b=c,d", 32, {u"請看", u"https://www.bbs.example/a?b=c,d"}},
      {u"這個在https://bbs.example/abc裡面", 24, {u"這個在", u"https://bbs.example/abc", u"裡面"}},
      {u"看 01234567890123456789012345678901", 20, {u"看 01234567890123456", u"789012345678901"}},
      // What the BBS cannot show is left out.
      {u"好😀的\x1b[31m呀😀\u200D\uFE0F\u0e01", 40, {u"好的[31m呀"}},
      {u"😀😀", 40, {}},
  };
  for (const auto& each : cases)
    EXPECT_EQ(Texts(each.text, each.columns), each.pieces) << &each - cases;
  for (const int columns : {-5, 0, 1})
    EXPECT_FALSE(CutPushPiece(u"好", columns)) << columns;
  EXPECT_EQ(LikelyPushColumns(99), LikelyPushColumns(12)) << "no id is longer";
}

TEST_F(PushPiecesTest, WhatTheBbsCannotShowIsNamedOnce) {
  EXPECT_EQ(UnpushableIn(u"好😀的\x1b[31m呀😁😀\u200D\uFE0F\u0e01"), u"😀😁\u0e01");
  EXPECT_EQ(UnpushableIn(u"平常的 text\n，。"), u"");
}

// The visible characters of a text, as the BBS would show them.
std::string Ink(std::u16string_view text) {
  std::u16string ink;
  for (const char16_t unit : text)
    if (unit > u' ' && unit != u'　' && UnpushableIn({&unit, 1}).empty()) ink += unit;
  return ToBig5(ink);
}

TEST_F(PushPiecesTest, NothingIsLostOrTooWideWhateverTheText) {
  std::mt19937 random(20);
  const std::u16string alphabet = u"一二三，。「」！ab cd.e/:?=-  \t\n\r　😀ก\u200b\x01\x1b\u2028";
  for (int round = 0; round < 3000; ++round) {
    std::u16string text(random() % 120, u' ');
    std::generate(text.begin(), text.end(), [&] { return alphabet[random() % alphabet.size()]; });
    const int columns = 2 + static_cast<int>(random() % 50);
    std::string ink;
    std::size_t taken = 0;
    const std::vector<PushPiece> pieces = CutIntoPushes(text, columns);
    for (const PushPiece& piece : pieces) {
      const std::string bytes = ToBig5(piece.text);
      ASSERT_EQ(std::ssize(bytes), piece.columns);
      ASSERT_LE(piece.columns, columns);
      ASSERT_TRUE(!bytes.empty() && bytes.back() != ' ');
      ASSERT_EQ(bytes.find_first_of("\x01\x1b\t\r\n"), bytes.npos);
      ink += Ink(piece.text);
      taken += piece.taken;
    }
    ASSERT_EQ(ink, Ink(text)) << "round " << round;
    ASSERT_LE(taken, text.size());
    ASSERT_EQ(CountPushes(text, columns), std::ssize(pieces));
  }
}

}  // namespace
}  // namespace quillet
