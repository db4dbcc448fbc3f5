#include "bbs/automation/money_run.h"

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

// The BBS is known to have answered all that it will by then.
constexpr std::chrono::milliseconds kPatience{800};
// For a BBS that is known not to answer.
constexpr std::chrono::milliseconds kShortPatience{150};

std::string Given() {
  return Message(u"文藝幣已經送到對方手上");
}

std::string SystemMenu(int mark = 12) {
  return kClearScreen + At(0, 0, u"【系統資訊】") + At(12, 28, u"(A)bout") + At(13, 28, u"(P)resent") +
         At(mark, 24, u"●") + At(mark, 25);
}
std::string MoneyPage(std::u16string_view money) {
  return kClearScreen + At(0, 0, u"【送人文藝幣】") + At(1, 52, u"(目前有 $") + ToBig5(money) + ")" +
         At(3, 4, u"要送給誰: ") + FieldAt(3, 14);
}
std::string AmountPrompt() {
  return At(5, 4, u"送多少: ") + FieldAt(5, 12);
}
std::string Confirmation() {
  return At(7, 4, u"確定要送嗎[y/N]: ") + FieldAt(7, 21);
}
// A message over the money page is gone, and the cursor back in this row.
std::string Uncovered(int row) {
  return At(22, 0) + "\x1b[K" + At(row, 24);
}

using Turns = std::vector<Turn>;
Turns Begin(std::initializer_list<Turns> parts) {
  Turns all{{"", SystemMenu()}};
  for (const Turns& part : parts)
    all.insert(all.end(), part.begin(), part.end());
  return all;
}
Turns Open(const std::string& page) {
  return {{"p", SystemMenu(13)}, {"\r", page}};
}
// From the menu to the confirmation, then `answer`.
Turns Gift(std::u16string_view money, const std::string& answer) {
  return {{"p", SystemMenu(13)},
          {"\r", MoneyPage(money)},
          {"bob", "bob"},
          {"\r", AmountPrompt()},
          {"5", "5"},
          {"\r", Confirmation()},
          {"y", "y"},
          {"\r", answer}};
}
// By this key out of a page of the system menu, and to the board list.
Turns Back(const std::string& key) {
  return {{key, SystemMenu(13)}, {kLeft, MainMenu()}, {"b", At(12, 26) + At(12, 25)}, {"\r", BoardList()}};
}

class MoneyRunTest : public AutomationTest {
 protected:
  // So many gifts of 5 to bob.
  auto Run(int gifts, std::chrono::milliseconds patience = kPatience, ArticleReference article = {}) {
    return [=](ScreenWaits& waits) {
      const MoneyOrder order{.article = article,
                             .gifts = std::vector<MoneyGift>(static_cast<std::size_t>(gifts), {u"bob", 5}),
                             .reaction = patience,
                             .answer = patience,
                             .wayBack = std::chrono::seconds(3)};
      MoneyLedger ledger(order.gifts);
      RunMoneyOrder(waits, order, ledger);
      return ledger.Result();
    };
  }
};

