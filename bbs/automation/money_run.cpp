#include "bbs/automation/money_run.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "bbs/automation/article_code_question.h"
#include "bbs/automation/article_jump.h"
#include "bbs/screen_fields.h"
#include "core/ascii.h"
#include "core/charset.h"
#include "core/key_sequence.h"

namespace quillet {
namespace {

using namespace std::chrono_literals;

// Pages are nested less deep than this.
constexpr int kMostSteps = 30;
// At what the BBS does not react to, and at a gift that has not been confirmed yet.
constexpr int kMostAttempts = 3;
constexpr std::string_view kEnter = "\r";
constexpr std::string_view kYes = "y";

constexpr std::u16string_view kGivenWords = u"文藝幣已經送到對方手上";
constexpr std::u16string_view kNotEnoughWords = u"您的文藝幣不夠";
constexpr std::u16string_view kNoSuchUserWords = u"沒有這個人，或不能送給他";
constexpr std::u16string_view kFieldWords = u"站台的欄位沒有收下代號或金額";
constexpr std::u16string_view kNothingSaid = u"站台沒有扣款，也沒有說明原因";

std::u16string TextOfRow(const ScreenSnapshot& screen, int row, int col = 0) {
  return FieldText(screen, row, col, kCols - 1);
}

// A prompt of the money page: its label, and the field behind it.
struct Prompt {
  int row;
  int fieldCol;
  std::string label;

  static constexpr int kLabelCol = 4;
  Prompt(int promptRow, std::u16string_view text)
      : row(promptRow), fieldCol(kLabelCol + static_cast<int>(ToBig5(text).size())), label(ToBig5(text)) {}

  bool Stands(const ScreenSnapshot& screen) const {
    return RowStartsWith(screen, row, kLabelCol, std::string_view(label));
  }
  bool Asks(const ScreenSnapshot& screen) const { return screen.cursorRow == row && Stands(screen); }
  bool Holds(const ScreenSnapshot& screen, std::u16string_view text) const {
    return Stands(screen) && TextOfRow(screen, row, fieldCol) == text;
  }
};

class MoneyRun {
 public:
  MoneyRun(ScreenWaits& waits, const MoneyOrder& order, MoneyLedger& ledger)
      : waits_(waits), pages_(waits.Pages()), order_(order), ledger_(ledger) {}

  MoneyRunEnd GiveAll();
  const std::u16string& Said() const { return said_; }
  void GoBackTo(const ArticleReference& article);

 private:
  enum class Goal { kMoneyPage, kBoardList };
  enum class Place {
    kUnknown,  // or still being drawn
    kReader,
    kList,
    kBoardList,
    kMainMenu,
    kSystemMenu,
    kMoneyPage,
    kMessage,
    kTypedInto
  };
  // kFinished everywhere below: go on.
  MoneyRunEnd Give(std::size_t at);
  MoneyRunEnd Check();
  bool Fill(const MoneyGift& gift);
  void Confirm(std::size_t at);
  void TakeAnswer(std::size_t at, const std::u16string& words);
  MoneyRunEnd Settle();

  MoneyRunEnd Reach(Goal goal);
  std::optional<MoneyRunEnd> StepTowards(Goal goal, Place place, Place before);
  Place PlaceOf(const ScreenSnapshot& screen) const;
  Place MenuOf(const ScreenSnapshot& screen) const;
  bool IsFreshMoneyPage(const ScreenSnapshot& screen) const;
  std::u16string MessageOn(const ScreenSnapshot& screen) const;

  bool Type(const Prompt& prompt, std::u16string_view text);
  // Sends and waits for any reaction.
  void Step(std::string_view key);
  void Choose(char letter);
  // Sends Enter until the BBS has `answered`, again where a message has swallowed it.
  bool PressEnter(const ScreenWaits::Condition& answered, const Prompt& asking,
                  std::chrono::milliseconds limit);
  MoneyRunEnd NoAnswer() const { return waits_.IsAlive() ? MoneyRunEnd::kNoWay : MoneyRunEnd::kClosed; }

