#include "bbs/automation/push_run.h"

#include <algorithm>
#include <utility>

#include "bbs/automation/article_code_question.h"
#include "bbs/automation/push_pieces.h"
#include "bbs/page_facts.h"
#include "core/charset.h"

namespace quillet {
namespace {

using namespace std::chrono_literals;
using Condition = ScreenWaits::Condition;

constexpr std::string_view kPushKey = "X";
constexpr std::string_view kEnterKey = "\r";
constexpr std::string_view kYesKey = "y";
constexpr std::string_view kOpenKey = "l";
// A piece that instant messages interrupt so often is given up.
constexpr int kMostInterruptions = 5;
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
        pages_(waits.Pages()),
        push_(pages_),
        order_(order),
        progress_(progress),
        columns_(std::max(order.columns, kFewestColumns)) {
    result_.rest = order.text;
    result_.total = CountPushes(order.text, columns_);
  }

  PushRunResult Run();

 private:
  // How an attempt with a piece went.
  enum class Step {
    kGoOn,   // the page that was waited for is there
    kTaken,  // the BBS has taken the piece
    kAgain,  // it has not, and the article is back
    kEnded   // the result says why
  };
  Step PushOnce();
  Step AskForField();
  Step AnswerKind();
  Step TypePiece(const PushPiece& piece);
  Step Confirm();
  Step OnMessage();
  Step CancelAndTryAgain();
  Step WaitFor(int seconds);

  // Presses a key and waits for the answer. An instant message that comes up meanwhile swallows the key: it
  // is dismissed, and the key repeated where the screen is `stillAsking` for it; interrupted_ says so. False
  // when no answer came.
  bool Press(std::string_view key, const Condition& answered, const Condition& stillAsking);
  bool WaitAtMost(const Condition& holds) { return waits_.WaitAtMost(order_.patience, holds); }
  bool IsHome(const ScreenSnapshot& screen) const;
  bool IsReader(const ScreenSnapshot& screen) const {
    return pages_.IsReader(screen, PageTests::ReaderForm::kStrict);
  }
  void ReturnToArticle();

  Step End(PushOutcome outcome);
  Step NoAnswer() { return End(PushOutcome::kNoAnswer); }
  void Report() const {
    if (progress_) progress_(result_);
  }