TEST_F(MoneyRunTest, TheBbssAnswerOrElseItsMoneyTellsWhatCameOfAGift) {
  using End = MoneyRunEnd;
  using State = GiftState;
  const struct {
    std::string answer;       // to the first of two gifts; the second one is made
    std::u16string moneyNow;  // 20 before
    End end;
    State first;
    std::u16string words;
  } cases[] = {
      {Given(), u"15", End::kFinished, State::kGiven, u""},
      {At(20, 0, u"文藝幣已經送到對方手上") + Banner(), u"15", End::kFinished, State::kGiven, u""},
      {Message(u"阿里不達"), u"15", End::kFinished, State::kGiven, u""},
      {Message(u"今天送太多了"), u"20", End::kFinished, State::kRefused, u"今天送太多了"},
      {SystemMenu(), u"20", End::kFinished, State::kRefused, u"站台沒有扣款，也沒有說明原因"},
      {Message(u"沒有這個人，或不能送給他"), u"20", End::kFinished, State::kRefused,
       u"沒有這個人，或不能送給他"},
      {Message(u"您的文藝幣不夠"), u"", End::kNotEnough, State::kRefused, u"您的文藝幣不夠"},
      {Message(u"阿里不達"), u"17", End::kUnclear, State::kAsked, u"阿里不達"},
      {Message(u"阿里不達"), u"很多", End::kUnclear, State::kAsked, u"阿里不達"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(&each - cases);
    const Turns passed = each.answer == SystemMenu() ? Turns{} : Turns{{"\n", SystemMenu()}};
    const Turns toGift = Begin({Gift(u"20", each.answer)});
    Turns turns = toGift;
    const auto add = [&](const Turns& more) { turns.insert(turns.end(), more.begin(), more.end()); };
    if (each.end != End::kNotEnough) add(passed);
    if (each.end == End::kFinished) add(Gift(each.moneyNow, Given()));
    if (each.end == End::kUnclear) add(Open(MoneyPage(each.moneyNow)));
    add(Back(each.end == End::kUnclear ? "\x03" : "\n"));
    const MoneyRunResult result = Follow(turns, Run(2), 5);
    EXPECT_EQ(result.end, each.end);
    EXPECT_EQ(result.gifts[0].state, each.first);
    EXPECT_EQ(result.gifts[0].words, each.words);
    EXPECT_EQ(result.gifts[1].state, each.end == End::kFinished ? State::kGiven : State::kNotYet);
  }
}

TEST_F(MoneyRunTest, TheMoneyIsLookedAtOnceMoreForTheLastGift) {
  const MoneyRunResult result = Follow(
      Begin(
          {Gift(u"20", Message(u"阿里不達")), {{"\n", SystemMenu()}}, Open(MoneyPage(u"15")), Back("\x03")}),
      Run(1), 5);
  EXPECT_EQ(result.end, MoneyRunEnd::kFinished);
  EXPECT_EQ(result.gifts[0].state, GiftState::kGiven);
  EXPECT_EQ(result.money, 15);
}

TEST_F(MoneyRunTest, NothingIsGivenUnlessTheMoneySufficesForAll) {
  const MoneyRunResult result = Follow(Begin({Open(MoneyPage(u"9")), Back("\x03")}), Run(2), 5);
  EXPECT_EQ(result.end, MoneyRunEnd::kNotEnough);
  EXPECT_EQ(result.money, 9);
  // Just enough; later gifts are not measured by what is left.
  EXPECT_EQ(Follow(Begin({Gift(u"10", Given()), {{"\n", SystemMenu()}}, Gift(u"5", Given()), Back("\n")}),
                   Run(2), 5)
                .Count(GiftState::kGiven),
            2);
}

TEST_F(MoneyRunTest, WhereThereIsNoWayNothingIsPressed) {
  const struct {
    Turns turns;
    MoneyRunEnd end;
    std::u16string said;
  } cases[] = {
      {Begin({Open(SystemMenu(13) + Message(u"訪客沒有文藝幣")), Back("\n")}), MoneyRunEnd::kRefused,
       u"訪客沒有文藝幣"},
      {{{"", BoardPrompt()}}, MoneyRunEnd::kBusy, u""},
      {{{"", kClearScreen + At(5, 0, u"沒有人知道的畫面") + At(9, 40)}}, MoneyRunEnd::kNoWay, u""},
      // The menu does not react: three times for the money page, three times out of it.
      {{{"", SystemMenu()}, {"ppp", ""}, {std::string(kLeft) + kLeft + kLeft, ""}}, MoneyRunEnd::kNoWay, u""},
  };
  for (const auto& each : cases) {
    const bool answers = each.end == MoneyRunEnd::kRefused;
    const MoneyRunResult result = Follow(each.turns, Run(1, answers ? kPatience : kShortPatience), 5);
    EXPECT_EQ(result.end, each.end);
    EXPECT_EQ(result.said, each.said);
    EXPECT_EQ(result.Count(GiftState::kNotYet), 1);
  }
}

TEST_F(MoneyRunTest, WhatTheFieldDoesNotTakeIsNotConfirmed) {
  const Turns attempt = {
      {"p", SystemMenu(13)}, {"\r", MoneyPage(u"20")}, {"bob", "bo"}, {"\x03", SystemMenu()}};
  Turns back = Back("");
  back[0].page.clear();
  const MoneyRunResult result = Follow(Begin({attempt, attempt, attempt, back}), Run(1), 5);
  EXPECT_EQ(result.gifts[0].state, GiftState::kRefused);
  EXPECT_NE(result.gifts[0].words, u"");
}

TEST_F(MoneyRunTest, MessagesThatSwallowKeysNeitherLoseNorRepeatAGift) {
  const Turn swallowed{"\r", StarLine(22)};
  const Turns toConfirmation = {{"\n", SystemMenu()},
                                {"p", SystemMenu(13)},
                                {"\r", MoneyPage(u"20")},
                                {"bob", "bob"},
                                swallowed,
                                {"\n", Uncovered(3)},
                                {"\r", AmountPrompt()},
                                {"5", "5"},
                                swallowed,
                                {"\n", Uncovered(5)},
                                {"\r", Confirmation()},
                                {"y", "y"},
                                swallowed};
  for (const Turns& end : {Turns{{"\n", Uncovered(7)}, {"\r", Given()}}, Turns{{"\n", Given()}}}) {
    Turns turns = Begin({toConfirmation, end, Back("\n")});
    turns[0].page += StarLine(22);
    EXPECT_EQ(Follow(turns, Run(1), 20).Count(GiftState::kGiven), 1);
  }
}

TEST_F(MoneyRunTest, AGiftWithoutAnAnswerIsNotRepeated) {
  Turns turns = Begin({Gift(u"20", "")});
  turns.push_back({"\x03\x03\x03\x03\x03\x03", ""});  // it only tries to leave, once more for the way back
  const MoneyRunResult result = Follow(turns, Run(2, kShortPatience));
  EXPECT_EQ(result.end, MoneyRunEnd::kNoWay);
  EXPECT_EQ(result.gifts[0].state, GiftState::kAsked);
  EXPECT_EQ(result.gifts[1].state, GiftState::kNotYet);
}

TEST_F(MoneyRunTest, AStoppedRunLeavesInDoubtWhatItHasBegunToConfirmAndNothingElse) {
  const Turns gift = Begin({Gift(u"20", "")});
  for (std::size_t turn = 1; turn < gift.size(); ++turn) {
    SCOPED_TRACE(turn);
    Turns some(gift.begin(), gift.begin() + static_cast<std::ptrdiff_t>(turn) + 1);
    some.back().page.clear();
    const bool isConfirmed = TypedIn(some).find('y') != std::string::npos;
    const bool stops = turn % 2 == 0;
    const MoneyRunResult result = FollowUntil(some, Run(2, std::chrono::milliseconds(20'000)), [&] {
      if (stops)
        cancelled_ = true;
      else
        session_.RequestDisconnect(session_.connectionNumber);
    });
    EXPECT_EQ(result.end, stops ? MoneyRunEnd::kTakenOver : MoneyRunEnd::kClosed);
    EXPECT_EQ(result.gifts[0].state, isConfirmed ? GiftState::kAsked : GiftState::kNotYet);
    EXPECT_EQ(result.gifts[1].state, GiftState::kNotYet);
  }
}

TEST_F(MoneyRunTest, ABbsThatHangsOnTheWayBackDoesNotKeepTheResult) {
  Turns turns =
      Begin({Gift(u"20", Given()),
             {{"\n", SystemMenu()}, {"s", kClearScreen + BoardPrompt()}, {"Test", "Test"}, {"\r", ""}}});
  const auto start = std::chrono::steady_clock::now();
  const MoneyRunResult result = Follow(turns, Run(1, kPatience, {.board = u"Test", .code = u"1a2B3c4_"}));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_EQ(result.end, MoneyRunEnd::kFinished);
  EXPECT_EQ(result.gifts[0].state, GiftState::kGiven);
}

}  // namespace
}  // namespace quillet
