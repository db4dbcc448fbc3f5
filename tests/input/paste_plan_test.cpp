#include "input/paste_plan.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

PastePlan Elsewhere(std::u16string_view text) {
  return PlanPaste(text, PastePlace::kElsewhere, Wrap::kAt78ColumnsLeftOpen);
}

PastePlan InEditor(std::u16string_view text) {
  return PlanPaste(text, PastePlace::kEditor, Wrap::kAt78ColumnsLeftOpen);
}

TEST(PastePlanTest, TheEditorTakesEveryLineAtOnce) {
  EXPECT_EQ(InEditor(u"一\r\n\x1B[2J二\n"),
            (PastePlan{PasteWay::kSend, u"一\r二\r", Wrap::kAt78ColumnsLeftOpen}));
  EXPECT_EQ(PlanPaste(u"a", PastePlace::kEditor, Wrap::kNone), (PastePlan{PasteWay::kSend, u"a"}));
}

TEST(PastePlanTest, ColoursAreForTheEditorAndSequencesNoText) {
  for (const std::u16string_view text : {u"a\x1B[1;33mb\x1B[mc\n", u"a\x1B[Hb\x1B[1;3c\n",
                                         u"\x1B"
                                         u"abc\x1B[1;"})
    EXPECT_EQ(Elsewhere(text).text, text.find(u"3c") == text.npos ? u"abc" : u"ab")
        << "the c is a final byte";
  EXPECT_EQ(
      InEditor(u"a\x1B[1;33mb\x1B[2J\x1B[m\r\nc\x07"),
      (PastePlan{PasteWay::kAskColours, u"ab\rc", Wrap::kAt78ColumnsLeftOpen, u"a\x15[1;33mb\x15[m\rc"}));
  // Sequences take no room in a line, and a ground that runs to the edge begins none.
  const std::u16string line(76, u'x');
  EXPECT_EQ(InEditor(line + u"\x1B[41m    \x1B[m\ny").coloured, line + u"\x15[41m  \x15[m\ry");
  EXPECT_EQ(InEditor(line + u"\x1B[31m xy").coloured, line + u"\x15[31m x\ry");
  EXPECT_EQ(PlanPaste(line + u"\x1B[31mxyz", PastePlace::kEditor, Wrap::kNone).coloured,
            line + u"\x15[31mxyz");
}

TEST(PastePlanTest, ElsewhereASingleLineGoesWithoutEnterAndSeveralAreAskedAbout) {
  EXPECT_EQ(Elsewhere(u"一行\r\n\r\n"), (PastePlan{PasteWay::kSend, u"一行"}));
  EXPECT_EQ(Elsewhere(u"y\r\ny\r\n"), (PastePlan{PasteWay::kAsk, u"y\ry"}));
  EXPECT_EQ(Elsewhere(u"\nd"), (PastePlan{PasteWay::kAsk, u"\rd"}));
  EXPECT_EQ(Elsewhere(u"a\u2028b").way, PasteWay::kAsk) << "the clean text counts";
}

TEST(PastePlanTest, WhatHoldsNothingToSendIsNothing) {
  for (const std::u16string_view text :
       {std::u16string_view(), std::u16string_view(u"\x1B\x07"), std::u16string_view(u"\0\0", 2)}) {
    EXPECT_EQ(InEditor(text), PastePlan{});
    EXPECT_EQ(Elsewhere(text), PastePlan{});
  }
  EXPECT_EQ(Elsewhere(u"\r\n\r\n"), PastePlan{}) << "only Enters";
}

TEST(PastePlanTest, HugeTextsAreRefusedEverywhere) {
  const std::u16string most(kLongestPaste, u'x');
  EXPECT_EQ(Elsewhere(most).text.size(), kLongestPaste);
  EXPECT_EQ(Elsewhere(most + u"x"), PastePlan{PasteWay::kTooLong});
  EXPECT_EQ(InEditor(most + u"x"), PastePlan{PasteWay::kTooLong});
}

TEST(PastePlanTest, ThePreviewShowsAFewShortLinesAndTheFirstThatSaysSomethingIsOffered) {
  EXPECT_EQ(FirstLine(u"\r\r一\r二"), u"一");
  EXPECT_EQ(PastePreview(u"一\r\r三"), u"一\n\n三\n");
  EXPECT_EQ(PastePreview(u"1\r2\r3\r4\r5"), u"1\n2\n3\n…\n");
  const std::u16string line(35, u'字');
  EXPECT_EQ(PastePreview(line + u"末"), line + u"末\n");
  EXPECT_EQ(PastePreview(line + u"末尾"), line + u"末…\n");
  EXPECT_EQ(PastePreview(line + u"😀尾"), line + u"…\n") << "no half of a pair";
}

TEST(PastePlanTest, OnlyASingleLineMayBeALink) {
  EXPECT_TRUE(MayBeLink(u"https://a.example/x y"));
  EXPECT_TRUE(MayBeLink(u"https://a.example/\r\n"));
  EXPECT_TRUE(MayBeLink(std::u16string(8192, u'x')));
  EXPECT_FALSE(MayBeLink(std::u16string(8193, u'x')));
  for (const std::u16string_view text :
       {u"", u"\n", u"  ", u"https://a.example/\nhttps://b.example/", u"\na"})
    EXPECT_FALSE(MayBeLink(text));
}

}  // namespace
}  // namespace quillet
