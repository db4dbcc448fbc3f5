#include "bbs/automation/money_run.h"

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

// Where the BBS answers,
constexpr std::chrono::milliseconds kPatience{10'000};
// and where it does not.
constexpr std::chrono::milliseconds kShortPatience{400};

class MoneyRunTest : public AutomationTest {
 protected:
  static std::string Given() { return Message(u"文藝幣已經送到對方手上"); }
  static std::string SystemMenu(int mark = 12) {
    return kClearScreen + At(0, 0, u"【系統資訊】") + At(12, 28, u"(A)bout") + At(13, 28, u"(P)resent") +
           At(mark, 24, u"●") + At(mark, 25);
  }
  static std::string MoneyPage(Text money) {
    return kClearScreen + At(0, 0, u"【送人文藝幣】") + At(1, 52, u"(目前有 $") + ToBig5(money) + ")" +
           At(3, 4, u"要送給誰: ") + FieldAt(3, 14);
  }
  static Turns Begin() { return {{"", SystemMenu()}}; }
  static Turns Open(const std::string& page) { return {{"p", SystemMenu(13)}, {"\r", page}}; }
  // From the menu to the confirmation, then `answer`.
  static Turns Gift(Text money, const std::string& answer) {
    return Open(MoneyPage(money)) +
           Turns{{"bob", "bob"}, {"\r", At(5, 4, u"送多少: ") + FieldAt(5, 12)},
                 {"5", "5"},     {"\r", At(7, 4, u"確定要送嗎[y/N]: ") + FieldAt(7, 21)},
                 {"y", "y"},     {"\r", answer}};
  }
  static Turns Passed() { return {{"\n", SystemMenu()}}; }
  // From the system menu to the board list, and there by this key out of a page of it.
  static Turns Out() { return {{kLeft, MainMenu()}, {"b", At(12, 26) + At(12, 25)}, {"\r", BoardList()}}; }
  static Turns Back(const std::string& key) { return Turns{{key, SystemMenu(13)}} + Out(); }

  // So many gifts of 5 to bob.
  static auto Giving(int gifts, std::chrono::milliseconds patience = kPatience) {
    MoneyOrder order{.article = {},
                     .gifts = std::vector<MoneyGift>(static_cast<std::size_t>(gifts), {u"bob", 5}),
                     .reaction = patience,
                     .answer = patience,
                     .wayBack = kPatience};
    return [order](ScreenWaits& waits) { return Give(waits, order); };
  }
  static MoneyRunResult Give(ScreenWaits& waits, const MoneyOrder& order) {
    MoneyLedger ledger(order.gifts);
    RunMoneyOrder(waits, order, ledger);
    return ledger.Result();
  }
};

TEST_F(MoneyRunTest, TheBbssAnswerOrElseItsMoneyTellsWhatCameOfAGift) {
  using End = MoneyRunEnd;
  using State = GiftState;
  const std::u16string noUser = u"沒有這個人，或不能送給他", unknown = u"今天送太多了";
  const struct {
    std::u16string before;  // the money
    std::string answer;     // to the first of two gifts; the second one is made
    std::u16string now;
    End end;
    State first;
    std::u16string words;
  } cases[] = {
      {u"20", Given(), u"15", End::kFinished, State::kGiven, u""},
      {u"20", Message(unknown), u"15", End::kFinished, State::kGiven, u""},
      {u"20", Message(unknown), u"20", End::kFinished, State::kRefused, unknown},
      {u"20", SystemMenu(), u"20", End::kFinished, State::kRefused, u"站台沒有扣款，也沒有說明原因"},
      {u"20", Message(noUser), u"20", End::kFinished, State::kRefused, noUser},
      {u"20", At(20, 0, noUser) + Banner(), u"20", End::kFinished, State::kRefused, noUser},
      {u"20", Message(u"您的文藝幣不夠"), u"", End::kNotEnough, State::kRefused, u"您的文藝幣不夠"},
      {u"20", Message(unknown), u"17", End::kUnclear, State::kAsked, unknown},
      {u"很多", Message(unknown), u"很多", End::kUnclear, State::kAsked, unknown},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(&each - cases);
    const Turns passed = each.answer == SystemMenu() ? Turns{} : Passed();
    Turns turns = Begin() + Gift(each.before, each.answer);
    if (each.end == End::kFinished) turns = turns + passed + Gift(each.now, Given());
    if (each.end == End::kUnclear) turns = turns + passed + Open(MoneyPage(each.now));
    const MoneyRunResult result =
        Follow(turns + Back(each.end == End::kUnclear ? "\x03" : "\n"), Giving(2), 5);
    EXPECT_EQ(result.end, each.end);
    EXPECT_EQ(result.gifts[0].state, each.first);
    EXPECT_EQ(result.gifts[0].words, each.words);
    EXPECT_EQ(result.gifts[1].state, each.end == End::kFinished ? State::kGiven : State::kNotYet);
  }
  // Once more for the last gift.
  EXPECT_EQ(Follow(Begin() + Gift(u"20", Message(unknown)) + Passed() + Open(MoneyPage(u"15")) + Back("\x03"),
                   Giving(1), 5)
                .Count(State::kGiven),
            1);
}

TEST_F(MoneyRunTest, NothingIsGivenUnlessTheMoneySufficesForAll) {
  const MoneyRunResult result = Follow(Begin() + Open(MoneyPage(u"9")) + Back("\x03"), Giving(2), 5);
  EXPECT_EQ(result.end, MoneyRunEnd::kNotEnough);
  EXPECT_EQ(result.money, 9);
  // Just enough; later gifts are not measured by what is left.
  EXPECT_EQ(Follow(Begin() + Gift(u"10", Given()) + Passed() + Gift(u"5", Given()) + Back("\n"), Giving(2), 5)
                .Count(GiftState::kGiven),
            2);
}

TEST_F(MoneyRunTest, WhereThereIsNoWayNothingIsPressed) {
  const std::u16string noMoney = u"訪客沒有文藝幣";
  const struct {
    Turns turns;
    MoneyRunEnd end;
    std::u16string said;
  } cases[] = {
      {Begin() + Open(SystemMenu(13) + Message(noMoney)) + Back("\n"), MoneyRunEnd::kRefused, noMoney},
      {{{"", BoardPrompt()}}, MoneyRunEnd::kBusy, u""},
      {{{"", Editor()}}, MoneyRunEnd::kBusy, u""},
      {{{"", Reader() + Bottom(u"推 me: ") + At(23, 79)}}, MoneyRunEnd::kBusy, u""},
      {{{"", kClearScreen + At(5, 0, u"沒有人知道的畫面") + At(9, 40)}}, MoneyRunEnd::kNoWay, u""},
      // The menu does not react: three times for the money page, three times out of it.
      {Begin() + Turns{{"ppp", ""}, {std::string(kLeft) + kLeft + kLeft, ""}}, MoneyRunEnd::kNoWay, u""},
  };
  for (const auto& each : cases) {
    const bool reacts = each.end != MoneyRunEnd::kNoWay;
    const MoneyRunResult result = Follow(each.turns, Giving(1, reacts ? kPatience : kShortPatience), 5);
    EXPECT_EQ(result.end, each.end) << &each - cases;
    EXPECT_EQ(result.said, each.said);
    EXPECT_EQ(result.Count(GiftState::kNotYet), 1);
  }
}

TEST_F(MoneyRunTest, WhatTheFieldDoesNotTakeIsNotConfirmed) {
  const Turns attempt = Open(MoneyPage(u"20")) + Turns{{"bob", "bo"}, {"\x03", SystemMenu()}};
  const MoneyRunResult result =
      Follow(Begin() + attempt + attempt + attempt + Out(), Giving(1, 3 * kShortPatience), 5);
  EXPECT_EQ(result.gifts[0].state, GiftState::kRefused);
  EXPECT_NE(result.gifts[0].words, u"");
}

TEST_F(MoneyRunTest, MessagesThatSwallowKeysNeitherLoseNorRepeatAGift) {
  const Turns gift = Gift(u"20", Given());
  // At the key of this turn, beneath which `row` asks.
  const auto swallowed = [&](std::size_t turn, int row) {
    return Turns{{gift[turn].typed, StarLine(22)}, {"\n", Uncovered(At(row, 24))}, gift[turn]};
  };
  const Turns toConfirmation = Turns{{"", SystemMenu() + StarLine(22)}} + Passed() + Open(MoneyPage(u"20")) +
                               Turns{gift[2]} + swallowed(3, 3) + Turns{gift[4]} + swallowed(5, 5) +
                               Turns{gift[6]};
  // The last one may have been swallowed, or not.
  for (const Turns& end : {swallowed(7, 7), Turns{{"\r", StarLine(22)}, {"\n", Given()}}})
    EXPECT_EQ(Follow(toConfirmation + end + Back("\n"), Giving(1), 20).Count(GiftState::kGiven), 1);
}

TEST_F(MoneyRunTest, AGiftWithoutAnAnswerIsNotRepeated) {
  // It only tries to leave, and once more for the way back.
  const MoneyRunResult result =
      Follow(Begin() + Gift(u"20", "") + Turns{{"\x03\x03\x03\x03\x03\x03", ""}}, Giving(2, kShortPatience));
  EXPECT_EQ(result.end, MoneyRunEnd::kNoWay);
  EXPECT_EQ(result.gifts[0].state, GiftState::kAsked);
  EXPECT_EQ(result.gifts[1].state, GiftState::kNotYet);
}

TEST_F(MoneyRunTest, AStoppedRunLeavesInDoubtOnlyWhatItHasBegunToConfirm) {
  const Turns turns = Begin() + Gift(u"20", "");
  for (std::size_t count = 2; count <= turns.size(); ++count) {
    const bool confirms = TypedIn(Begun(turns, count)).find('y') != std::string::npos;
    const Ending ending = count % 2 == 0 ? Ending::kCancelled : Ending::kDisconnected;
    const MoneyRunResult result =
        FollowUntil(Begun(turns, count), Giving(2, std::chrono::seconds(20)), [&] { End(ending); });
    EXPECT_EQ(result.end, count % 2 == 0 ? MoneyRunEnd::kTakenOver : MoneyRunEnd::kClosed);
    EXPECT_EQ(result.gifts[0].state, confirms ? GiftState::kAsked : GiftState::kNotYet) << count;
    EXPECT_EQ(result.gifts[1].state, GiftState::kNotYet);
  }
}

TEST_F(MoneyRunTest, ABbsThatHangsOnTheWayBackDoesNotKeepTheResult) {
  const MoneyOrder order{.article = {.board = u"Test", .code = u"1a2B3c4_"},
                         .gifts = {{u"bob", 50}},
                         .wayBack = std::chrono::seconds(1)};
  const Turns turns = Begin() + Open(MoneyPage(u"20")) +
                      Turns{{"\x03", SystemMenu()}, {"s", BoardPrompt()}, {"Test", "Test"}, {"\r", ""}};
  Connect(turns);
  EXPECT_EQ(Await([&](ScreenWaits& waits) { return Give(waits, order); }).end, MoneyRunEnd::kNotEnough);
}

}  // namespace
}  // namespace quillet
