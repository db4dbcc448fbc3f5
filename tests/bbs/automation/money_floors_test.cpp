#include "bbs/automation/money_floors.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

#include "tests/bbs/article_bbs.h"
#include "tests/support/tables.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

class MoneyFloorsTest : public WithTables {
 protected:
  // The floors of an article with these rows below its header, read page by page.
  std::vector<PushFloor> FloorsOf(const std::vector<std::u16string>& rows) {
    ArticleBbs bbs;
    bbs.articles[0].rows = rows;
    bbs.reading = true;
    ArticleLines lines;
    for (; !lines.IsComplete(); bbs.top = std::min(bbs.top + ArticleBbs::kPage - 1, bbs.LastTop()))
      lines.Add(bbs.Screen(), Understand(bbs.Screen()));
    return ReadFloors(lines);
  }
  std::vector<FloorGift> Choose(const MoneyChoices& choices, unsigned seed = 1) {
    std::mt19937 random(seed);
    return ChooseReceivers(floors_, choices, people_, random);
  }
  std::vector<int> FloorsChosen(const MoneyChoices& choices) {
    std::vector<int> floors;
    for (const FloorGift& gift : Choose(choices))
      floors.push_back(gift.floor);
    return floors;
  }
  using Floors = std::vector<int>;

  std::vector<PushFloor> floors_ = {
      {1, FloorKind::kPush, u"amy", u"頭推"},          {2, FloorKind::kBoo, u"bob", u"噓 Cat"},
      {3, FloorKind::kArrow, u"Amy", u"補充"},         {4, FloorKind::kPush, u"carol", u"我愛cat"},
      {5, FloorKind::kPush, u"reader", u"推自己 cat"}, {6, FloorKind::kPush, u"dave", u"CAT 一隻"},
      {7, FloorKind::kPush, u"amy", u"再推"},          {8, FloorKind::kPush, u"evil", u"cat"},
  };
  MoneyPeople people_{.self = u"Reader", .standing = [](std::u16string_view id) {
                        return id == u"evil"   ? IdStanding::kSuperBlack
                               : id == u"dave" ? IdStanding::kBlack
                                               : IdStanding::kOrdinary;
                      }};
};

TEST_F(MoneyFloorsTest, EveryPushLineBehindTheOriginLineIsAFloor) {
  std::vector<std::u16string> rows = {u"推 quoted: 引用的舊推文", u"※ 發信站: 奧拉拉文藝坊(old.example)",
                                      u"推 older: 轉錄前的推文", u"--",
                                      u"※ 發信站: 奧拉拉文藝坊(bbs.example), 來自: 203.0.113.5"};
  for (int row = 0; row < 30; ++row)
    rows.push_back(u"推 someone: 灌水");
  rows.push_back(u"※ 編輯: kagami (203.0.113.5), 10/03/2026 21:30:00");
  rows.push_back(u"噓 carol     : 太長 9.9 1/2          203.0.113.9 10/03 21:20");
  rows.push_back(u"→ Abcdefghijk1:12.5.3.1 10/03 21:21");
  rows.push_back(u"→ nobody 不是推文");
  const std::vector<PushFloor> floors = FloorsOf(rows);
  ASSERT_EQ(floors.size(), 32u);
  EXPECT_EQ(floors[0].id, u"someone");
  EXPECT_EQ(floors[29].floor, 30);
  EXPECT_EQ(floors[30].kind, FloorKind::kBoo);
  EXPECT_EQ(floors[30].id, u"carol");
  EXPECT_EQ(floors[30].words, u"太長 9.9 1/2");
  EXPECT_EQ(floors[31].kind, FloorKind::kArrow);
  EXPECT_EQ(floors[31].id, u"Abcdefghijk1");
  EXPECT_EQ(floors[31].words, u"12.5.3.1") << "no blank in front: it is what the user wrote";
}

