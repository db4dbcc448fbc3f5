#include "bbs/automation/push_run.h"

#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

class PushRunTest : public AutomationTest {
 protected:
  static constexpr std::size_t kColumns = 20;

  static std::string Kinds(Text choices = u"1.值得推薦 2.給它噓聲 3.只加→註解") {
    return Bottom(u"您覺得這篇文章 " + std::u16string(choices) + u" [1]? ");
  }
  static std::string Echo(Text mark, Text text) {
    return Bottom(std::u16string(mark) + u" me: " + std::u16string(text));
  }
  // With the text in it.
  static std::string Field(Text mark, Text text = {}, std::size_t columns = kColumns) {
    const std::string bytes = ToBig5(text);
    return Echo(mark, u"") + "\x1b[30;47m" + bytes + std::string(columns + 1 - bytes.size(), ' ') + "\x1b[m" +
           At(23, 7 + static_cast<int>(bytes.size()));
  }
  static std::string Question(Text mark, Text text, const std::string& answer = {}) {
    const std::string field = "\x1b[30;47m" + answer + std::string(3 - answer.size(), ' ') + "\x1b[m";
    return Echo(mark, text) + At(23, 50, u" 確定[y/N]:") + field +
           At(23, 61 + static_cast<int>(answer.size()));
  }
  // From the article to the field of a board that asks for no kind.
  static Turns Begin() { return {{"", Reader()}, {"X", Field(u"→")}}; }
  static Turns Next() { return {{"X", Field(u"→")}}; }
  // The way of one piece from the field on.
  static Turns Piece(Text mark, Text text, const std::string& then = Reader()) {
    return {{ToBig5(text), Field(mark, text)},
            {"\r", Question(mark, text)},
            {"y", Question(mark, text, "y")},
            {"\r", then}};
  }
  static Turns Told(Text words) { return {{"X", Message(words)}, {"\n", Reader()}}; }

  PushRunResult Push(const Turns& turns, PushOrder order, int thinking = 0) {
    order.author = u"author";
    order.patience = patience;
    const auto note = [this](const PushRunResult& now) { seen.push_back(now); };
    return Follow(
        turns, [&](ScreenWaits& waits) { return PushInPieces(waits, order, note); }, thinking);
  }
  std::chrono::milliseconds patience{5000};
  std::vector<PushRunResult> seen;
};

TEST_F(PushRunTest, EachPieceIsAskedTypedAndConfirmed) {
  // The second one may only be a note, which no question is asked for.
  const PushRunResult result = Push(
      Turns{{"", Reader()}, {"X", Kinds()}, {"2", Field(u"噓")}} + Piece(u"噓", u"一二三四五六七八九十") +
          Turns{{"X", At(22, 0, u"時間太近, 使用 → 加註方式 ") + Field(u"→")}} + Piece(u"→", u"甲乙"),
      {.text = u"一二三四五六七八九十甲乙\n\n \n", .kind = PushKind::kBad}, 5);
  EXPECT_EQ(result.outcome, PushOutcome::kDone);
  EXPECT_EQ(result.rest, u"");
  EXPECT_EQ(result.columns, static_cast<int>(kColumns)) << "the BBS's field counts, not what was expected";
  EXPECT_EQ(seen.front().total, 1);
  EXPECT_EQ(seen.back().pushed, 2);
  EXPECT_EQ(seen.back().total, 2);
  EXPECT_FALSE(seen.back().unsure);
}

TEST_F(PushRunTest, AnEarlyPushWaitsAsLongAsTheBbsAsks) {
  const std::u16string words = u"本文已過長, 禁止快速連續推文, 請再等 0 秒";
  const auto start = std::chrono::steady_clock::now();
  // Refused at first at once, and then in the end, and so not taken either.
  const PushRunResult result =
      Push(Turns{{"", Reader()}} + Told(u"本板禁止快速連續推文，請再等 0 秒") +
               Turns{{"X", Kinds()}, {"1", Field(u"推")}} + Piece(u"推", u"好", Message(words)) +
               Turns{{"\n", Reader()}} + Next() + Piece(u"→", u"好"),
           {.text = u"好"});
  EXPECT_EQ(result.outcome, PushOutcome::kDone);
  EXPECT_EQ(result.pushed, 1);
  EXPECT_EQ(result.said, u"") << "what was said of an earlier try";
  EXPECT_EQ(result.waitSeconds, 0);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_TRUE(std::any_of(seen.begin(), seen.end(), [&](const PushRunResult& now) {
    return now.waitSeconds == 1 && now.said == words && !now.unsure;
  }));
}

