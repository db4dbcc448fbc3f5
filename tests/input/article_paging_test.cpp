#include "input/article_paging.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include "core/key_sequence.h"

namespace quillet {

void PrintTo(const PagingAction& action, std::ostream* out) {
  *out << "kind " << static_cast<int>(action.kind) << " top " << action.top;
}

namespace {

using Kind = PagingAction::Kind;

constexpr int kCount = 100;
constexpr int kLast = 77;

KeyPress Key(int virtualKey) {
  return {.virtualKey = virtualKey};
}
KeyPress Char(char16_t character) {
  return {.text = std::u16string(1, character)};
}
// The key's one press over an article of 100 lines.
PagingAction From(int top, const KeyPress& press) {
  return DecidePaging(press, false, {.top = top, .count = kCount});
}
PagingAction To(int top) {
  return {Kind::kScrollTo, top};
}

const std::vector<KeyPress> kLineBack = {Key(kKeyUp), Char(u'k')};
const std::vector<KeyPress> kLineOn = {Key(kKeyDown), Key(kKeyEnter), Char(u'j')};
const std::vector<KeyPress> kPageOn = {Key(kKeyPageDown), Key(kKeyRight), Char(u' ')};
const std::vector<KeyPress> kPageBack = {
    Key(kKeyPageUp), Key(kKeyBackspace), {.virtualKey = 'B', .control = true, .text = u"\x02"}};

TEST(ArticlePagingTest, PagesAndLinesWithinTheArticle) {
  for (const KeyPress& press : kLineBack)
    EXPECT_EQ(From(40, press), To(39));
  for (const KeyPress& press : kLineOn)
    EXPECT_EQ(From(40, press), To(41));
  for (const KeyPress& press : kPageBack) {
    EXPECT_EQ(From(40, press), To(18));
    EXPECT_EQ(From(5, press), To(0));
  }
  for (const KeyPress& press : kPageOn) {
    EXPECT_EQ(From(40, press), To(62));
    EXPECT_EQ(From(70, press), To(kLast));
  }
  for (const KeyPress& press : {Key(kKeyHome), Char(u'0'), Char(u'N')})
    EXPECT_EQ(From(40, press), To(0));
  for (const KeyPress& press : {Key(kKeyEnd), Char(u'$'), Char(u'G')})
    EXPECT_EQ(From(40, press), (PagingAction{Kind::kToEnd, kLast}));
}

TEST(ArticlePagingTest, EachKeyAtTheEndsOfTheArticle) {
  struct Row {
    KeyPress press;
    int top;
    Kind plain;
    Kind kept;  // with "keepArticle"
  };
  const std::vector<Row> rows = {
      {Key(kKeyUp), 0, Kind::kPrevious, Kind::kNothing},
      {Key(kKeyBackspace), 0, Kind::kPrevious, Kind::kPrevious},
      {Key(kKeyPageUp), 0, Kind::kNothing, Kind::kNothing},
      {Key(kKeyHome), 0, Kind::kNothing, Kind::kNothing},
      {Key(kKeyDown), kLast, Kind::kNext, Kind::kNothing},
      {Char(u' '), kLast, Kind::kNext, Kind::kNothing},
      {Key(kKeyRight), kLast, Kind::kNext, Kind::kNext},
      {Key(kKeyPageDown), kLast, Kind::kNothing, Kind::kNothing},
  };
  for (const Row& row : rows) {
    const auto decide = [&](bool repeated, bool keep, bool complete) {
      return DecidePaging(row.press, repeated,
                          {.top = row.top, .count = kCount, .complete = complete, .keepArticle = keep})
          .kind;
    };
    const int key = row.press.virtualKey;
    EXPECT_EQ(decide(false, false, true), row.plain) << key;
    EXPECT_EQ(decide(false, true, true), row.kept) << key;
    EXPECT_EQ(decide(true, false, true), Kind::kNothing) << "held " << key;
    if (row.top == kLast) {
      EXPECT_EQ(decide(false, false, false), Kind::kScrollTo) << "more comes " << key;
    }
  }
}

TEST(ArticlePagingTest, APageIsTheLinesInSightAndNoneIsSkipped) {
  for (const int shown : {1, 2, 7}) {
    int top = 0;
    for (int pages = 0; pages < 2 * kCount && top < LastTop(kCount, shown); ++pages) {
      const PagingState state{.top = top, .count = kCount, .shown = shown};
      const int next = DecidePaging(Key(kKeyPageDown), false, state).top;
      EXPECT_LE(next, top + shown);
      EXPECT_GT(next, top);
      top = next;
    }
    EXPECT_EQ(top, kCount - shown);
    const PagingState end{.top = top, .count = kCount, .shown = shown};
    EXPECT_EQ(DecidePaging(Key(kKeyRight), false, end).kind, Kind::kNext);
  }
}

TEST(ArticlePagingTest, OtherKeysAreTheBbs) {
  for (const int key : {kKeyLeft, kKeyInsert, kKeyDelete, kKeyEscape, kKeyTab, static_cast<int>('K'), 0})
    EXPECT_EQ(From(40, Key(key)), PagingAction{}) << key;
  for (const char16_t character : std::u16string_view(u"qXKJg1/[中"))
    EXPECT_EQ(From(40, Char(character)), PagingAction{});
  EXPECT_EQ(From(40, {.text = u"kk"}), PagingAction{});
  for (const int key :
       {kKeyUp, kKeyDown, kKeyPageUp, kKeyPageDown, kKeyHome, kKeyEnd, kKeyRight, kKeyEnter}) {
    EXPECT_EQ(From(40, {.virtualKey = key, .control = true}), PagingAction{}) << key;
    EXPECT_EQ(From(40, {.virtualKey = key, .alt = true}), PagingAction{}) << key;
  }
  EXPECT_EQ(From(40, {.control = true, .alt = true, .text = u"$"}), PagingAction{});
}

TEST(ArticlePagingTest, WhileMoreLinesComeKeysLeadBeyondTheKnownOnes) {
  const PagingState early{.top = 0, .count = kLinesShown, .complete = false};
  EXPECT_EQ(DecidePaging(Key(kKeyPageDown), false, early), (PagingAction{Kind::kScrollTo, kPageStep}));
  const PagingState waiting{.top = kPageStep, .count = kLinesShown, .complete = false};
  EXPECT_EQ(DecidePaging(Key(kKeyDown), false, waiting), (PagingAction{Kind::kScrollTo, kPageStep + 1}));
  EXPECT_EQ(DecidePaging(Key(kKeyUp), false, waiting), (PagingAction{Kind::kScrollTo, kPageStep - 1}));
}

}  // namespace
}  // namespace quillet
