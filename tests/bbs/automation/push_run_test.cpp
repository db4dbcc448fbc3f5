#include "bbs/automation/push_run.h"

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

constexpr int kColumns = 20;

std::string Kinds(std::u16string_view choices = u"1.值得推薦 2.給它噓聲 3.只加→註解") {
  return Bottom(u"您覺得這篇文章 " + std::u16string(choices) + u" [1]? ");
}
std::string Echo(std::u16string_view mark, std::u16string_view text) {
  return Bottom(std::u16string(mark) + u" me: " + std::u16string(text));
}
// With the text in it.
std::string Field(std::u16string_view mark, std::u16string_view text = {}, std::size_t columns = kColumns) {
  const std::string bytes = ToBig5(text);
  return Echo(mark, u"") + "\x1b[30;47m" + bytes + std::string(columns + 1 - bytes.size(), ' ') + "\x1b[m" +
         At(23, 7 + static_cast<int>(bytes.size()));
}
std::string Question(std::u16string_view mark, std::u16string_view text, const std::string& answer = {}) {
  const std::string field = "\x1b[30;47m" + answer + std::string(3 - answer.size(), ' ') + "\x1b[m";
  return Echo(mark, text) + At(23, 50, u" 確定[y/N]:") + field + At(23, 61 + static_cast<int>(answer.size()));
}

class PushRunTest : public AutomationTest {
 protected:
  using Turns = std::vector<Turn>;
  static void Add(Turns& turns, const Turns& more) { turns.insert(turns.end(), more.begin(), more.end()); }
  // From the article to the field of a board that asks for no kind.
  static Turns Begin() { return {{"", Reader()}, {"X", Field(u"→")}}; }
  // The way of one piece from the field on.
  static Turns Piece(std::u16string_view mark, std::u16string_view text, const std::string& then = Reader()) {
    return {{ToBig5(text), Field(mark, text)},
            {"\r", Question(mark, text)},
            {"y", Question(mark, text, "y")},
            {"\r", then}};
  }
  // An instant message while the words are typed: they are thrown away, and the field is asked for anew.
  static Turns Interrupted(std::u16string_view mark, std::u16string_view text) {
    return {{ToBig5(text), Field(mark, text) + StarLine(22)},
            {"\n", At(22, 0) + "\x1b[K" + Field(mark, text)},
            {"\x03", Reader()},
            {"X", Field(mark)}};
  }
  auto Push(PushOrder order) {
    order.author = u"author";
    order.patience = patience;
    return [this, order](ScreenWaits& waits) {
      return PushInPieces(waits, order, [this](const PushRunResult& now) { seen.push_back(now); });
    };
  }
  PushRunResult Run(const Turns& turns, PushOrder order, int thinking = 0) {
    return Follow(turns, Push(std::move(order)), thinking);
  }

  std::chrono::milliseconds patience{5000};
  std::vector<PushRunResult> seen;
};

TEST_F(PushRunTest, EachPieceIsAskedTypedAndConfirmed) {
  Turns turns{{"", Reader()}, {"X", Kinds()}, {"2", Field(u"噓")}};
  Add(turns, Piece(u"噓", u"一二三四五六七八九十"));
  // The next one may only be a note, which no question is asked for.
  turns.push_back({"X", At(22, 0, u"時間太近, 使用 → 加註方式 ") + Field(u"→")});
  Add(turns, Piece(u"→", u"甲乙"));
  const PushRunResult result = Run(turns, {.text = u"一二三四五六七八九十甲乙\n", .kind = PushKind::kBad}, 5);
  EXPECT_EQ(result.outcome, PushOutcome::kDone);
  EXPECT_EQ(result.pushed, 2);
  EXPECT_EQ(result.rest, u"");
  EXPECT_EQ(result.columns, kColumns) << "the BBS's field counts, not what was expected";
  EXPECT_EQ(seen.front().total, 1);
  EXPECT_EQ(seen.back().pushed, 2);
  EXPECT_EQ(seen.back().total, 2);
  EXPECT_FALSE(seen.back().unsure);
}