TEST_F(PushRunTest, AMessageThatEndsTheRunIsToldInItsOwnWords) {
  // The first piece is taken. With the second one the BBS goes along up to the message.
  const Turns first = Begin() + Piece(u"→", u"一"), toField{{"X", Kinds()}, {"1", Field(u"推")}};
  const Turns piece = Piece(u"推", u"二");
  const Turns stages[] = {{{"X", ""}},
                          {toField[0], {"1", ""}},
                          toField + Turns{piece[0], {"\r", ""}},
                          toField + Turns{piece[0], piece[1], piece[2], {"\r", ""}}};
  const struct {
    std::u16string words;
    bool isRefusal;  // known to say that nothing was taken
  } messages[] = {{u"無法推文: 使用者不可發言", true},
                  {u"本板禁止快速連續推文，請再等 16 分鐘", true},  // too long to be waited for
                  {u"沒有人聽過的話", false}};
  for (const Turns& stage : stages) {
    for (const auto& each : messages) {
      SCOPED_TRACE(testing::Message() << &stage - stages << "," << &each - messages);
      Turns turns = first + stage;
      turns.back().page = Message(each.words);
      const PushRunResult result = Push(turns + Turns{{"\n", Reader()}}, {.text = u"一\n二\n三"});
      EXPECT_EQ(result.outcome, PushOutcome::kRefused);
      EXPECT_EQ(result.said, each.words);
      EXPECT_EQ(result.rest, u"二\n三");
      EXPECT_EQ(result.pushed, 1);
      EXPECT_EQ(result.total, 3);
      EXPECT_EQ(result.unsure, &stage - stages >= 2 && !each.isRefusal);
    }
  }
}

TEST_F(PushRunTest, ABbsThatDoesNotAnswerEndsTheRun) {
  const Turns piece = Piece(u"→", u"一", Bottom(u"..."));
  const struct {
    Turns turns;
    bool unsure;
  } cases[] = {
      {Begin() + piece, true},
      // What dismissed the message may have declined the push, or not.
      {Begin() + Turns{piece[0], piece[1], {"y", StarLine(22)}, {"\n", Reader()}}, true},
      {Begin() + Turns{{ToBig5(u"一"), Field(u"→", u"乙")}, {"\x03", Bottom(u"...")}}, false},
      {{{"", Reader()}, {"X", ""}}, false},
      {{{"", Reader()}, {"X", Field(u"→", {}, 7)}, {"\x03", Reader()}}, false},  // no push's field
  };
  patience = std::chrono::milliseconds(400);
  for (const auto& each : cases) {
    const PushRunResult result = Push(each.turns, {.text = u"一\n二"}, 5);
    EXPECT_EQ(result.outcome, PushOutcome::kNoAnswer) << &each - cases;
    EXPECT_EQ(result.unsure, each.unsure) << &each - cases;
    EXPECT_EQ(result.rest, u"一\n二");
  }
}

TEST_F(PushRunTest, AKindThatIsNotOfferedBecomesANoteOrNothing) {
  const PushOrder order{.text = u"哼", .kind = PushKind::kBad};
  const auto offers = [](Text kinds) { return Turns{{"", Reader()}, {"X", Kinds(kinds)}}; };
  EXPECT_EQ(
      Push(offers(u"1.值得推薦 2.只加→註解") + Turns{{"2", Field(u"→")}} + Piece(u"→", u"哼"), order).rest,
      u"");
  const PushRunResult none = Push(offers(u"1.值得推薦") + Turns{{"\x03", Reader()}}, order);
  EXPECT_EQ(none.outcome, PushOutcome::kNotOffered);
  EXPECT_EQ(none.rest, u"哼");
}

TEST_F(PushRunTest, TheListIsFollowedOnlyOnTheArticlesLine) {
  const std::string own = ArticleList(u"author      ");
  const Turns first = Begin() + Piece(u"→", u"一", own) + Next();
  EXPECT_EQ(Push(first + Piece(u"→", u"二", own) + Turns{{"l", Reader()}}, {.text = u"一\n二"}).outcome,
            PushOutcome::kDone);
  patience = std::chrono::milliseconds(400);
  const PushRunResult result =
      Push(first + Piece(u"→", u"二", ArticleList(u"somebody    ")), {.text = u"一\n二"});
  EXPECT_EQ(result.outcome, PushOutcome::kNoAnswer);
  EXPECT_EQ(result.pushed, 1);
  EXPECT_TRUE(result.unsure);
  EXPECT_EQ(Push({{"", own}}, {.text = u"一"}).outcome, PushOutcome::kNoReader);
}

