#include "input/list_hot_keys.h"

#include <gtest/gtest.h>
#include <string>

namespace quillet {
namespace {

constexpr std::uint8_t kRedAndYellow = 0b1010;

NameKey KeyOf(const KeyPress& press, int* colour = nullptr) {
  int ignored = 0;
  return NameKeyOf(press, colour != nullptr ? *colour : ignored);
}

// The stored form of what the key makes of an entry in its stored form; "-" for an id that is not listed.
std::u16string After(std::u16string_view before, NameKey key, int colour = 0,
                     const std::optional<ListEntry>& last = {}) {
  std::optional<ListEntry> entry;
  if (before != u"-") entry = ParseEntryText(before);
  const auto changed = ChangedEntry(entry, key, colour, last);
  return changed ? EntryText(*changed) : u"-";
}

TEST(ListHotKeysTest, KeysAreToldByTheCharacterThatTheLayoutMakes) {
  EXPECT_EQ(KeyOf({.text = u"`"}), NameKey::kBlack);
  EXPECT_EQ(KeyOf({.virtualKey = 'U', .text = u"u"}), NameKey::kUnderline);
  EXPECT_EQ(KeyOf({.shift = true, .text = u"~"}), NameKey::kAgain);
  EXPECT_EQ(KeyOf({.control = true, .alt = true, .text = u"~"}), NameKey::kAgain) << "AltGr";
  for (int digit = 0; digit <= 7; ++digit) {
    int colour = -1;
    const std::u16string text(1, static_cast<char16_t>(u'0' + digit));
    EXPECT_EQ(KeyOf({.keypad = digit % 2 == 0, .text = text}, &colour), NameKey::kColour);
    EXPECT_EQ(colour, digit);
  }
  for (const std::u16string_view text : {u"8", u"9", u"U", u"/", u"", u"uu", u"中", u"１"})
    EXPECT_EQ(KeyOf({.text = std::u16string(text)}), NameKey::kNone);
  EXPECT_EQ(KeyOf({.virtualKey = 'U', .control = true, .text = u"u"}), NameKey::kNone);
  EXPECT_EQ(KeyOf({.virtualKey = 'U', .alt = true, .text = u"u"}), NameKey::kNone);
}

TEST(ListHotKeysTest, BlackIsToggledAndMarksStay) {
  EXPECT_EQ(After(u"-", NameKey::kBlack), u"") << "plain black";
  EXPECT_EQ(After(u"", NameKey::kBlack), u"-");
  EXPECT_EQ(After(u"愛吵架", NameKey::kBlack), u":愛吵架");
  EXPECT_EQ(After(u":愛吵架", NameKey::kBlack), u"愛吵架");
  EXPECT_EQ(After(u"_B13:吵", NameKey::kBlack), u"_13:吵");
  EXPECT_EQ(After(u"C2:吵", NameKey::kBlack), u"B2:吵");
}

TEST(ListHotKeysTest, ColoursAndUnderlineAreToggledUntilNothingIsLeft) {
  EXPECT_EQ(After(u"-", NameKey::kColour, 3), u"3:");
  EXPECT_EQ(After(u"3:", NameKey::kColour, 3), u"-");
  EXPECT_EQ(After(u"3:友", NameKey::kColour, 3), u":友");
  EXPECT_EQ(After(u"W3:", NameKey::kColour, 7), u"W37:");
  EXPECT_EQ(After(u"_B1234567:", NameKey::kColour, 0), u"_B:");
  EXPECT_EQ(After(u"1234567:", NameKey::kColour, 0), u"-");
  EXPECT_EQ(After(u"-", NameKey::kUnderline), u"_:");
  EXPECT_EQ(After(u"_C5:吵", NameKey::kUnderline), u"C5:吵");
}

TEST(ListHotKeysTest, AgainMarksAnotherIdLikeTheLastOne) {
  const ListEntry last{
      .kind = ListKind::kWhite, .underline = true, .colours = kRedAndYellow, .description = u"友"};
  EXPECT_EQ(After(u"-", NameKey::kAgain, 0, last), u"_W13:友");
  EXPECT_EQ(After(u"B5:吵", NameKey::kAgain, 0, last), u"_W13:吵");
  EXPECT_EQ(After(u"B5:吵", NameKey::kAgain), u"B5:吵") << "nothing was added yet";
}

TEST(ListHotKeysTest, OnlyWhatIsDifferentCountsAsChanged) {
  const ListEntry entry{.underline = true, .description = u"友"};
  EXPECT_EQ(ChangedEntry(entry, NameKey::kColour, 0, {}), entry);
  EXPECT_EQ(ChangedEntry(entry, NameKey::kAgain, 0, entry), entry);
  EXPECT_EQ(ChangedEntry(entry, NameKey::kNone, 0, {}), entry);
  EXPECT_TRUE(ChangedEntry(entry, NameKey::kColour, 1, {})->changed);
  EXPECT_TRUE(ChangedEntry({}, NameKey::kBlack, 0, {})->changed);
}

}  // namespace
}  // namespace quillet