TEST_F(PushRunTest, AnEarlyPushWaitsAsLongAsTheBbsAsks) {
  Turns turns{{"", Reader()},
              {"X", Message(u"本板禁止快速連續推文，請再等 0 秒")},
              {"\n", Reader()},
              {"X", Kinds()},
              {"1", Field(u"推")}};
  // Refused in the end, and so not taken.
  Add(turns, Piece(u"推", u"好", Message(u"本文已過長, 禁止快速連續推文, 請再等 0 秒")));
  Add(turns, {{"\n", Reader()}, {"X", Field(u"→")}});
  Add(turns, Piece(u"→", u"好"));
  const auto start = std::chrono::steady_clock::now();
  const PushRunResult result = Run(turns, {.text = u"好"});
  EXPECT_EQ(result.outcome, PushOutcome::kDone);
  EXPECT_EQ(result.pushed, 1);
  EXPECT_EQ(result.said, u"") << "what was said of an earlier try";
  EXPECT_EQ(result.waitSeconds, 0);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_TRUE(std::any_of(seen.begin(), seen.end(), [](const PushRunResult& now) {
    return now.waitSeconds == 1 && now.said == u"本文已過長, 禁止快速連續推文, 請再等 0 秒" && !now.unsure;
  }));
}

TEST_F(PushRunTest, AMessageThatEndsTheRunIsToldInItsOwnWords) {
  const Turns toField{{"", Reader()}, {"X", Kinds()}, {"1", Field(u"推")}};
  const Turns piece = Piece(u"推", u"二");
  // Up to here the BBS goes along; the message is its next answer.
  const Turns stages[] = {{toField[0], {"X", ""}},
                          {toField[0], toField[1], {"1", ""}},
                          {toField[0], toField[1], toField[2], piece[0], {"\r", ""}},
                          {toField[0], toField[1], toField[2], piece[0], piece[1], piece[2], {"\r", ""}}};
  const struct {
    std::u16string words;
    bool isRefusal;  // known to say that nothing was taken
  } messages[] = {{u"無法推文: 使用者不可發言", true},
                  {u"抱歉, 禁止推薦", true},
                  {u"本板禁止快速連續推文，請再等 16 分鐘", true},  // too long to be waited for
                  {u"沒有人聽過的話", false}};
  for (const Turns& stage : stages) {
    for (const auto& each : messages) {
      SCOPED_TRACE(testing::Message() << &stage - stages << "," << &each - messages);
      Turns turns = stage;
      turns.back().page = Message(each.words);
      turns.push_back({"\n", Reader()});
      const PushRunResult result = Run(turns, {.text = u"二\n三"});
      EXPECT_EQ(result.outcome, PushOutcome::kRefused);
      EXPECT_EQ(result.said, each.words);
      EXPECT_EQ(result.rest, u"二\n三");
      EXPECT_EQ(result.pushed, 0);
      EXPECT_EQ(result.total, 2);
      const bool wasConfirming = &stage - stages >= 2;
      EXPECT_EQ(result.unsure, wasConfirming && !each.isRefusal);
    }
  }
}

TEST_F(PushRunTest, WhatIsTakenIsNoPartOfTheRest) {
  Turns turns = Begin();
  Add(turns, Piece(u"→", u"一"));
  Add(turns, {{"X", Message(u"本文已刪除")}, {"\n", Reader()}});
  const PushRunResult result = Run(turns, {.text = u"一\n二\n三"});
  EXPECT_EQ(result.outcome, PushOutcome::kRefused);
  EXPECT_EQ(result.pushed, 1);
  EXPECT_EQ(result.total, 3);
  EXPECT_EQ(result.rest, u"二\n三");
  EXPECT_FALSE(result.unsure);
}