  ScreenWaits& waits_;
  const PageTests& pages_;
  const PushPages push_;
  const PushOrder& order_;
  const std::function<void(const PushRunResult&)>& progress_;
  int columns_;
  int waitsOfPiece_ = 0;
  int interruptions_ = 0;     // of the piece
  bool interrupted_ = false;  // the last key
  PushRunResult result_;
};

PushRunResult PushRun::Run() {
  Report();
  const bool reading = WaitAtMost(
      [this](const ScreenSnapshot& screen) { return IsReader(screen) || pages_.IsStarLine(screen); });
  Step step = reading ? Step::kGoOn : End(PushOutcome::kNoReader);
  while (step != Step::kEnded && CutPushPiece(result_.rest, columns_)) {
    step = PushOnce();
    if (step == Step::kTaken) waitsOfPiece_ = interruptions_ = 0;
  }
  if (step != Step::kEnded) result_.rest.clear();
  if (reading) ReturnToArticle();
  return result_;
}

PushRun::Step PushRun::End(PushOutcome outcome) {
  result_.outcome = waits_.IsAlive() ? outcome : PushOutcome::kClosed;
  result_.waitSeconds = 0;
  return Step::kEnded;
}

// ---- One piece

PushRun::Step PushRun::PushOnce() {
  if (const Step asked = AskForField(); asked != Step::kGoOn) return asked;
  const int columns = PushPages::FieldColumns(waits_.Seen());
  if (columns < kFewestColumns) {
    CancelAndTryAgain();
    return NoAnswer();
  }
  result_.columns = columns_ = columns;
  result_.total = result_.pushed + CountPushes(result_.rest, columns);
  const std::optional<PushPiece> piece = CutPushPiece(result_.rest, columns);
  if (!piece) return NoAnswer();
  if (const Step typed = TypePiece(*piece); typed != Step::kGoOn) return typed;
  if (const Step confirmed = Confirm(); confirmed != Step::kTaken) return confirmed;
  result_.unsure = false;
  ++result_.pushed;
  result_.rest.erase(0, piece->taken);
  Report();
  return Step::kTaken;
}

PushRun::Step PushRun::AskForField() {
  const auto home = [this](const ScreenSnapshot& screen) { return IsHome(screen); };
  if (!WaitAtMost([&](const ScreenSnapshot& screen) { return home(screen) || pages_.IsStarLine(screen); }))
    return NoAnswer();
  const auto asked = [this](const ScreenSnapshot& screen) {
    return push_.IsKindQuestion(screen) || push_.IsEmptyTextField(screen) || push_.IsMessage(screen);
  };
  if (!Press(kPushKey, asked, home)) return NoAnswer();
  if (push_.IsMessage(waits_.Seen())) return OnMessage();
  return push_.IsKindQuestion(waits_.Seen()) ? AnswerKind() : Step::kGoOn;
}

PushRun::Step PushRun::AnswerKind() {
  PushKind kind = order_.kind;
  char key = push_.KeyFor(waits_.Seen(), kind);
  if (key == 0) {
    // A note says nothing for or against the article.
    kind = PushKind::kNote;
    key = push_.KeyFor(waits_.Seen(), kind);
  }
  const auto asking = [this](const ScreenSnapshot& screen) { return push_.IsKindQuestion(screen); };
  if (key == 0) {
    Press(
        kCancelKey, [this](const ScreenSnapshot& screen) { return IsHome(screen); }, asking);
    return End(PushOutcome::kNotOffered);
  }
  const auto answered = [this](const ScreenSnapshot& screen) {
    return push_.IsEmptyTextField(screen) || push_.IsMessage(screen);
  };
  if (!Press({&key, 1}, answered, asking)) return NoAnswer();
  if (push_.IsMessage(waits_.Seen())) return OnMessage();
  // What dismisses an instant message may have answered the question instead.
  return push_.KindOfField(waits_.Seen()) == kind ? Step::kGoOn : CancelAndTryAgain();
}

PushRun::Step PushRun::TypePiece(const PushPiece& piece) {
  const int start = waits_.Seen().cursorCol;
  const std::string bytes = ToBig5(piece.text);
  waits_.Send(bytes);
  bool interrupted = false;
  const bool shown = WaitAtMost([&](const ScreenSnapshot& screen) {
    interrupted = pages_.IsStarLine(screen);
    return interrupted || (screen.cursorCol == start + piece.columns && push_.IsTextField(screen) &&
                           RowStartsWith(screen, kBottomRow, start, std::string_view(bytes)));
  });
  if (shown && !interrupted) return Step::kGoOn;
  // Nothing has been confirmed: what stands in the field can be thrown away.
  if (interrupted) waits_.DismissMessages();
  return CancelAndTryAgain();
}

PushRun::Step PushRun::Confirm() {
  const auto back = [this](const ScreenSnapshot& screen) {
    return IsHome(screen) || push_.IsMessage(screen);
  };
  const auto typing = [this](const ScreenSnapshot& screen) { return push_.IsTextField(screen); };
  const auto asking = [this](const ScreenSnapshot& screen) { return push_.IsConfirmation(screen); };
  const auto confirmed = [this](const ScreenSnapshot& screen) { return push_.IsConfirmed(screen); };
  const auto decided = [&](const ScreenSnapshot& screen) { return confirmed(screen) || back(screen); };
  result_.unsure = true;
  Report();
  if (!Press(
          kEnterKey, [&](const ScreenSnapshot& screen) { return asking(screen) || decided(screen); }, typing))
    return NoAnswer();
  bool sure = false;
  if (asking(waits_.Seen())) {
    if (!Press(kYesKey, decided, asking)) return NoAnswer();
    // What dismisses an instant message may have declined.
    sure = !interrupted_;
  }
  if (confirmed(waits_.Seen())) {
    if (!Press(kEnterKey, back, confirmed)) return NoAnswer();
    sure = true;
  }
  if (push_.IsMessage(waits_.Seen())) return OnMessage();
  return sure ? Step::kTaken : NoAnswer();
}

// ---- What else the BBS shows

PushRun::Step PushRun::OnMessage() {
  const bool refused = push_.IsRefusal(waits_.Seen());
  result_.said = PushPages::WordsOf(waits_.Seen());
  const std::optional<int> seconds = PushPages::SecondsToWait(result_.said);
  if (refused) result_.unsure = false;
  const bool left = Press(
      ScreenWaits::kDismissKey, [this](const ScreenSnapshot& screen) { return IsHome(screen); },
      [this](const ScreenSnapshot& screen) { return push_.IsMessage(screen); });
  if (!refused || !seconds || *seconds > kLongestWait || ++waitsOfPiece_ > kMostWaits)
    return End(PushOutcome::kRefused);
  return left ? WaitFor(*seconds + 1) : NoAnswer();
}

PushRun::Step PushRun::WaitFor(int seconds) {
  result_.waitSeconds = seconds;
  Report();
  const bool waited = waits_.Sleep(std::chrono::seconds(seconds));
  result_.waitSeconds = 0;
  if (!waited) return End(PushOutcome::kClosed);
  Report();
  result_.said.clear();
  return Step::kAgain;
}

PushRun::Step PushRun::CancelAndTryAgain() {
  const bool left = Press(
      kCancelKey, [this](const ScreenSnapshot& screen) { return IsHome(screen); },
      [this](const ScreenSnapshot& screen) {
        return push_.IsTextField(screen) || push_.IsConfirmation(screen) || push_.IsKindQuestion(screen);
      });
  return left && ++interruptions_ <= kMostInterruptions ? Step::kAgain : NoAnswer();
}

bool PushRun::Press(std::string_view key, const Condition& answered, const Condition& stillAsking) {
  interrupted_ = false;
  for (int interruption = 0; interruption < kMostInterruptions && waits_.IsAlive(); ++interruption) {
    waits_.Send(key);
    bool star = false;
    const bool seen = WaitAtMost([&](const ScreenSnapshot& screen) {
      star = pages_.IsStarLine(screen);
      return star || answered(screen);
    });
    if (!seen || !star) return seen;
    interrupted_ = true;
    waits_.DismissMessages();
    if (!WaitAtMost([&](const ScreenSnapshot& screen) { return answered(screen) || stillAsking(screen); }))
      return false;
    if (answered(waits_.Seen())) return true;
  }
  return false;
}

bool PushRun::IsHome(const ScreenSnapshot& screen) const {
  if (IsReader(screen)) return true;
  return pages_.IsListCursor(screen) && !order_.author.empty() &&
         PageFacts::ParseListAuthor(screen, screen.cursorRow) == order_.author;
}

// The user was reading. Another list than the article's is none to open things from.
void PushRun::ReturnToArticle() {
  if (IsReader(waits_.Seen()) || !IsHome(waits_.Seen())) return;
  Press(
      kOpenKey, [this](const ScreenSnapshot& screen) { return IsReader(screen); },
      [this](const ScreenSnapshot& screen) { return pages_.IsListCursor(screen); });
}

}  // namespace

// ---- The ledger

PushLedger::PushLedger(const PushOrder& order) {
  result_.outcome = PushOutcome::kTakenOver;
  result_.rest = order.text;
}

void PushLedger::Note(PushRunResult result) {
  const std::lock_guard guard(lock_);
  result_ = std::move(result);
}

PushRunResult PushLedger::Result() const {
  const std::lock_guard guard(lock_);
  return result_;
}

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