  ScreenWaits& waits_;
  const PageTests& pages_;
  const MoneyOrder& order_;
  MoneyLedger& ledger_;
  const Prompt receiver_{3, u"要送給誰: "}, amount_{5, u"送多少: "}, sure_{7, u"確定要送嗎[y/N]: "};
  std::u16string said_;
  std::int32_t money_ = kNoMoney;       // on the page that is open
  bool checked_ = false;                // it suffices for all
  int silentSteps_ = 0;                 // in a row, to which the BBS has shown no reaction
  bool notEnough_ = false;              // the BBS says so
  std::optional<std::size_t> unclear_;  // the gift of which only the money can tell
};

// ---- Giving

MoneyRunEnd MoneyRun::GiveAll() {
  for (std::size_t at = 0; at < order_.gifts.size(); ++at)
    if (const MoneyRunEnd end = Give(at); end != MoneyRunEnd::kFinished) return end;
  if (!unclear_) return MoneyRunEnd::kFinished;
  const MoneyRunEnd reached = Reach(Goal::kMoneyPage);
  return reached == MoneyRunEnd::kFinished ? Settle() : reached;
}

MoneyRunEnd MoneyRun::Give(std::size_t at) {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    if (const MoneyRunEnd end = Reach(Goal::kMoneyPage); end != MoneyRunEnd::kFinished) return end;
    if (const MoneyRunEnd end = Settle(); end != MoneyRunEnd::kFinished) return end;
    if (const MoneyRunEnd end = Check(); end != MoneyRunEnd::kFinished) return end;
    if (!Fill(order_.gifts[at])) continue;
    Confirm(at);
    if (!waits_.IsAlive()) return MoneyRunEnd::kClosed;
    return notEnough_ ? MoneyRunEnd::kNotEnough : MoneyRunEnd::kFinished;
  }
  if (!waits_.IsAlive()) return MoneyRunEnd::kClosed;
  ledger_.Note(at, GiftState::kRefused, std::u16string(kFieldWords));
  return MoneyRunEnd::kFinished;
}

// Once, before the first gift.
MoneyRunEnd MoneyRun::Check() {
  if (checked_) return MoneyRunEnd::kFinished;
  std::int64_t total = 0;
  for (const MoneyGift& gift : order_.gifts)
    total += gift.amount;
  if (money_ != kNoMoney && money_ < total) return MoneyRunEnd::kNotEnough;
  checked_ = true;
  return MoneyRunEnd::kFinished;
}

// Up to the question whether it is meant; what stands in the fields by then has been read back.
bool MoneyRun::Fill(const MoneyGift& gift) {
  const std::string digits = std::to_string(gift.amount);
  const std::u16string amount(digits.begin(), digits.end());
  const auto asks = [this](const Prompt& prompt) {
    return [this, &prompt](const ScreenSnapshot& screen) {
      return prompt.Asks(screen) && pages_.IsInputField(screen);
    };
  };
  return Type(receiver_, gift.id) && PressEnter(asks(amount_), receiver_, order_.reaction) &&
         Type(amount_, amount) && PressEnter(asks(sure_), amount_, order_.reaction) &&
         receiver_.Holds(waits_.Seen(), gift.id) && amount_.Holds(waits_.Seen(), amount);
}

void MoneyRun::Confirm(std::size_t at) {
  // From here on the gift may have been made, whatever happens.
  ledger_.Note(at, GiftState::kAsked);
  unclear_ = at;
  if (!Type(sure_, std::u16string(kYes.begin(), kYes.end()))) return;
  std::u16string words;
  const bool answered = PressEnter(
      [&](const ScreenSnapshot& screen) {
        words = MessageOn(screen);
        return !words.empty() || pages_.IsListCursor(screen);
      },
      sure_, order_.answer);
  if (answered) TakeAnswer(at, words);
}

void MoneyRun::TakeAnswer(std::size_t at, const std::u16string& words) {
  const auto says = [&words](std::u16string_view known) { return words.starts_with(known); };
  notEnough_ = says(kNotEnoughWords);
  if (says(kGivenWords))
    ledger_.Note(at, GiftState::kGiven);
  else
    ledger_.Note(at, notEnough_ || says(kNoSuchUserWords) ? GiftState::kRefused : GiftState::kAsked, words);
  if (says(kGivenWords) || says(kNoSuchUserWords) || notEnough_) unclear_.reset();
}

// On a money page: its money, and what it tells of the last gift.
MoneyRunEnd MoneyRun::Settle() {
  const std::int32_t before = std::exchange(money_, PageFacts::ParseMoney(waits_.Seen()));
  if (money_ != kNoMoney) ledger_.NoteMoney(money_);
  const std::optional<std::size_t> at = std::exchange(unclear_, std::nullopt);
  if (!at) return MoneyRunEnd::kFinished;
  if (before == kNoMoney || money_ == kNoMoney) return MoneyRunEnd::kUnclear;
  if (money_ == before - order_.gifts[*at].amount) {
    ledger_.Note(*at, GiftState::kGiven);
  } else if (money_ == before) {
    const std::u16string words = ledger_.Result().gifts[*at].words;
    ledger_.Note(*at, GiftState::kRefused, words.empty() ? std::u16string(kNothingSaid) : words);
  } else {
    return MoneyRunEnd::kUnclear;
  }
  return MoneyRunEnd::kFinished;
}

// ---- Moving between pages

MoneyRunEnd MoneyRun::Reach(Goal goal) {
  Place before = Place::kUnknown;
  silentSteps_ = 0;
  for (int step = 0; step < kMostSteps; ++step) {
    if (!waits_.DismissMessages()) return NoAnswer();
    Place place = Place::kUnknown;
    bool interrupted = false;
    waits_.WaitAtMost(order_.reaction, [&](const ScreenSnapshot& screen) {
      interrupted = pages_.IsStarLine(screen);
      place = interrupted ? Place::kUnknown : PlaceOf(screen);
      return interrupted || place != Place::kUnknown;
    });
    if (!waits_.IsAlive()) return MoneyRunEnd::kClosed;
    if (interrupted) continue;
    if (const auto end = StepTowards(goal, place, before)) return *end;
    if (silentSteps_ >= kMostAttempts) return NoAnswer();
    before = place;
  }
  return NoAnswer();
}

std::optional<MoneyRunEnd> MoneyRun::StepTowards(Goal goal, Place place, Place before) {
  const bool toMoney = goal == Goal::kMoneyPage;
  switch (place) {
    case Place::kUnknown:
      return MoneyRunEnd::kNoWay;
    case Place::kTypedInto:
      return MoneyRunEnd::kBusy;
    case Place::kMoneyPage:
      if (toMoney && IsFreshMoneyPage(waits_.Seen())) return MoneyRunEnd::kFinished;
      Step(kCancelKey);
      return std::nullopt;
    case Place::kMessage:
      if (toMoney && before == Place::kSystemMenu) {
        said_ = MessageOn(waits_.Seen());
        return MoneyRunEnd::kRefused;
      }
      Step(ScreenWaits::kDismissKey);
      return std::nullopt;
    case Place::kMainMenu:
      Choose(toMoney ? 'X' : 'B');
      return std::nullopt;
    case Place::kSystemMenu:
      if (!toMoney) break;
      Choose('P');
      return std::nullopt;
    case Place::kBoardList:
      if (!toMoney) return MoneyRunEnd::kFinished;
      break;
    case Place::kReader:
    case Place::kList:
      break;
  }
  Step(KeySequence(kKeyLeft));
  return std::nullopt;
}

MoneyRun::Place MoneyRun::PlaceOf(const ScreenSnapshot& screen) const {
  if (pages_.IsInputField(screen))
    return RowStartsWith(screen, 0, 0, u"【送人文藝幣】") ? Place::kMoneyPage : Place::kTypedInto;
  if (pages_.IsEditor(screen) || pages_.IsPushLine(screen)) return Place::kTypedInto;
  // While the next page is drawn from the top, the old status line is still there.
  const bool parked = screen.cursorRow == kBottomRow && screen.cursorCol >= kReaderCursorCol;
  if (parked && pages_.IsReader(screen, PageTests::ReaderForm::kPlain)) return Place::kReader;
  if (!MessageOn(screen).empty() || pages_.IsPause(screen)) return Place::kMessage;
  return pages_.IsListCursor(screen) ? MenuOf(screen) : Place::kUnknown;
}

MoneyRun::Place MoneyRun::MenuOf(const ScreenSnapshot& screen) const {
  const auto titled = [&](std::u16string_view title) { return RowStartsWith(screen, 0, 0, title); };
  if (titled(u"【主功能表】")) return Place::kMainMenu;
  if (titled(u"【系統資訊】")) return Place::kSystemMenu;
  return titled(u"【看板列表】") ? Place::kBoardList : Place::kList;
}

bool MoneyRun::IsFreshMoneyPage(const ScreenSnapshot& screen) const {
  return receiver_.Asks(screen) && receiver_.Holds(screen, u"");
}

// The words of a message on the bottom row or above a banner, without what asks for a key.
std::u16string MoneyRun::MessageOn(const ScreenSnapshot& screen) const {
  if (screen.cursorRow != kBottomRow || screen.cursorCol != kCols - 1) return {};
  int row = kBottomRow;
  if (pages_.IsAnyKeyBanner(screen)) {
    do
      --row;
    while (row > 0 && TextOfRow(screen, row).empty());
  }
  std::u16string text = TextOfRow(screen, row);
  constexpr std::u16string_view kMark = u"◆ ";
  if (row == kBottomRow && !text.starts_with(kMark)) return {};
  if (text.starts_with(kMark)) text.erase(0, kMark.size());
  text.resize(std::min(text.find(u'['), text.size()));
  return text.substr(0, text.find_last_not_of(u' ') + 1);
}

// ---- Keys

bool MoneyRun::Type(const Prompt& prompt, std::u16string_view text) {
  waits_.DismissMessages();
  waits_.SendText(text);
  return waits_.WaitAtMost(order_.reaction,
                           [&](const ScreenSnapshot& screen) { return prompt.Holds(screen, text); });
}

void MoneyRun::Step(std::string_view key) {
  const ScreenSnapshot before = waits_.Seen();
  waits_.Send(key);
  const bool reacts = waits_.WaitAtMost(order_.reaction, [&](const ScreenSnapshot& screen) {
    return screen.text != before.text || screen.cursorRow != before.cursorRow;
  });
  silentSteps_ = reacts ? 0 : silentSteps_ + 1;
}

// An item of a menu by its letter. Where a message has swallowed the key, or the page was on its way to
// another one, nothing is entered.
void MoneyRun::Choose(char letter) {
  const std::string label = {'(', letter, ')'};
  waits_.Send(std::string(1, AsciiLower(letter)));
  const bool chosen = waits_.WaitAtMost(order_.reaction, [&](const ScreenSnapshot& screen) {
    return pages_.IsListCursor(screen) && screen.RowText(screen.cursorRow).find(label) != std::string::npos;
  });
  if (chosen)
    Step(kEnter);
  else
    ++silentSteps_;
}

bool MoneyRun::PressEnter(const ScreenWaits::Condition& answered, const Prompt& asking,
                          std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  waits_.Send(kEnter);
  while (std::chrono::steady_clock::now() < end) {
    bool interrupted = false;
    const bool seen = waits_.WaitAtMost(
        limit,
        [&](const ScreenSnapshot& screen) {
          interrupted = pages_.IsStarLine(screen);
          return interrupted || answered(screen);
        },
        1ms);
    if (!interrupted) return seen;
    waits_.DismissMessages();
    bool done = false;
    waits_.WaitAtMost(order_.reaction, [&](const ScreenSnapshot& screen) {
      done = answered(screen);
      return done || asking.Asks(screen);
    });
    if (done) return true;
    if (asking.Asks(waits_.Seen())) waits_.Send(kEnter);
  }
  return false;
}

// ---- The way back

void MoneyRun::GoBackTo(const ArticleReference& article) {
  if (article.board.empty() || article.code.empty()) {
    Reach(Goal::kBoardList);
    return;
  }
  // The jump leaves prompts alone; the one of the money page is this run's own.
  if (PlaceOf(waits_.Look()) == Place::kMoneyPage) Step(kCancelKey);
  if (JumpToArticle(waits_, article.board, article.code) == JumpResult::kFound)
    waits_.OpenArticleUnderCursor(ArticlePart::kTop);
}

}  // namespace

