#include "settings/files/name_list.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "settings/files/list_entry.h"
#include "settings/files/text_lines.h"

namespace quillet {
namespace {

constexpr ListKind kKinds[] = {ListKind::kNone, ListKind::kBlack, ListKind::kSuperBlack, ListKind::kWhite};

ListEntry Entry(ListKind kind, bool underline, std::initializer_list<int> colours,
                std::u16string_view description) {
  ListEntry entry{.kind = kind, .underline = underline, .description = std::u16string(description)};
  for (const int colour : colours)
    entry.SetColour(colour, true);
  return entry;
}

// What the next start of the program makes of the list.
NameList Reread(const NameList& list) {
  NameList reread;
  reread.ReadLines(ReadLines(EncodeText(list.AsText(), "\r\n")).lines);
  return reread;
}

std::u16string RandomText(std::minstd_rand& random, std::u16string_view alphabet, std::size_t longest) {
  std::u16string text(random() % (longest + 1), u' ');
  for (char16_t& unit : text)
    unit = alphabet[random() % alphabet.size()];
  return text;
}

struct EntryCase {
  std::u16string_view text;
  ListEntry entry;
};

TEST(ListEntryTest, MarkerPrecedesTheDescriptionAndOnlyTextInItsShapeIsOne) {
  const EntryCase written[] = {
      {u"B13:廣告", Entry(ListKind::kBlack, false, {3, 1}, u"廣告")},
      {u"_B:", Entry(ListKind::kBlack, true, {}, u"")},
      {u"C:x", Entry(ListKind::kSuperBlack, false, {}, u"x")},
      {u"_W1234567:x", Entry(ListKind::kWhite, true, {1, 2, 3, 4, 5, 6, 7}, u"x")},
      {u"7:x", Entry(ListKind::kNone, false, {7}, u"x")},
      {u":", Entry(ListKind::kNone, false, {}, u"")},
      {u"B:1:23", Entry(ListKind::kBlack, false, {}, u"1:23")},
      {u"B::x", Entry(ListKind::kBlack, false, {}, u":x")},
      {u"8:30", Entry(ListKind::kBlack, false, {}, u"8:30")},
  };
  for (const EntryCase& one : written) {
    EXPECT_EQ(EntryText(one.entry), one.text);
    EXPECT_EQ(ParseEntryText(one.text), one.entry) << testing::PrintToString(one.text);
  }
  const EntryCase byOthers[] = {
      {u"B0:廣告", Entry(ListKind::kBlack, false, {}, u"廣告")},
      {u"0:x", Entry(ListKind::kNone, false, {}, u"x")},
      {u"C3103:x", Entry(ListKind::kSuperBlack, false, {1, 3}, u"x")},
      {u"_: x ", Entry(ListKind::kNone, true, {}, u"x")},
      {u"\t W1:x", Entry(ListKind::kWhite, false, {1}, u"x")},
  };
  for (const EntryCase& one : byOthers)
    EXPECT_EQ(ParseEntryText(one.text), one.entry) << testing::PrintToString(one.text);
  for (const std::u16string_view plain :
       {u"W1 2:x", u"B8:x", u"N:x", u"w:x", u"BW:x", u"1B:x", u"__B:x", u"B_:x", u"_W13", u"W：x"})
    EXPECT_EQ(ParseEntryText(plain), Entry(ListKind::kBlack, false, {}, plain));
}

TEST(ListEntryTest, EveryEntryComesBackFromItsTextAndFromTheFile) {
  const std::u16string_view descriptions[] = {
      u"",      u"x",      u"1:23",   u":",    u"::",  u":x",  u"_",         u"_:",
      u"_B:",   u"B:",     u"B:B:",   u"B0:x", u"W7:", u"B",   u"C13",       u"N:x",
      u"8:30",  u"a:b",    u"0123:x", u"7",    u"_7:", u"：x", u"a  b",      u"\u3000x\u3000",
      u"[Bsc]", u"😀:壞人", u"//x",    u"\"",   u"#",   u"_W",  u"\uFEFF1:2", u"x:B:"};
  for (const std::u16string_view description : descriptions) {
    NameList list;
    for (const ListKind kind : kKinds) {
      for (unsigned flags = 0; flags < 256; ++flags) {
        const ListEntry entry{.kind = kind,
                              .underline = (flags & 1) != 0,
                              .colours = static_cast<std::uint8_t>(flags & 0xFE),
                              .description = std::u16string(description)};
        ASSERT_EQ(ParseEntryText(EntryText(entry)), entry) << testing::PrintToString(EntryText(entry));
        list.Set(u"user" + ToText(static_cast<int>(list.Size())), entry);
      }
    }
    const NameList reread = Reread(list);
    ASSERT_EQ(reread.Size(), list.Size());
    for (int i = 0; i < static_cast<int>(list.Size()); ++i) {
      const std::u16string id = u"user" + ToText(i);
      ASSERT_NE(reread.Find(id), nullptr);
      ASSERT_EQ(*reread.Find(id), *list.Find(id)) << testing::PrintToString(description);
    }
    EXPECT_EQ(reread.AsText(), list.AsText());
  }
}

TEST(ListEntryTest, LongestDescriptionIsTheLongestThatComesBack) {
  const std::u16string longId(500, u'i');
  for (const std::u16string_view id : {std::u16string_view(u"a"), std::u16string_view(longId)}) {
    for (const std::u16string_view start : {u"x", u"1:", u":"}) {
      for (const ListKind kind : kKinds) {
        ListEntry entry = Entry(kind, kind == ListKind::kWhite, {2, 5}, start);
        if (kind == ListKind::kBlack) entry.colours = 0;
        entry.description.resize(LongestDescription(id, entry), u'字');
        NameList list;
        list.Set(id, entry);
        EXPECT_EQ(*Reread(list).Find(id), entry);

        entry.description += u'字';
        list.Set(id, entry);
        const NameList reread = Reread(list);
        EXPECT_EQ(reread.Size(), 1U) << "the rest became an entry";
        entry.description.pop_back();
        EXPECT_EQ(*reread.Find(id), entry);
      }
    }
  }
  EXPECT_EQ(LongestDescription(std::u16string(511, u'i'), {}), 0U);
  EXPECT_EQ(LongestDescription(std::u16string(2000, u'i'), {}), 0U);
}

TEST(ListEntryTest, UnfitCharactersAreThoseThatDoNotComeBack) {
  for (unsigned unit = 1; unit < 0x10000; ++unit) {
    const std::u16string description{u'a', static_cast<char16_t>(unit), u'b'};
    NameList list;
    list.Set(u"id", {.description = description});
    const NameList reread = Reread(list);
    ASSERT_EQ(reread.Size(), 1U) << unit;
    const bool comesBack = reread.Find(u"id")->description == description;
    ASSERT_EQ(FirstUnfitCharacter(description), comesBack ? u'\0' : static_cast<char16_t>(unit)) << unit;
  }
  EXPECT_EQ(FirstUnfitCharacter(u"😀"), 0);
}

TEST(NameListTest, LinesAreSplitAtRunsOfEqualSigns) {
  const struct {
    std::u16string_view line;
    std::u16string_view id;
    std::u16string_view text;
  } cases[] = {
      {u"someone", u"someone", u""},
      {u"someone=", u"someone", u""},
      {u"someone==廣告=再見", u"someone", u"廣告"},
      {u"==someone = _W1: 朋友 = x", u"someone", u"_W1:朋友"},
      {u"some one=x", u"some one", u"x"},
      {u"a= =b", u"a", u""},
      {u"===", u"", u""},
      {u"= =x", u"", u"x"},
  };
  for (const auto& one : cases) {
    NameList list;
    list.ReadLines({std::u16string(one.line)});
    ASSERT_EQ(list.Size(), 1U);
    ASSERT_NE(list.Find(one.id), nullptr) << testing::PrintToString(one.line);
    EXPECT_EQ(EntryText(*list.Find(one.id)), one.text);
  }
}

TEST(NameListTest, LinesAreLaidOverTheListInTheirOrder) {
  NameList list;
  list.Set(u"old", Entry(ListKind::kWhite, false, {}, u"kept"));
  list.ReadLines({u"Zoe=x", u"amy=W:y", u"Amy", u"", u"Zoe=C:later"});
  EXPECT_EQ(list.Size(), 4U);
  EXPECT_EQ(list.Find(u"ZOE"), nullptr);
  EXPECT_EQ(list.Find(u"amy")->kind, ListKind::kWhite);
  EXPECT_EQ(list.Find(u"Amy")->kind, ListKind::kBlack);
  EXPECT_EQ(list.AsText(), u"old=W:kept\nZoe=C:later\namy=W:y\nAmy\n");
}

TEST(NameListTest, NothingWrittenIsReadBackAsSomebodyElse) {
  NameList list;
  list.Set(u"d", {.description = u"=1:x"});
  list.Set(u"e", {.description = u"\u00011:x"});
  list.Set(u" f=\ng ", {.description = u"x"});
  list.Set(u"", {.description = u"victim"});
  list.Set(std::u16string(508, u'h'), Entry(ListKind::kWhite, true, {1, 2, 3}, u"x"));

  const NameList reread = Reread(list);
  EXPECT_EQ(reread.Size(), 4U);
  EXPECT_EQ(*reread.Find(u"d"), ListEntry{});
  EXPECT_EQ(*reread.Find(u"e"), (ListEntry{.description = u"1:x"}));
  EXPECT_EQ(*reread.Find(u"f g"), (ListEntry{.description = u"x"}));
  EXPECT_EQ(*reread.Find(std::u16string(508, u'h')), ListEntry{});
}

TEST(NameListTest, WhateverALineHoldsIsWrittenAsItWasUnderstood) {
  std::minstd_rand random(3);
  for (int round = 0; round < 20000; ++round) {
    NameList list;
    list.ReadLines({RandomText(random, u"_BCWN01789:=x \t", 12), RandomText(random, u"=:B1 ", 5)});
    list.Remove(u"");
    const NameList reread = Reread(list);
    ASSERT_EQ(reread.Size(), list.Size()) << testing::PrintToString(list.AsText());
    ASSERT_EQ(reread.AsText(), list.AsText());
  }
}

TEST(NameListTest, AddingAndRemovingKeepTheOrderAndTheLookups) {
  std::minstd_rand random(4);
  std::vector<std::pair<std::u16string, ListEntry>> expected;
  NameList list;
  for (int step = 0; step < 20000; ++step) {
    // Now growing, now shrinking, so that gaps come and go.
    const bool adds = random() % 10 < (step / 2000 % 2 == 0 ? 7U : 2U);
    const std::u16string id = u"u" + ToText(static_cast<int>(random() % 300));
    const auto at =
        std::find_if(expected.begin(), expected.end(), [&](auto& pair) { return pair.first == id; });
    if (adds) {
      const ListEntry entry{.description = ToText(step)};
      if (at == expected.end())
        expected.emplace_back(id, entry);
      else
        at->second = entry;
      list.Set(id, entry);
    } else {
      if (at != expected.end()) expected.erase(at);
      list.Remove(id);
    }
    if (step % 100 != 0) continue;

    std::u16string text;
    for (const auto& [user, entry] : expected) {
      ASSERT_NE(list.Find(user), nullptr);
      ASSERT_EQ(*list.Find(user), entry);
      text += user + u"=" + entry.description + u"\n";
    }
    ASSERT_EQ(list.Size(), expected.size());
    ASSERT_EQ(list.AsText(), text);
  }

  const NameList copy = list;
  list.Clear();
  EXPECT_EQ(list.Size(), 0U);
  EXPECT_EQ(list.AsText(), u"");
  EXPECT_EQ(list.Find(expected.front().first), nullptr);
  EXPECT_EQ(*copy.Find(expected.back().first), expected.back().second);
}

TEST(NameListTest, TitleWordsStandOneALine) {
  EXPECT_EQ(TitleWordsAsText({u"徵求", u" 代購 ", u"", u"\t", u"a=b\nc"}), u"徵求\n代購\na=b c\n");
  const std::u16string text = TitleWordsAsText({std::u16string(600, u'字')});
  EXPECT_EQ(ReadLines(EncodeText(text, "\n")).lines.size(), 1U);
}

}  // namespace
}  // namespace quillet
