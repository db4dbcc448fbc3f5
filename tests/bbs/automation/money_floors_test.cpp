#include "bbs/automation/money_floors.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

#include "tests/bbs/article/article_bbs.h"
#include "tests/support/tables.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

class MoneyFloorsTest : public WithTables {
 protected:
  std::vector<FloorGift> Choose(const MoneyChoices& choices, unsigned seed = 1) {
    std::mt19937 random(seed);
    return ChooseReceivers(floors_, choices, people_, random);
  }
  void ExpectFloors(const MoneyChoices& choices, const std::vector<int>& expected) {
    std::vector<int> floors;
    for (const FloorGift& gift : Choose(choices))
      floors.push_back(gift.floor);
    EXPECT_EQ(floors, expected);
  }

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
  ArticleBbs bbs;
  std::vector<std::u16string>& rows = bbs.articles[0].rows;
  rows = {u"推 quoted: 引用的舊推文", u"※ 發信站: 奧拉拉文藝坊(old.example)", u"推 older: 轉錄前的推文",
          u"※ 發信站: 奧拉拉文藝坊(bbs.example), 來自: 203.0.113.5"};
  rows.insert(rows.end(), 30, u"推 someone: 灌水");
  rows.push_back(u"※ 編輯: kagami (203.0.113.5), 10/03/2026 21:30:00");
  rows.push_back(u"噓 carol     : 太長 9.9 1/2          203.0.113.9 10/03 21:20");
  rows.push_back(u"→ Abcdefghijk1:12.5.3.1 10/03 21:21");
  rows.push_back(u"→ nobody 不是推文");
  bbs.reading = true;
  ArticleLines lines;  // read page by page
  for (; !lines.IsComplete(); bbs.top = std::min(bbs.top + ArticleBbs::kPage - 1, bbs.LastTop()))
    lines.Add(bbs.Screen(), Understand(bbs.Screen()));
  const std::vector<PushFloor> floors = ReadFloors(lines);
  ASSERT_EQ(floors.size(), 32u);
  const auto expect = [&](std::size_t at, FloorKind kind, std::u16string_view id, std::u16string_view words) {
    EXPECT_EQ(floors[at].floor, static_cast<int>(at) + 1);
    EXPECT_EQ(floors[at].kind, kind);
    EXPECT_EQ(floors[at].id, id);
    EXPECT_EQ(floors[at].words, words);
  };
  expect(0, FloorKind::kPush, u"someone", u"灌水");
  expect(30, FloorKind::kBoo, u"carol", u"太長 9.9 1/2");
  expect(31, FloorKind::kArrow, u"Abcdefghijk1",
         u"12.5.3.1");  // no blank in front: it is what the user wrote
}

TEST_F(MoneyFloorsTest, EachChoiceLeavesOutWhomItNames) {
  ExpectFloors({}, {1, 4, 6, 8});  // pushes, each id once, not the giver
  ExpectFloors({.noDupe = false}, {1, 4, 6, 7, 8});
  ExpectFloors({.push = false, .boo = true}, {2});
  ExpectFloors({.arrow = true}, {1, 4, 6, 8});  // Amy is amy
  ExpectFloors({.push = false}, {});
  ExpectFloors({.fromFloor = 2, .toFloor = 6}, {4, 6});
  ExpectFloors({.fromFloor = 2, .floorInterval = 2}, {4, 6, 8});
  ExpectFloors({.floorInterval = 3}, {1, 4});
  ExpectFloors({.fromFloor = 6, .toFloor = 2}, {});
  ExpectFloors({.number = 2}, {1, 4});
  ExpectFloors({.number = 0}, {});
  ExpectFloors({.contentInclude = u"cat"}, {4, 6, 8});
  ExpectFloors({.contentInclude = u"cat", .matchCase = true}, {4, 8});
  ExpectFloors({.noBlack = true}, {1, 4, 8});
  ExpectFloors({.noSuperBlack = true}, {1, 4, 6});
  people_.self.clear();
  ExpectFloors({}, {1, 4, 5, 6, 8});
  floors_ = {{1, FloorKind::kPush, u"a", u""}, {2, FloorKind::kPush, u"x\ry", u""}};
  ExpectFloors({}, {});  // what is no id is not typed
}

TEST_F(MoneyFloorsTest, TheLotIsFairAndDrawsTheSameForTheSameSeed) {
  const MoneyChoices choices{.number = 3, .noDupe = false, .random = true};
  std::map<int, int> drawn;
  for (unsigned seed = 0; seed < 1000; ++seed) {
    const std::vector<FloorGift> gifts = Choose(choices, seed);
    ASSERT_EQ(gifts.size(), 3u);
    ASSERT_TRUE(gifts[0].floor < gifts[1].floor && gifts[1].floor < gifts[2].floor);
    ASSERT_EQ(gifts, Choose(choices, seed));
    for (const FloorGift& gift : gifts)
      ++drawn[gift.floor];
  }
  for (const int floor : {1, 4, 6, 7, 8})
    EXPECT_NEAR(drawn[floor], 600, 80) << floor;  // five standard deviations
}

TEST_F(MoneyFloorsTest, WhatArrivesAfterTaxIsAtLeastWhatWasPromised) {
  EXPECT_EQ(AmountToSend(100, false), 100);
  EXPECT_EQ(AmountToSend(90, true), 100);
  for (int each = 1; each < 5000; ++each) {
    const std::int32_t amount = AmountToSend(each, true);
    ASSERT_EQ(LeastThatArrives(amount), amount * 9 / 10) << "of whole coins";
    ASSERT_GE(LeastThatArrives(amount), each);
    ASSERT_LT(LeastThatArrives(amount - 1), each) << "and no coin more than it takes";
  }
  EXPECT_EQ(AmountToSend(2'000'000'000, true), kMostMoney);
  EXPECT_EQ(LeastThatArrives(kMostMoney), 89'999'999);
  EXPECT_EQ(AmountToSend(-5, false), 1);
  EXPECT_EQ(TotalOf({{1, u"a", kMostMoney}, {2, u"b", kMostMoney}, {3, u"c", 1'999'999'999}}), 2'199'999'997);
}

}  // namespace
}  // namespace quillet