TEST_F(PushRunTest, ABbsThatDoesNotAnswerEndsTheRun) {
  patience = std::chrono::milliseconds(400);
  Turns confirmed = Begin();
  Add(confirmed, Piece(u"→", u"一", Bottom(u"...")));
  Turns afterMessage = Begin();
  Add(afterMessage, Piece(u"→", u"一"));
  afterMessage.resize(afterMessage.size() - 2);
  // What dismissed the message may have declined the push, or not.
  Add(afterMessage, {{"y", Question(u"→", u"一") + StarLine(22)}, {"\n", Reader()}});
  Turns garbled = Begin();
  Add(garbled, {{ToBig5(u"一"), Field(u"→", u"乙")}, {"\x03", Bottom(u"...")}});
  const struct {
    Turns turns;
    bool unsure;
  } cases[] = {
      {confirmed, true},
      {afterMessage, true},
      {garbled, false},
      {{{"", Reader()}, {"X", ""}}, false},
      {{{"", Reader()}, {"X", Field(u"→", {}, 7)}, {"\x03", Reader()}}, false},  // no push's field
      {{{"", Reader()}, {"X", Message(u"請再等 0 秒")}, {"\n", Bottom(u"...")}}, false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(&each - cases);
    const PushRunResult result = Run(each.turns, {.text = u"一\n二"}, 5);
    EXPECT_NE(result.outcome, PushOutcome::kDone);
    EXPECT_EQ(result.outcome == PushOutcome::kRefused, !result.said.empty());
    EXPECT_EQ(result.pushed, 0);
    EXPECT_EQ(result.unsure, each.unsure);
    EXPECT_EQ(result.rest, u"一\n二");
  }
}

TEST_F(PushRunTest, AKindThatIsNotOfferedBecomesANoteOrNothing) {
  Turns turns{{"", Reader()}, {"X", Kinds(u"1.值得推薦 2.只加→註解")}, {"2", Field(u"→")}};
  Add(turns, Piece(u"→", u"哼"));
  EXPECT_EQ(Run(turns, {.text = u"哼", .kind = PushKind::kBad}).outcome, PushOutcome::kDone);
  const PushRunResult none = Run({{"", Reader()}, {"X", Kinds(u"1.值得推薦")}, {"\x03", Reader()}},
                                 {.text = u"哼", .kind = PushKind::kBad});
  EXPECT_EQ(none.outcome, PushOutcome::kNotOffered);
  EXPECT_EQ(none.rest, u"哼");
}

TEST_F(PushRunTest, TheListIsFollowedOnlyOnTheArticlesLine) {
  const std::string own = ArticleList(u"author      ");
  Turns turns = Begin();
  Add(turns, Piece(u"→", u"一", own));
  turns.push_back({"X", Field(u"→")});
  Turns other = turns;
  Add(turns, Piece(u"→", u"二", own));
  turns.push_back({"l", Reader()});
  EXPECT_EQ(Run(turns, {.text = u"一\n二"}).outcome, PushOutcome::kDone);

  patience = std::chrono::milliseconds(400);
  Add(other, Piece(u"→", u"二", ArticleList(u"somebody    ")));
  const PushRunResult result = Run(other, {.text = u"一\n二"});
  EXPECT_EQ(result.outcome, PushOutcome::kNoAnswer);
  EXPECT_EQ(result.pushed, 1);
  EXPECT_TRUE(result.unsure);
}

TEST_F(PushRunTest, AnInstantMessageInterruptsWithoutASecondPush) {
  Turns turns{{"", Reader()},
              {"X", Kinds() + StarLine(22)},
              {"\n", At(22, 0) + "\x1b[K" + Kinds()},
              // What dismisses this one answers the question, with another kind.
              {"1", StarLine(22)},
              {"\n", At(22, 0) + "\x1b[K" + Field(u"→")},
              {"\x03", Reader()},
              {"X", Kinds()},
              {"1", Field(u"推")},
              {ToBig5(u"好的"), Field(u"推", u"的") + StarLine(22)},
              {"\n", At(22, 0) + "\x1b[K" + Field(u"推", u"的")},
              {"\x03", Reader()},
              {"X", Kinds()},
              {"1", Field(u"推")},
              {ToBig5(u"好的"), Field(u"推", u"好的")},
              {"\r", Question(u"推", u"好的")},
              {"y", StarLine(22)},
              {"\n", At(22, 0) + "\x1b[K" + Question(u"推", u"好的")},
              {"y", Question(u"推", u"好的", "y")},
              // It was taken, and a message lies over the article.
              {"\r", Reader() + StarLine(22)},
              {"\n", Reader()}};
  const PushRunResult result = Run(turns, {.text = u"好的"}, 120);
  EXPECT_EQ(result.outcome, PushOutcome::kDone);
  EXPECT_EQ(result.pushed, 1);
}

TEST_F(PushRunTest, EachPieceMayBeInterruptedAFewTimes) {
  Turns turns = Begin();
  for (int time = 0; time < 4; ++time)
    Add(turns, Interrupted(u"→", u"一"));
  Turns tooOften = turns;
  Add(turns, Piece(u"→", u"一"));
  turns.push_back({"X", Field(u"→")});
  for (int time = 0; time < 4; ++time)
    Add(turns, Interrupted(u"→", u"二"));
  Add(turns, Piece(u"→", u"二"));
  EXPECT_EQ(Run(turns, {.text = u"一\n二"}, 5).outcome, PushOutcome::kDone) << "each has its own count";
  Add(tooOften, Interrupted(u"→", u"一"));
  Add(tooOften, Interrupted(u"→", u"一"));
  tooOften.pop_back();
  EXPECT_EQ(Run(tooOften, {.text = u"一\n二"}, 5).outcome, PushOutcome::kNoAnswer);
}

TEST_F(PushRunTest, NothingIsTypedWithoutAnArticleAndNothingAfterTheUserTakesOver) {
  patience = std::chrono::milliseconds(200);
  EXPECT_EQ(Run({{"", ArticleList(u"author      ")}}, {.text = u"一"}).outcome, PushOutcome::kNoReader);
  patience = std::chrono::milliseconds(20'000);
  EXPECT_EQ(Follow({{"", Reader()}},
                   [this](ScreenWaits& waits) {
                     cancelled_ = true;
                     return Push({.text = u"一"})(waits);
                   })
                .outcome,
            PushOutcome::kClosed);
}

TEST_F(PushRunTest, TheLedgerTellsOfARunThatEndedAndOfOneThatWasStopped) {
  PushOrder order{.text = u"一", .author = u"author", .asksCode = true, .patience = patience};
  const auto run = [&order](PushLedger& ledger) {
    return [&](ScreenWaits& waits) { return RunPushOrder(waits, order, ledger); };
  };
  const auto expect = [](const PushRunResult& result, PushOutcome outcome, std::u16string_view code) {
    EXPECT_EQ(result.outcome, outcome);
    EXPECT_EQ(result.code, code);
  };
  Turns turns = Begin();
  Add(turns, Piece(u"→", u"一"));
  Add(turns, {{"Q", ArticleBox(u"1aBc-_42")}, {"\n", Reader()}});
  PushLedger ledger(order);
  expect(Follow(turns, run(ledger)), PushOutcome::kDone, u"1aBc-_42");
  expect(ledger.Result(), PushOutcome::kDone, u"1aBc-_42");
  EXPECT_EQ(ledger.Result().pushed, 1);
  // Where nothing was pushed, nothing is asked.
  PushLedger ofRefused(order);
  Follow({{"", Reader()}, {"X", Message(u"本文已刪除")}, {"\n", Reader()}}, run(ofRefused));
  expect(ofRefused.Result(), PushOutcome::kRefused, u"");

  order.patience = std::chrono::milliseconds(20'000);
  for (const bool stops : {true, false}) {
    PushLedger ofEnded(order);
    expect(ofEnded.Result(), PushOutcome::kTakenOver, u"");
    EXPECT_EQ(ofEnded.Result().rest, u"一");
    Turns toConfirmation = Begin();
    Add(toConfirmation, {{ToBig5(u"一"), Field(u"→", u"一")}, {"\r", ""}});
    const PushRunResult result = FollowUntil(toConfirmation, run(ofEnded), [&] {
      EXPECT_EQ(ofEnded.Result().outcome, PushOutcome::kTakenOver) << "while it goes on, too";
      EXPECT_TRUE(ofEnded.Result().unsure);
      if (stops)
        cancelled_ = true;
      else
        session_.RequestDisconnect(session_.connectionNumber);
    });
    expect(result, stops ? PushOutcome::kTakenOver : PushOutcome::kClosed, u"");
    expect(ofEnded.Result(), result.outcome, u"");
    EXPECT_TRUE(ofEnded.Result().unsure);
    EXPECT_EQ(ofEnded.Result().rest, u"一");
  }
}

TEST_F(PushRunTest, TheTimeToWaitIsReadFromTheBbssWords) {
  EXPECT_EQ(PushPages::SecondsToWait(u"本板禁止快速連續推文，請再等 42 秒"), 42);
  EXPECT_EQ(PushPages::SecondsToWait(u"本文已過長, 禁止快速連續推文, 請再等 2 分鐘"), 120);
  for (const auto words : {u"系統禁止短時間內大量推文", u"對不起，您的文章或推文間隔太近囉！", u"請再等"})
    EXPECT_EQ(PushPages::SecondsToWait(words), PushPages::kUsualWait);
  EXPECT_GT(PushPages::SecondsToWait(u"請再等 99999999999999999999 秒").value(), 900);
  for (const auto words : {u"抱歉, 禁止推薦", u"本文已刪除", u"無法推文: 使用者不可發言", u""})
    EXPECT_FALSE(PushPages::SecondsToWait(words));
}

}  // namespace
}  // namespace quillet
