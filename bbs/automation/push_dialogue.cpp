#include "bbs/automation/push_dialogue.h"

#include "bbs/page_facts.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::string_view kPushKey = "X";
constexpr std::string_view kEnterKey = "\r";
constexpr std::string_view kYesKey = "y";
constexpr std::string_view kOpenKey = "l";
// A key that messages swallow so often is given up.
constexpr int kMostSends = 5;

}  // namespace

PushDialogue::PushDialogue(ScreenWaits& waits, const PushOrder& order)
    : waits_(waits),
      pages_(waits.Pages()),
      push_(pages_),
      order_(order),
      dialogue_(waits, Dialogue::Limits{.answer = order.patience, .sends = kMostSends}) {}

// ---- From the article to the field

bool PushDialogue::AwaitArticle() {
  return dialogue_.Await(
      [this](const ScreenSnapshot& screen) { return IsReader(screen) || pages_.IsStarLine(screen); });
}

PushAnswer PushDialogue::AskForField() {
  if (!dialogue_.Await(
          [this](const ScreenSnapshot& screen) { return IsHome(screen) || pages_.IsStarLine(screen); }))
    return PushAnswer::kNoAnswer;
  const auto asked = [this](const ScreenSnapshot& screen) {
    return push_.IsKindQuestion(screen) || push_.IsEmptyTextField(screen) || push_.IsMessage(screen);
  };
  if (!Press(kPushKey, asked, isHome_)) return PushAnswer::kNoAnswer;
  if (push_.IsMessage(waits_.Seen())) return TakeMessage();
  return push_.IsKindQuestion(waits_.Seen()) ? AnswerKind() : PushAnswer::kGoOn;
}

PushAnswer PushDialogue::AnswerKind() {
  PushKind kind = order_.kind;
  char key = push_.KeyFor(waits_.Seen(), kind);
  if (key == 0) {
    // A note says nothing for or against the article.
    kind = PushKind::kNote;
    key = push_.KeyFor(waits_.Seen(), kind);
  }
  if (key == 0) {
    Press(kCancelKey, isHome_, asksKind_);
    return PushAnswer::kNotOffered;
  }
  const auto answered = [this](const ScreenSnapshot& screen) {
    return push_.IsEmptyTextField(screen) || push_.IsMessage(screen);
  };
  if (!Press({&key, 1}, answered, asksKind_)) return PushAnswer::kNoAnswer;
  if (push_.IsMessage(waits_.Seen())) return TakeMessage();
  // What dismisses an instant message may have answered the question instead.
  return push_.KindOfField(waits_.Seen()) == kind ? PushAnswer::kGoOn : Cancel();
}

// ---- From the field to the article

PushAnswer PushDialogue::Type(const PushPiece& piece) {
  const int start = waits_.Seen().cursorCol;
  const std::string bytes = ToBig5(piece.text);
  waits_.Send(bytes);
  bool interrupted = false;
  const bool shown = dialogue_.Await([&](const ScreenSnapshot& screen) {
    interrupted = pages_.IsStarLine(screen);
    return interrupted || (screen.cursorCol == start + piece.columns && push_.IsTextField(screen) &&
                           RowStartsWith(screen, kBottomRow, start, std::string_view(bytes)));
  });
  if (shown && !interrupted) return PushAnswer::kGoOn;
  // Nothing has been confirmed: what stands in the field can be thrown away.
  if (interrupted) waits_.DismissMessages();
  return Cancel();
}

PushAnswer PushDialogue::Confirm() {
  const auto back = [this](const ScreenSnapshot& screen) {
    return IsHome(screen) || push_.IsMessage(screen);
  };
  const auto typing = [this](const ScreenSnapshot& screen) { return push_.IsTextField(screen); };
  const auto asking = [this](const ScreenSnapshot& screen) { return push_.IsConfirmation(screen); };
  const auto confirmed = [this](const ScreenSnapshot& screen) { return push_.IsConfirmed(screen); };
  const auto decided = [&](const ScreenSnapshot& screen) { return confirmed(screen) || back(screen); };
  const auto reacts = [&](const ScreenSnapshot& screen) { return asking(screen) || decided(screen); };
  if (!Press(kEnterKey, reacts, typing)) return PushAnswer::kNoAnswer;
  bool sure = false;
  if (asking(waits_.Seen())) {
    const Dialogue::Answer answer = dialogue_.Press(kYesKey, decided, asking);
    if (answer == Dialogue::Answer::kNone) return PushAnswer::kNoAnswer;
    // What dismisses an instant message may have declined.
    sure = answer == Dialogue::Answer::kAtOnce;
  }
  if (confirmed(waits_.Seen())) {
    if (!Press(kEnterKey, back, confirmed)) return PushAnswer::kNoAnswer;
    sure = true;
  }
  if (push_.IsMessage(waits_.Seen())) return TakeMessage();
  return sure ? PushAnswer::kTaken : PushAnswer::kNoAnswer;
}

// ---- Other ways back

PushAnswer PushDialogue::TakeMessage() {
  message_.words = PushPages::WordsOf(waits_.Seen());
  message_.isRefusal = push_.IsRefusal(waits_.Seen());
  message_.isHome = Press(ScreenWaits::kDismissKey, isHome_,
                          [this](const ScreenSnapshot& screen) { return push_.IsMessage(screen); });
  return PushAnswer::kMessage;
}

PushAnswer PushDialogue::Cancel() {
  const bool left = Press(kCancelKey, isHome_, [this](const ScreenSnapshot& screen) {
    return push_.IsTextField(screen) || push_.IsConfirmation(screen) || push_.IsKindQuestion(screen);
  });
  return left ? PushAnswer::kCancelled : PushAnswer::kNoAnswer;
}

// The user was reading. Another list than the article's is none to open things from.
void PushDialogue::ReturnToArticle() {
  if (IsReader(waits_.Seen()) || !IsHome(waits_.Seen())) return;
  Press(kOpenKey, isReader_, [this](const ScreenSnapshot& screen) { return pages_.IsListCursor(screen); });
}

bool PushDialogue::IsHome(const ScreenSnapshot& screen) const {
  if (IsReader(screen)) return true;
  return pages_.IsListCursor(screen) && !order_.author.empty() &&
         PageFacts::ParseListAuthor(screen, screen.cursorRow) == order_.author;
}

}  // namespace quillet