TEST_F(MoneyFloorsTest, EachChoiceLeavesOutWhomItNames) {
  EXPECT_EQ(FloorsChosen({}), (Floors{1, 4, 6, 8})) << "pushes, each id once, not the giver";
  EXPECT_EQ(FloorsChosen({.noDupe = false}), (Floors{1, 4, 6, 7, 8}));
  EXPECT_EQ(FloorsChosen({.push = false, .boo = true}), (Floors{2}));
  EXPECT_EQ(FloorsChosen({.arrow = true}), (Floors{1, 4, 6, 8})) << "Amy is amy";
  EXPECT_EQ(FloorsChosen({.push = false}), (Floors{}));
  EXPECT_EQ(FloorsChosen({.fromFloor = 2, .toFloor = 6}), (Floors{4, 6}));
  EXPECT_EQ(FloorsChosen({.fromFloor = 2, .floorInterval = 2}), (Floors{4, 6, 8}));
  EXPECT_EQ(FloorsChosen({.fromFloor = 6, .toFloor = 2}), (Floors{}));
  EXPECT_EQ(FloorsChosen({.number = 2}), (Floors{1, 4}));
  EXPECT_EQ(FloorsChosen({.number = 0}), (Floors{}));
  EXPECT_EQ(FloorsChosen({.contentInclude = u"cat"}), (Floors{4, 6, 8}));
  EXPECT_EQ(FloorsChosen({.contentInclude = u"cat", .matchCase = true}), (Floors{4, 8}));
  EXPECT_EQ(FloorsChosen({.noBlack = true}), (Floors{1, 4, 8}));
  EXPECT_EQ(FloorsChosen({.noSuperBlack = true}), (Floors{1, 4, 6}));
  people_.self.clear();
  EXPECT_EQ(FloorsChosen({}), (Floors{1, 4, 5, 6, 8}));
  floors_ = {{1, FloorKind::kPush, u"a", u""}, {2, FloorKind::kPush, u"x\ry", u""}};
  EXPECT_EQ(FloorsChosen({}), (Floors{})) << "what is no id is not typed";
}

TEST_F(MoneyFloorsTest, TheLotIsFairAndDrawsTheSameForTheSameSeed) {
  floors_.clear();
  for (int floor = 1; floor <= 10; ++floor)
    floors_.push_back(
        {floor, FloorKind::kPush, std::u16string(u"id") + static_cast<char16_t>(u'a' + floor), u""});
  const MoneyChoices choices{.number = 3, .random = true};
  std::map<int, int> drawn;
  for (unsigned seed = 0; seed < 1000; ++seed) {
    const std::vector<FloorGift> gifts = Choose(choices, seed);
    ASSERT_EQ(gifts.size(), 3u);
    ASSERT_TRUE(std::is_sorted(gifts.begin(), gifts.end(), [](const FloorGift& a, const FloorGift& b) {
      return a.floor <= b.floor;
    })) << "in order, and nobody twice";
    ASSERT_EQ(gifts, Choose(choices, seed));
    for (const FloorGift& gift : gifts)
      ++drawn[gift.floor];
  }
  // 300 each, give or take five standard deviations.
  for (int floor = 1; floor <= 10; ++floor)
    EXPECT_NEAR(drawn[floor], 300, 73) << floor;
}

TEST_F(MoneyFloorsTest, WhatArrivesAfterTaxIsAtLeastWhatWasPromised) {
  EXPECT_EQ(AmountToSend(100, false), 100);
  EXPECT_EQ(AmountToSend(90, true), 100);
  for (int each = 1; each < 5000; ++each) {
    const auto arrives = [](std::int32_t amount) { return amount * 9 / 10; };  // of whole coins
    const std::int32_t amount = AmountToSend(each, true);
    ASSERT_GE(arrives(amount), each);
    ASSERT_EQ(LeastThatArrives(amount), arrives(amount));
    ASSERT_LT(arrives(amount - 1), each) << "and no coin more than it takes";
  }
  EXPECT_EQ(AmountToSend(2'000'000'000, true), kMostMoney);
  EXPECT_EQ(LeastThatArrives(kMostMoney), 89'999'999);
  EXPECT_EQ(AmountToSend(-5, false), 1);
  EXPECT_EQ(TotalOf({{1, u"a", kMostMoney}, {2, u"b", kMostMoney}, {3, u"c", 1'999'999'999}}), 2'199'999'997);
}

}  // namespace
}  // namespace quillet