// ---- The ledger

int MoneyRunResult::Count(GiftState state) const {
  return static_cast<int>(std::count_if(gifts.begin(), gifts.end(),
                                        [state](const GiftRecord& gift) { return gift.state == state; }));
}

std::int64_t MoneyRunResult::Sum(GiftState state) const {
  std::int64_t sum = 0;
  for (const GiftRecord& record : gifts)
    if (record.state == state) sum += record.gift.amount;
  return sum;
}

MoneyLedger::MoneyLedger(const std::vector<MoneyGift>& gifts) {
  for (const MoneyGift& gift : gifts)
    result_.gifts.push_back({.gift = gift, .state = GiftState::kNotYet, .words = {}});
}

void MoneyLedger::Note(std::size_t gift, GiftState state, std::u16string words) {
  const std::lock_guard guard(lock_);
  result_.gifts[gift].state = state;
  result_.gifts[gift].words = std::move(words);
}

void MoneyLedger::NoteMoney(std::int32_t money) {
  const std::lock_guard guard(lock_);
  result_.money = money;
}

void MoneyLedger::NoteEnd(MoneyRunEnd end, std::u16string said) {
  const std::lock_guard guard(lock_);
  result_.end = end;
  result_.said = std::move(said);
}

int MoneyLedger::Tried() const {
  const std::lock_guard guard(lock_);
  return static_cast<int>(result_.gifts.size()) - result_.Count(GiftState::kNotYet);
}

int MoneyLedger::Total() const {
  const std::lock_guard guard(lock_);
  return static_cast<int>(result_.gifts.size());
}

MoneyRunResult MoneyLedger::Result() const {
  const std::lock_guard guard(lock_);
  return result_;
}

void RunMoneyOrder(ScreenWaits& waits, const MoneyOrder& order, MoneyLedger& ledger) {
  ArticleReference article = order.article;
  if (article.code.empty() && !article.board.empty()) article.code = AskArticleCode(waits);
  MoneyRun run(waits, order, ledger);
  const MoneyRunEnd end = run.GiveAll();
  // A run that the user has stopped looks like one whose connection has ended.
  if (end != MoneyRunEnd::kClosed || waits.Session().state != SessionState::kConnected)
    ledger.NoteEnd(end, run.Said());
  // The user's own prompt is left alone.
  if (end == MoneyRunEnd::kBusy || !waits.IsAlive()) return;
  waits.EndAfter(order.wayBack);
  run.GoBackTo(article);
}

}  // namespace quillet
