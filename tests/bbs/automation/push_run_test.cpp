#include "bbs/automation/push_run.h"

#include <gtest/gtest.h>

#include "bbs/push_watch.h"
#include "tests/bbs/automation/automation_fixture.h"
#include "tests/support/screen_builder.h"
#include "tests/support/understanding.h"

namespace quillet {
namespace {

constexpr int kColumns = 20;

std::string Bottom(const std::string& text) {
  return "\x1b[m" + At(23, 0) + "\x1b[K" + text;
}
std::string Reader() {
  return kClearScreen + At(0, 0, u"內文") + "\x1b[37;44m" +
         At(23, 0, u"  瀏覽 第 1/1 頁 (100%)  目前顯示: 第 01~05 行") + At(23, 60) + std::string(19, ' ') +
         "\x1b[m" + At(23, 79);
}
std::string Kinds(std::u16string_view choices = u"1.值得推薦 2.給它噓聲 3.只加→註解") {
  return Bottom(ToBig5(u"您覺得這篇文章 " + std::u16string(choices) + u" [1]? "));
}
std::string Echo(std::u16string_view mark, std::u16string_view text) {
  return Bottom(ToBig5(std::u16string(mark) + u" me: " + std::u16string(text)));
}
// Of kColumns, with the text in it.
std::string Field(std::u16string_view mark, std::u16string_view text = {}) {
  const std::string bytes = ToBig5(text);
  return Echo(mark, u"") + "\x1b[30;47m" + bytes + std::string(kColumns + 1 - bytes.size(), ' ') + "\x1b[m" +
         At(23, 7 + static_cast<int>(bytes.size()));
}
std::string Question(std::u16string_view mark, std::u16string_view text, const std::string& answer = {}) {
  const std::string field = "\x1b[30;47m" + answer + std::string(3 - answer.size(), ' ') + "\x1b[m";
  return Echo(mark, text) + At(23, 50, u" 確定[y/N]:") + field + At(23, 61 + static_cast<int>(answer.size()));
}
std::string Message(std::u16string_view text) {
  return Bottom(ToBig5(u" ◆ " + std::u16string(text))) + At(23, 63, u"[按任意鍵繼續] ") + At(23, 79);
}
// The way of one piece from the field on.
void AddPiece(std::vector<Turn>& turns, std::u16string_view mark, std::u16string_view text,
              const std::string& then = Reader()) {
  turns.push_back({ToBig5(text), Field(mark, text)});
  turns.push_back({"\r", Question(mark, text)});
  turns.push_back({"y", Question(mark, text, "y")});
  turns.push_back({"\r", then});
}
std::string List(std::u16string_view author) {
  return ArticleList() + At(3, 17, author) + At(3, 1);
}

class PushRunTest : public AutomationTest {
 protected:
  PushRunResult Run(const std::vector<Turn>& turns, PushOrder order, int thinking = 0) {
    order.author = u"author";
    order.patience = patience;
    return Follow(
        turns,
        [&](ScreenWaits& waits) {
          return PushInPieces(waits, order, [this](const PushRunResult& now) { seen.push_back(now); });
        },
        thinking);
  }
  std::chrono::milliseconds patience{5000};
  std::vector<PushRunResult> seen;
};

TEST_F(PushRunTest, EachPieceIsAskedTypedAndConfirmed) {
  std::vector<Turn> turns = {{"", Reader()}, {"X", Kinds()}, {"2", Field(u"噓")}};
  AddPiece(turns, u"噓", u"一二三四五六七八九十");
  // The next one may only be a note, which no question is asked for.
  turns.push_back({"X", At(22, 0, u"時間太近, 使用 → 加註方式 ") + Field(u"→")});
  AddPiece(turns, u"→", u"甲乙");
  const PushRunResult result = Run(turns, {.text = u"一二三四五六七八九十甲乙\n", .kind = PushKind::kBad}, 5);
  EXPECT_EQ(result.outcome, PushOutcome::kDone);
  EXPECT_EQ(result.pushed, 2);
  EXPECT_EQ(result.rest, u"");
  EXPECT_EQ(result.columns, kColumns) << "the BBS's field counts, not what was expected";
  EXPECT_EQ(seen.back().pushed, 2);
  EXPECT_EQ(seen.back().total, 2);
}

TEST_F(PushRunTest, AnEarlyPushWaitsAsLongAsTheBbsAsks) {
  std::vector<Turn> turns = {{"", Reader()},
                             {"X", Message(u"本板禁止快速連續推文，請再等 0 秒")},
                             {"\n", Reader()},
                             {"X", Kinds()},
                             {"1", Field(u"推")},
                             {ToBig5(u"好"), Field(u"推", u"好")},
                             {"\r", Question(u"推", u"好")},
                             {"y", Question(u"推", u"好", "y")},
                             // Refused in the end, and so not taken.
                             {"\r", Message(u"本文已過長, 禁止快速連續推文, 請再等 1 秒")},
                             {"\n", Reader()},
                             {"X", Field(u"→")}};
  AddPiece(turns, u"→", u"好");
  const auto start = std::chrono::steady_clock::now();
  const PushRunResult result = Run(turns, {.text = u"好"});
  EXPECT_EQ(result.outcome, PushOutcome::kDone);
  EXPECT_EQ(result.pushed, 1);
  EXPECT_EQ(result.said, u"");
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
  EXPECT_TRUE(std::any_of(seen.begin(), seen.end(), [](const auto& now) { return now.waitSeconds == 2; }));
}

TEST_F(PushRunTest, ARefusalEndsTheRunWithTheBbssWordsAndKeepsTheRest) {
  std::vector<Turn> turns = {{"", Reader()}, {"X", Field(u"→")}};
  AddPiece(turns, u"→", u"一");
  turns.push_back({"X", Message(u"無法推文: 使用者不可發言")});
  turns.push_back({"\n", Reader()});
  const PushRunResult result = Run(turns, {.text = u"一\n二\n三"});
  EXPECT_EQ(result.outcome, PushOutcome::kRefused);
  EXPECT_EQ(result.said, u"無法推文: 使用者不可發言");
  EXPECT_EQ(result.pushed, 1);
  EXPECT_EQ(result.total, 3);
  EXPECT_EQ(result.rest, u"二\n三");
  EXPECT_FALSE(result.unsure);
}

TEST_F(PushRunTest, ABbsThatDoesNotAnswerTheConfirmationLeavesTheUserInDoubt) {
  patience = std::chrono::milliseconds(400);
  std::vector<Turn> turns = {{"", Reader()}, {"X", Field(u"→")}};
  AddPiece(turns, u"→", u"一", Bottom("..."));
  const PushRunResult result = Run(turns, {.text = u"一\n二"});
  EXPECT_EQ(result.outcome, PushOutcome::kNoAnswer);
  EXPECT_EQ(result.pushed, 0);
  EXPECT_TRUE(result.unsure);
  EXPECT_EQ(result.rest, u"一\n二");
}

TEST_F(PushRunTest, AKindThatIsNotOfferedBecomesANoteOrNothing) {
  std::vector<Turn> turns = {{"", Reader()}, {"X", Kinds(u"1.值得推薦 2.只加→註解")}, {"2", Field(u"→")}};
  AddPiece(turns, u"→", u"哼");
  EXPECT_EQ(Run(turns, {.text = u"哼", .kind = PushKind::kBad}).outcome, PushOutcome::kDone);
  const PushRunResult none = Run({{"", Reader()}, {"X", Kinds(u"1.值得推薦")}, {"\x03", Reader()}},
                                 {.text = u"哼", .kind = PushKind::kBad});
  EXPECT_EQ(none.outcome, PushOutcome::kNotOffered);
  EXPECT_EQ(none.rest, u"哼");
}

TEST_F(PushRunTest, TheListIsFollowedOnlyOnTheArticlesLine) {
  std::vector<Turn> turns = {{"", Reader()}, {"X", Field(u"→")}};
  AddPiece(turns, u"→", u"一", List(u"author      "));
  turns.push_back({"X", Field(u"→")});
  AddPiece(turns, u"→", u"二", List(u"author      "));
  turns.push_back({"l", Reader()});
  EXPECT_EQ(Run(turns, {.text = u"一\n二"}).outcome, PushOutcome::kDone);

  patience = std::chrono::milliseconds(400);
  turns = {{"", Reader()}, {"X", Field(u"→")}};
  AddPiece(turns, u"→", u"一");
  turns.push_back({"X", Field(u"→")});
  AddPiece(turns, u"→", u"二", List(u"somebody    "));
  const PushRunResult result = Run(turns, {.text = u"一\n二"});
  EXPECT_EQ(result.outcome, PushOutcome::kNoAnswer);
  EXPECT_EQ(result.pushed, 1);
  EXPECT_TRUE(result.unsure);
}

TEST_F(PushRunTest, TheLedgerTellsOfARunThatEndedAndOfOneThatWasStopped) {
  const auto order = [](std::chrono::milliseconds limit) {
    return PushOrder{.text = u"一", .author = u"author", .asksCode = true, .patience = limit};
  };
  std::vector<Turn> turns = {{"", Reader()}, {"X", Field(u"→")}};
  AddPiece(turns, u"→", u"一");
  turns.push_back({"Q", Message(u"文章代碼")});
  const PushOrder whole = order(patience);
  PushLedger ledger(whole);
  Follow(turns, [&](ScreenWaits& waits) { return RunPushOrder(waits, whole, ledger); });
  EXPECT_EQ(ledger.Result().outcome, PushOutcome::kDone);
  EXPECT_EQ(ledger.Result().pushed, 1);

  const PushOrder stopped = order(std::chrono::milliseconds(20'000));
  PushLedger ofStopped(stopped);
  Connect(PlayTurns({{"", Reader()}, {"X", Field(u"→")}, {ToBig5(u"一"), Field(u"→", u"一")}}));
  std::thread user([&] {
    EXPECT_TRUE(WaitUntil([&] { return Typed().ends_with('\r'); })) << "the confirmation, which never comes";
    EXPECT_EQ(ofStopped.Result().outcome, PushOutcome::kTakenOver) << "while it goes on, too";
    cancelled_ = true;
  });
  const PushRunResult result =
      Await([&](ScreenWaits& waits) { return RunPushOrder(waits, stopped, ofStopped); });
  user.join();
  EXPECT_EQ(result.outcome, PushOutcome::kTakenOver);
  EXPECT_TRUE(ofStopped.Result().unsure);
  EXPECT_EQ(ofStopped.Result().rest, u"一");
}

TEST_F(PushRunTest, AnInstantMessageInterruptsWithoutASecondPush) {
  std::vector<Turn> turns = {{"", Reader()},
                             {"X", Kinds() + StarLine(22)},
                             {"\n", At(22, 0) + "\x1b[K" + Kinds()},
                             {"1", Field(u"推")},
                             {ToBig5(u"好的"), Field(u"推", u"的") + StarLine(22)},
                             {"\n", At(22, 0) + "\x1b[K" + Field(u"推", u"的")},
                             {"\x03", Reader()},
                             {"X", Kinds()},
                             {"1", Field(u"推")},
                             {ToBig5(u"好的"), Field(u"推", u"好的")},
                             {"\r", Question(u"推", u"好的")},
                             {"y", Question(u"推", u"好的", "y")},
                             // It was taken, and a message lies over the article.
                             {"\r", Reader() + StarLine(22)},
                             {"\n", Reader()}};
  const PushRunResult result = Run(turns, {.text = u"好的"}, 120);
  EXPECT_EQ(result.outcome, PushOutcome::kDone);
  EXPECT_EQ(result.pushed, 1);
}

TEST_F(PushRunTest, NothingIsTypedWithoutAnArticleAndNothingAfterTheUserTakesOver) {
  patience = std::chrono::milliseconds(200);
  EXPECT_EQ(Run({{"", ArticleList()}}, {.text = u"一"}).outcome, PushOutcome::kNoReader);
  patience = std::chrono::milliseconds(20'000);
  Show(Reader());
  const PushOrder order{.text = u"一", .author = u"author", .patience = patience};
  const PushRunResult result = Await([&](ScreenWaits& waits) {
    return PushInPieces(waits, order, [&](const PushRunResult&) { cancelled_ = true; });
  });
  EXPECT_EQ(result.outcome, PushOutcome::kClosed);
  EXPECT_EQ(Typed(), "");
}

TEST_F(PushRunTest, TheTimeToWaitIsReadFromTheBbssWords) {
  EXPECT_EQ(PushPages::SecondsToWait(u"本板禁止快速連續推文，請再等 42 秒"), 42);
  EXPECT_EQ(PushPages::SecondsToWait(u"本文已過長, 禁止快速連續推文, 請再等 2 分鐘"), 120);
  EXPECT_EQ(PushPages::SecondsToWait(u"系統禁止短時間內大量推文"), PushPages::kUsualWait);
  EXPECT_EQ(PushPages::SecondsToWait(u"對不起，您的文章或推文間隔太近囉！"), PushPages::kUsualWait);
  EXPECT_EQ(PushPages::SecondsToWait(u"請再等"), PushPages::kUsualWait);
  EXPECT_GT(PushPages::SecondsToWait(u"請再等 99999999999999999999 秒").value(), 900);
  for (const auto words : {u"抱歉, 禁止推薦", u"本文已刪除", u"無法推文: 使用者不可發言", u""})
    EXPECT_FALSE(PushPages::SecondsToWait(words));
}

TEST_F(PushRunTest, APushByHandIsNoticedWhenItIsTaken) {
  const auto screen = [](std::uint32_t flags) {
    ScreenBuilder builder;
    builder.screen.pageFlags = flags;
    return builder.screen;
  };
  PushWatch watch;
  const auto look = [&watch](const ScreenSnapshot& shown) { return watch.Look(shown, Understand(shown)); };
  EXPECT_FALSE(look(screen(PF_PUSH_LINE | PF_PUSH_CONFIRM)));
  EXPECT_FALSE(look(screen(0)));
  EXPECT_TRUE(look(screen(PF_READING)));
  EXPECT_FALSE(look(screen(PF_READING)));
  // The "y" taken back, and a refusal.
  look(screen(PF_PUSH_LINE | PF_PUSH_CONFIRM));
  EXPECT_FALSE(look(screen(PF_PUSH_LINE)));
  EXPECT_FALSE(look(screen(PF_READING)));

  // The answer came and went unseen: only the new line tells.
  const auto asked = [] {
    ScreenBuilder builder;
    builder.Put(kRows - 1, 0, u"推 me: 好    確定[y/N]:");
    builder.screen.cursorRow = kRows - 1;
    builder.screen.cursorCol = 23;
    builder.screen.pageFlags = PF_PUSH_LINE;
    return builder.screen;
  };
  const auto article = [](std::u16string_view last, std::uint32_t flags) {
    ScreenBuilder builder;
    builder.Put(20, 0, last);
    builder.screen.pageFlags = PF_READING | flags;
    return builder.screen;
  };
  EXPECT_FALSE(look(asked()));
  EXPECT_FALSE(look(article(u"推 me: 好吃                10/06 22:00", 0)));
  EXPECT_TRUE(look(article(u"推 me: 好                  10/06 22:00", PF_READ_END)));
  EXPECT_FALSE(look(asked()));
  EXPECT_FALSE(look(article(u"", PF_READ_END)));
  EXPECT_FALSE(look(article(u"推 me: 好                  10/06 22:00", PF_READ_END)));
}

}  // namespace
}  // namespace quillet