TEST_F(PushRunTest, AnInstantMessageInterruptsWithoutASecondPush) {
  const Turns turns{{"", Reader()},
                    {"X", Kinds() + StarLine(22)},
                    {"\n", Uncovered(Kinds())},
                    // What dismisses this one answers the question, with another kind.
                    {"1", StarLine(22)},
                    {"\n", Uncovered(Field(u"→"))},
                    {"\x03", Reader()},
                    {"X", Kinds()},
                    {"1", Field(u"推")},
                    {ToBig5(u"好的"), Field(u"推", u"的") + StarLine(22)},
                    {"\n", Uncovered(Field(u"推", u"的"))},
                    {"\x03", Reader()},
                    {"X", Kinds()},
                    {"1", Field(u"推")},
                    {ToBig5(u"好的"), Field(u"推", u"好的")},
                    {"\r", Question(u"推", u"好的")},
                    {"y", StarLine(22)},
                    {"\n", Uncovered(Question(u"推", u"好的"))},
                    {"y", Question(u"推", u"好的", "y")},
                    // It was taken, and a message lies over the article.
                    {"\r", Reader() + StarLine(22)},
                    {"\n", Reader()}};
  const PushRunResult result = Push(turns, {.text = u"好的"}, 120);
  EXPECT_EQ(result.outcome, PushOutcome::kDone);
  EXPECT_EQ(result.pushed, 1);
}

TEST_F(PushRunTest, EachPieceMayBeInterruptedAFewTimes) {
  // The words are thrown away, and the field is asked for anew.
  const auto interrupted = [](Text text) {
    return Turns{{ToBig5(text), Field(u"→", text) + StarLine(22)},
                 {"\n", Uncovered(Field(u"→", text))},
                 {"\x03", Reader()}} +
           Next();
  };
  const auto thrice = [&](Text text) { return interrupted(text) + interrupted(text) + interrupted(text); };
  const PushOrder order{.text = u"一\n二"};
  EXPECT_EQ(Push(Begin() + thrice(u"一") + Piece(u"→", u"一") + Next() + thrice(u"二") + Piece(u"→", u"二"),
                 order, 5)
                .outcome,
            PushOutcome::kDone)
      << "each has its own count";
  Turns tooOften = Begin() + thrice(u"一") + thrice(u"一");
  tooOften.pop_back();
  EXPECT_EQ(Push(tooOften, order, 5).outcome, PushOutcome::kNoAnswer);
}

TEST_F(PushRunTest, TheLedgerTellsOfARunThatEndedAndOfOneThatWasStopped) {
  PushOrder order{.text = u"一", .author = u"author", .patience = patience};
  const auto run = [&order](PushLedger& ledger) {
    return [&](ScreenWaits& waits) { return RunPushOrder(waits, order, ledger); };
  };
  const Turns pushed = Begin() + Piece(u"→", u"一"), refused = Turns{{"", Reader()}} + Told(u"本文已刪除");
  const Turns asked{{"Q", ArticleBox(u"1aBc-_42")}, {"\n", Reader()}};
  // The code is asked for where that is wanted and something was pushed.
  for (const bool asks : {false, true}) {
    order.asksCode = asks;
    PushLedger ofPushed(order), ofRefused(order);
    EXPECT_EQ(Follow(asks ? pushed + asked : pushed, run(ofPushed)).code, asks ? u"1aBc-_42" : u"");
    EXPECT_EQ(ofPushed.Result().code, asks ? u"1aBc-_42" : u"");
    EXPECT_EQ(ofPushed.Result().outcome, PushOutcome::kDone);
    EXPECT_EQ(ofPushed.Result().pushed, 1);
    Follow(refused, run(ofRefused));
    EXPECT_EQ(ofRefused.Result().outcome, PushOutcome::kRefused);
  }
  order.patience = std::chrono::milliseconds(20'000);
  for (const Ending ending : {Ending::kCancelled, Ending::kDisconnected}) {
    const auto outcome = ending == Ending::kCancelled ? PushOutcome::kTakenOver : PushOutcome::kClosed;
    PushLedger ledger(order);
    EXPECT_EQ(ledger.Result().rest, u"一");
    const Turns toConfirmation = Begin() + Turns{{ToBig5(u"一"), Field(u"→", u"一")}, {"\r", ""}};
    const PushRunResult result = FollowUntil(toConfirmation, run(ledger), [&] {
      EXPECT_EQ(ledger.Result().outcome, PushOutcome::kTakenOver) << "while it goes on, too";
      EXPECT_TRUE(ledger.Result().unsure);
      End(ending);
    });
    EXPECT_EQ(result.outcome, outcome);
    EXPECT_EQ(ledger.Result().outcome, outcome);
    EXPECT_TRUE(ledger.Result().unsure);
    EXPECT_EQ(ledger.Result().rest, u"一");
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
