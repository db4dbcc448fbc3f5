#include "bbs/automation/money_run.h"

#include <gtest/gtest.h>

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

// A BBS whose answers the program has never seen.
class MoneyRunTest : public AutomationTest {
 protected:
  static std::string SystemMenu(int mark = 12) {
    return kClearScreen + At(0, 0, u"【系統資訊】") + At(12, 28, u"(A)bout") + At(13, 28, u"(P)resent") +
           At(mark, 24, u"●") + At(mark, 25);
  }
  static std::string MoneyPage(std::u16string_view money) {
    return kClearScreen + At(0, 0, u"【送人文藝幣】") + At(1, 52, u"(目前有 $") + ToBig5(money) + ")" +
           At(3, 4, u"要送給誰: ") + FieldAt(3, 14);
  }
  // From the menu to the confirmation, then `answer`.
  static std::vector<Turn> Gift(std::u16string_view money, const std::string& answer) {
    return {{"p", SystemMenu(13)},
            {"\r", MoneyPage(money)},
            {"bob", "bob"},
            {"\r", At(5, 4, u"送多少: ") + FieldAt(5, 12)},
            {"5", "5"},
            {"\r", At(7, 4, u"確定要送嗎[y/N]: ") + FieldAt(7, 21)},
            {"y", "y"},
            {"\r", answer}};
  }
  static std::string Message(std::u16string_view words) {
    return At(23, 0, u" ◆ ") + ToBig5(words) + At(23, 63, u" [按任意鍵繼續] ") + At(23, 79);
  }
  static std::vector<Turn> Begin() { return {{"", SystemMenu()}}; }
  static void Add(std::vector<Turn>& turns, std::vector<Turn> more) {
    turns.insert(turns.end(), more.begin(), more.end());
  }
  // The BBS is known to have answered all that it will by then.
  static constexpr std::chrono::milliseconds kPatience{800};
  MoneyRunResult Give(const std::vector<Turn>& turns, int gifts, ArticleReference article = {}) {
    const MoneyOrder order{.article = std::move(article),
                           .gifts = std::vector<MoneyGift>(static_cast<std::size_t>(gifts), {u"bob", 5}),
                           .reaction = kPatience,
                           .answer = kPatience,
                           .wayBack = 2 * kPatience};
    MoneyLedger ledger(order.gifts);
    Connect(PlayTurns(turns, 5));
    return Await([&](ScreenWaits& waits) {
      RunMoneyOrder(waits, order, ledger);
      return ledger.Result();
    });
  }
  // Out of the money page, back to the board list.
  static std::vector<Turn> BackToBoards() {
    return {{"\x03", SystemMenu(13)},
            {"\x1b[D", kClearScreen + At(0, 0, u"【主功能表】") + At(12, 28, u"(B)oards") + At(12, 24, u"●") +
                           At(12, 25)},
            {"b", At(12, 26) + At(12, 25)},
            {"\r", kClearScreen + At(0, 0, u"【看板列表】") + At(3, 0, u"●") + At(3, 1)}};
  }
};

TEST_F(MoneyRunTest, TheMoneyTellsWhatAnUnknownAnswerMeans) {
  std::vector<Turn> turns = Begin();
  Add(turns, Gift(u"20", Message(u"阿里不達")));
  Add(turns, {{"\n", SystemMenu()}});
  Add(turns, Gift(u"15", Message(u"今天已經送太多了")));
  Add(turns, {{"\n", SystemMenu()}, {"p", SystemMenu(13)}, {"\r", MoneyPage(u"15")}});
  Add(turns, BackToBoards());
  const MoneyRunResult result = Give(turns, 2);
  EXPECT_EQ(result.end, MoneyRunEnd::kFinished);
  EXPECT_EQ(result.gifts[0].state, GiftState::kGiven);
  EXPECT_EQ(result.gifts[1].state, GiftState::kRefused);
  EXPECT_EQ(result.gifts[1].words, u"今天已經送太多了");
  EXPECT_EQ(Typed(), TypedIn(turns));
}

TEST_F(MoneyRunTest, WhereNothingTellsTheRunStops) {
  std::vector<Turn> turns = Begin();
  Add(turns, Gift(u"20", Message(u"阿里不達")));
  Add(turns, {{"\n", SystemMenu()}, {"p", SystemMenu(13)}, {"\r", MoneyPage(u"17")}});
  Add(turns, BackToBoards());
  const MoneyRunResult result = Give(turns, 2);
  EXPECT_EQ(result.end, MoneyRunEnd::kUnclear);
  EXPECT_EQ(result.gifts[0].state, GiftState::kAsked);
  EXPECT_EQ(result.gifts[0].words, u"阿里不達");
  EXPECT_EQ(result.gifts[1].state, GiftState::kNotYet);
  EXPECT_EQ(Typed(), TypedIn(turns));
}

TEST_F(MoneyRunTest, WhatTheFieldDoesNotTakeIsNotConfirmed) {
  std::vector<Turn> turns = Begin();
  for (int attempt = 0; attempt < 3; ++attempt)
    Add(turns, {{"p", SystemMenu(13)}, {"\r", MoneyPage(u"20")}, {"bob", "bo"}, {"\x03", SystemMenu()}});
  Add(turns, {{"\x1b[D", kClearScreen + At(0, 0, u"【主功能表】") + At(12, 28, u"(B)oards") +
                             At(12, 24, u"●") + At(12, 25)},
              {"b", At(12, 26) + At(12, 25)},
              {"\r", kClearScreen + At(0, 0, u"【看板列表】") + At(3, 0, u"●") + At(3, 1)}});
  const MoneyRunResult result = Give(turns, 1);
  EXPECT_EQ(result.gifts[0].state, GiftState::kRefused);
  EXPECT_EQ(Typed(), TypedIn(turns));
  EXPECT_EQ(Typed().find('y'), std::string::npos);
}

TEST_F(MoneyRunTest, AGiftWithoutAnAnswerIsNotRepeated) {
  std::vector<Turn> turns = Begin();
  Add(turns, Gift(u"20", ""));
  const MoneyRunResult result = Give(turns, 2);
  EXPECT_EQ(result.end, MoneyRunEnd::kNoWay);
  EXPECT_EQ(result.gifts[0].state, GiftState::kAsked);
  EXPECT_EQ(result.gifts[1].state, GiftState::kNotYet);
  const std::string typed = Typed().substr(TypedIn(turns).size());
  EXPECT_EQ(typed.find_first_not_of('\x03'), std::string::npos) << "it only tries to leave";
}

TEST_F(MoneyRunTest, ABbsThatHangsOnTheWayBackDoesNotKeepTheResult) {
  std::vector<Turn> turns = Begin();
  Add(turns, Gift(u"20", Message(u"文藝幣已經送到對方手上")));
  Add(turns, {{"\n", SystemMenu()}, {"s", kClearScreen + BoardPrompt()}, {"Test", "Test"}, {"\r", ""}});
  const auto start = std::chrono::steady_clock::now();
  const MoneyRunResult result = Give(turns, 1, {.board = u"Test", .code = u"1a2B3c4_"});
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_EQ(result.end, MoneyRunEnd::kFinished);
  EXPECT_EQ(result.gifts[0].state, GiftState::kGiven);
  EXPECT_TRUE(Typed().starts_with(TypedIn(turns))) << Typed();
}

}  // namespace
}  // namespace quillet
