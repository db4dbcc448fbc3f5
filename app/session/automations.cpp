#include "app/session/automations.h"

#include <utility>

#include "bbs/automation/article_code_question.h"
#include "bbs/automation/log_out.h"
#include "input/text/screen_text.h"

namespace quillet {
namespace {

// A worker notices within a few milliseconds that it is no longer wanted; one that the peer holds up does not
// hold up the user's key.
constexpr std::chrono::milliseconds kTakeOverPatience{100};

// Where the BBS says why it refuses a login.
constexpr int kRefusalRow = 21;

}  // namespace

Automations::Automations(Connection& connection, MessageTarget& messages, const PageTests& pages)
    : connection_(connection), messages_(messages), worker_(connection.Session(), pages) {
  connect(&connection_, &Connection::AboutToEnd, this, &Automations::End);
  connect(&connection_, &Connection::AttemptEnded, this, &Automations::LogIn);
  connect(&connection_, &Connection::LoginDropped, this,
          [this] { emit LoginEnded({.how = LoginEnd::How::kTakenOver, .said = {}}); });
  connect(this, &Automations::LoginEnded, &connection_, &Connection::NoteLoginOver);
  connect(&connection_, &Connection::PushSeen, this, &Automations::OnPushSeen);
}

Automations::~Automations() {
  End();
}

template <typename Work, typename Done>
bool Automations::Start(Task task, Work work, Done done) {
  if (!connection_.IsConnected()) return false;
  const bool started = worker_.Run(std::move(work), [this, done = std::move(done)](auto result) mutable {
    emit Changed();
    done(std::move(result));
  });
  if (!started) return false;
  task_ = std::move(task);
  emit Changed();
  return true;
}

bool Automations::Stop() {
  if (!worker_.Cancel()) return false;
  worker_.WaitEnded(kTakeOverPatience);
  emit Changed();
  if (const std::function<void()> takenOver = task_.takenOver) takenOver();
  return true;
}

void Automations::End() {
  Stop();
  // Only the end of the connection frees a worker that waits for a peer which does not read.
  if (worker_.IsBusy()) connection_.Session().Disconnect();
  worker_.Join();
}

ActivityProgress Automations::Progress() const {
  return worker_.IsRunning() && task_.progress ? task_.progress() : ActivityProgress{};
}

// ---- In and out

void Automations::LogIn(const LoginOrder& order) {
  if (!order) return;
  const auto takenOver = [this] { emit LoginEnded({.how = LoginEnd::How::kTakenOver, .said = {}}); };
  struct Outcome {
    LoginResult result;
    std::u16string said;
  };
  const bool started = Start(
      {.activity = Activity::kLogin, .takenOver = takenOver},
      [order](ScreenWaits& waits) {
        const LoginResult result = AutoLogin(waits, *order);
        return Outcome{result, RowAsText(waits.Seen(), kRefusalRow)};
      },
      [this, order](const Outcome& outcome) { OnLoginDone(order, outcome.result, outcome.said); });
  if (started) return;
  if (connection_.IsConnected()) return takenOver();
  emit LoginEnded({.how = LoginEnd::How::kNotConnected, .said = {}});
}

void Automations::OnLoginDone(const LoginOrder& order, LoginResult result, const std::u16string& said) {
  LoginEnd end;
  switch (result) {
    case LoginResult::kFinished:
      connection_.KeepLogin(order);
      // Without a password the user goes on by himself, perhaps with another id.
      if (order->password.empty()) {
        messages_.Tell([&](ScreenWitness& witness) { witness.Login().Expect(order->account); });
      } else {
        messages_.Tell([&](ScreenWitness& witness) { witness.Login().Set(order->account); });
        connection_.NoteLogin(order->account);
      }
      break;
    case LoginResult::kRefused:
      connection_.ForgetLogin();
      end = {.how = LoginEnd::How::kRefused, .said = QString::fromStdU16String(said)};
      break;
    case LoginResult::kClosed:
      end.how = LoginEnd::How::kNotConnected;
      break;
  }
  emit LoginEnded(end);
}

bool Automations::LogOut() {
  if (!connection_.IsConnected()) return false;
  Stop();
  const bool started = Start(
      {.activity = Activity::kLogOut,
       .takenOver =
           [this] {
             connection_.NoteStaying();
             emit LogOutEnded(LogOutEnd::kTakenOver);
           }},
      [](ScreenWaits& waits) { return quillet::LogOut(waits); },
      [this](LogOutResult) { emit LogOutEnded(LogOutEnd::kDone); });
  if (started) connection_.NoteLeaving();
  return started;
}

// ---- Articles

bool Automations::JumpTo(const ArticleReference& article) {
  return Start(
      {.activity = Activity::kJump},
      [article](ScreenWaits& waits) {
        const JumpResult result = JumpToArticle(waits, article.board, article.code);
        if (result == JumpResult::kFound) waits.OpenArticleUnderCursor(ArticlePart::kTop);
        return result;
      },
      [this, article](JumpResult result) { emit JumpEnded(article, result); });
}

bool Automations::AskCode(const ArticleInfo& article) {
  return Start(
      {.activity = Activity::kAskCode}, [](ScreenWaits& waits) { return AskArticleCode(waits); },
      [this, article = article](std::u16string code) mutable {
        article.code = std::move(code);
        emit CodeAsked(article);
      });
}

bool Automations::GiveMoney(MoneyOrder order) {
  auto ledger = std::make_shared<MoneyLedger>(order.gifts);
  const auto ended = [this, ledger] { emit MoneyEnded(ledger->Result()); };
  const auto progress = [ledger] {
    return ActivityProgress{.done = ledger->Tried(), .total = ledger->Total()};
  };
  return Start(
      {.activity = Activity::kGiveMoney, .takenOver = ended, .progress = progress},
      [order = std::move(order), ledger](ScreenWaits& waits) {
        RunMoneyOrder(waits, order, *ledger);
        return true;
      },
      [ended](bool) { ended(); });
}

bool Automations::PushOn(PushOrder order) {
  const ArticleInfo article = connection_.Seen().article;
  if (!article.IsArticle()) return false;
  order.author = article.author;
  auto ledger = std::make_shared<PushLedger>(order);
  const auto progress = [ledger] {
    const PushRunResult result = ledger->Result();
    return ActivityProgress{.done = result.pushed, .total = result.total, .waitSeconds = result.waitSeconds};
  };
  return Start(
      {.activity = Activity::kPush,
       .takenOver = [this, ledger, article] { OnPushesDone(ledger->Result(), article); },
       .progress = progress},
      [order = std::move(order), ledger](ScreenWaits& waits) { return RunPushOrder(waits, order, *ledger); },
      [this, article](const PushRunResult& result) { OnPushesDone(result, article); });
}

void Automations::OnPushesDone(const PushRunResult& result, ArticleInfo article) {
  if (!result.code.empty()) article.code = result.code;
  // The screen that shows the article again may come later than this.
  messages_.Tell([](ScreenWitness& witness) { witness.ForgetPush(); });
  if (result.pushed > 0) emit ArticlePushed(article, PushedBy::kOrder);
  emit PushesEnded(result);
}

// What an automation pushes it tells of itself, perhaps only after its last screen.
void Automations::OnPushSeen(const ArticleInfo& article) {
  if (!worker_.IsBusy() && !worker_.IsRunning()) emit ArticlePushed(article, PushedBy::kHand);
}

}  // namespace quillet
