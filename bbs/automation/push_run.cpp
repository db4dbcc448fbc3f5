#include "bbs/automation/push_run.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "bbs/automation/article_code_question.h"
#include "bbs/automation/push_dialogue.h"
#include "bbs/automation/push_pieces.h"

namespace quillet {
namespace {

// A piece that messages have interrupted so often is given up.
constexpr int kMostCancels = 5;
// So often, and so many seconds each time, the BBS may ask to wait with one piece.
constexpr int kMostWaits = 20;
constexpr int kLongestWait = 900;
// A field with less room is no push's.
constexpr int kFewestColumns = 8;

class PushRun {
 public:
  PushRun(ScreenWaits& waits, const PushOrder& order,
          const std::function<void(const PushRunResult&)>& progress)
      : waits_(waits),
        dialogue_(waits, order),
        progress_(progress),
        columns_(std::max(order.columns, kFewestColumns)) {
    result_.rest = order.text;
    result_.total = CountPushes(order.text, columns_);
  }

  PushRunResult Run();

 private:
  // Each says whether the run goes on; where it does not, the result says why.
  bool PushNext();
  bool OnAnswer(PushAnswer answer);
  bool OnMessage(const PushMessage& message);
  bool WaitFor(int seconds);
  bool End(PushOutcome outcome);

  // The piece for the field that shows, whose room is now known.
  std::optional<PushPiece> Cut();
  void NoteTaken(const PushPiece& piece);
  void Report() const {
    if (progress_) progress_(result_);
  }

  ScreenWaits& waits_;
  PushDialogue dialogue_;
  const std::function<void(const PushRunResult&)>& progress_;
  int columns_;
  int waitsOfPiece_ = 0;
  int cancelsOfPiece_ = 0;
  PushRunResult result_;
};

PushRunResult PushRun::Run() {
  Report();
  if (!dialogue_.AwaitArticle()) {
    End(PushOutcome::kNoReader);
    return result_;
  }
  bool goesOn = true;
  while (goesOn && CutPushPiece(result_.rest, columns_))
    goesOn = PushNext();
  if (goesOn) result_.rest.clear();
  dialogue_.ReturnToArticle();
  return result_;
}

bool PushRun::PushNext() {
  PushAnswer answer = dialogue_.AskForField();
  if (answer != PushAnswer::kGoOn) return OnAnswer(answer);
  if (dialogue_.FieldColumns() < kFewestColumns) {
    dialogue_.Cancel();
    return End(PushOutcome::kNoAnswer);
  }
  const std::optional<PushPiece> piece = Cut();
  if (!piece) return End(PushOutcome::kNoAnswer);
  answer = dialogue_.Type(*piece);
  if (answer != PushAnswer::kGoOn) return OnAnswer(answer);
  result_.unsure = true;
  Report();
  answer = dialogue_.Confirm();
  if (answer != PushAnswer::kTaken) return OnAnswer(answer);
  NoteTaken(*piece);
  return true;
}

std::optional<PushPiece> PushRun::Cut() {
  result_.columns = columns_ = dialogue_.FieldColumns();
  result_.total = result_.pushed + CountPushes(result_.rest, columns_);
  return CutPushPiece(result_.rest, columns_);
}

void PushRun::NoteTaken(const PushPiece& piece) {
  waitsOfPiece_ = cancelsOfPiece_ = 0;
  result_.unsure = false;
  ++result_.pushed;
  result_.rest.erase(0, piece.taken);
  Report();
}

bool PushRun::OnAnswer(PushAnswer answer) {
  switch (answer) {
    case PushAnswer::kGoOn:
    case PushAnswer::kTaken:
      return true;
    case PushAnswer::kCancelled:
      return ++cancelsOfPiece_ <= kMostCancels || End(PushOutcome::kNoAnswer);
    case PushAnswer::kMessage:
      return OnMessage(dialogue_.Message());
    case PushAnswer::kNotOffered:
      return End(PushOutcome::kNotOffered);
    case PushAnswer::kNoAnswer:
      break;
  }
  return End(PushOutcome::kNoAnswer);
}

bool PushRun::OnMessage(const PushMessage& message) {
  result_.said = message.words;
  if (message.isRefusal) result_.unsure = false;
  const std::optional<int> seconds = PushPages::SecondsToWait(message.words);
  if (!message.isRefusal || !seconds || *seconds > kLongestWait || ++waitsOfPiece_ > kMostWaits)
    return End(PushOutcome::kRefused);
  return message.isHome ? WaitFor(*seconds + 1) : End(PushOutcome::kNoAnswer);
}

bool PushRun::WaitFor(int seconds) {
  result_.waitSeconds = seconds;
  Report();
  const bool waited = waits_.Sleep(std::chrono::seconds(seconds));
  result_.waitSeconds = 0;
  if (!waited) return End(PushOutcome::kClosed);
  Report();
  result_.said.clear();
  return true;
}

bool PushRun::End(PushOutcome outcome) {
  result_.outcome = waits_.IsAlive() ? outcome : PushOutcome::kClosed;
  result_.waitSeconds = 0;
  return false;
}

}  // namespace

PushRunResult PushInPieces(ScreenWaits& waits, const PushOrder& order,
                           const std::function<void(const PushRunResult&)>& progress) {
  return PushRun(waits, order, progress).Run();
}

PushRunResult RunPushOrder(ScreenWaits& waits, const PushOrder& order, PushLedger& ledger) {
  PushRunResult result = PushInPieces(waits, order, [&ledger](PushRunResult now) {
    now.outcome = PushOutcome::kTakenOver;
    ledger.Note(std::move(now));
  });
  // A run that the user has stopped looks like one whose connection has ended.
  if (result.outcome == PushOutcome::kClosed && waits.Session().state == SessionState::kConnected)
    result.outcome = PushOutcome::kTakenOver;
  ledger.Note(result);
  if (order.asksCode && result.pushed > 0) {
    result.code = AskArticleCode(waits);
    ledger.Note(result);
  }
  return result;
}

}  // namespace quillet
