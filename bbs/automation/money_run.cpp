#include "bbs/automation/money_run.h"

#include <optional>
#include <string_view>
#include <utility>

#include "bbs/automation/article_code_question.h"
#include "bbs/automation/article_jump.h"
#include "bbs/automation/dialogue.h"
#include "bbs/automation/money_page.h"
#include "bbs/automation/money_way.h"

namespace quillet {
namespace {

// A gift that the fields do not take so often is none.
constexpr int kMostAttempts = 3;
constexpr std::string_view kEnter = "\r";

constexpr std::u16string_view kFieldWords = u"站台的欄位沒有收下代號或金額";
constexpr std::u16string_view kNothingSaid = u"站台沒有扣款，也沒有說明原因";

class MoneyRun {
 public:
  MoneyRun(ScreenWaits& waits, const MoneyOrder& order, MoneyLedger& ledger)
      : waits_(waits),
        order_(order),
        ledger_(ledger),
        page_(waits.Pages()),
        way_(waits, page_, order.reaction),
        fields_(waits, Dialogue::Limits{.answer = order.reaction}),
        gift_(waits, Dialogue::Limits{.answer = order.answer}) {}

  MoneyRunEnd GiveAll();
  const std::u16string& Said() const { return way_.Said(); }
  void GoBackTo(const ArticleReference& article);

 private:
  using Goal = MoneyWay::Goal;
  // kFinished everywhere below: go on.
  MoneyRunEnd Give(std::size_t at);
  MoneyRunEnd OpenMoneyPage();
  MoneyRunEnd Check();
  bool Fill(const MoneyGift& gift);
  void Confirm(std::size_t at);
  void TakeAnswer(std::size_t at, const std::u16string& words);
  MoneyRunEnd Settle();
  MoneyRunEnd SettleGift(std::size_t at, std::int32_t before);

  bool Type(const MoneyPrompt& prompt, std::u16string_view text);
  // Goes on from one prompt to the next one.
  bool Enter(const MoneyPrompt& prompt, const MoneyPrompt& next);

  ScreenWaits& waits_;
  const MoneyOrder& order_;
  MoneyLedger& ledger_;
  const MoneyPage page_;
  MoneyWay way_;
  Dialogue fields_, gift_;
  std::int32_t money_ = kNoMoney;       // on the page that is open
  bool checked_ = false;                // it suffices for all
  bool notEnough_ = false;              // the BBS says so
  std::optional<std::size_t> unclear_;  // the gift of which only the money can tell
};

MoneyRunEnd MoneyRun::GiveAll() {
  for (std::size_t at = 0; at < order_.gifts.size(); ++at)
    if (const MoneyRunEnd end = Give(at); end != MoneyRunEnd::kFinished) return end;
  return unclear_ ? OpenMoneyPage() : MoneyRunEnd::kFinished;
}

MoneyRunEnd MoneyRun::Give(std::size_t at) {
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    if (const MoneyRunEnd end = OpenMoneyPage(); end != MoneyRunEnd::kFinished) return end;
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

// ---- One gift

// Up to the question whether it is meant; what stands in the fields by then has been read back.
bool MoneyRun::Fill(const MoneyGift& gift) {
  const std::string digits = std::to_string(gift.amount);
  const std::u16string amount(digits.begin(), digits.end());
  return Type(page_.receiver, gift.id) && Enter(page_.receiver, page_.amount) && Type(page_.amount, amount) &&
         Enter(page_.amount, page_.confirmation) && page_.receiver.Holds(waits_.Seen(), gift.id) &&
         page_.amount.Holds(waits_.Seen(), amount);
}

bool MoneyRun::Type(const MoneyPrompt& prompt, std::u16string_view text) {
  waits_.DismissMessages();
  waits_.SendText(text);
  return fields_.Await([&](const ScreenSnapshot& screen) { return prompt.Holds(screen, text); });
}

bool MoneyRun::Enter(const MoneyPrompt& prompt, const MoneyPrompt& next) {
  const auto asksNext = [&](const ScreenSnapshot& screen) {
    return next.Asks(screen) && waits_.Pages().IsInputField(screen);
  };
  const auto stillAsking = [&](const ScreenSnapshot& screen) { return prompt.Asks(screen); };
  return fields_.Press(kEnter, asksNext, stillAsking) != Dialogue::Answer::kNone;
}

void MoneyRun::Confirm(std::size_t at) {
  // From here on the gift may have been made, whatever happens.
  ledger_.Note(at, GiftState::kAsked);
  unclear_ = at;
  if (!Type(page_.confirmation, u"y")) return;
  std::u16string words;
  const auto answered = [&](const ScreenSnapshot& screen) {
    words = page_.MessageOn(screen);
    return !words.empty() || waits_.Pages().IsListCursor(screen);
  };
  const auto stillAsking = [&](const ScreenSnapshot& screen) { return page_.confirmation.Asks(screen); };
  if (gift_.Press(kEnter, answered, stillAsking) != Dialogue::Answer::kNone) TakeAnswer(at, words);
}

void MoneyRun::TakeAnswer(std::size_t at, const std::u16string& words) {
  const MoneyPage::Verdict verdict = MoneyPage::VerdictOf(words);
  notEnough_ = verdict == MoneyPage::Verdict::kNotEnough;
  if (verdict != MoneyPage::Verdict::kUnknown) unclear_.reset();
  switch (verdict) {
    case MoneyPage::Verdict::kGiven:
      return ledger_.Note(at, GiftState::kGiven);
    case MoneyPage::Verdict::kNotEnough:
    case MoneyPage::Verdict::kNoSuchUser:
      return ledger_.Note(at, GiftState::kRefused, words);
    case MoneyPage::Verdict::kUnknown:
      return ledger_.Note(at, GiftState::kAsked, words);
  }
}

// ---- The page and its money

MoneyRunEnd MoneyRun::OpenMoneyPage() {
  const MoneyRunEnd reached = way_.Reach(Goal::kMoneyPage);
  return reached == MoneyRunEnd::kFinished ? Settle() : reached;
}

// On a money page: its money, and what it tells of the last gift.
MoneyRunEnd MoneyRun::Settle() {
  const std::int32_t before = std::exchange(money_, PageFacts::ParseMoney(waits_.Seen()));
  if (money_ != kNoMoney) ledger_.NoteMoney(money_);
  const std::optional<std::size_t> at = std::exchange(unclear_, std::nullopt);
  return at ? SettleGift(*at, before) : MoneyRunEnd::kFinished;
}

MoneyRunEnd MoneyRun::SettleGift(std::size_t at, std::int32_t before) {
  if (before == kNoMoney || money_ == kNoMoney) return MoneyRunEnd::kUnclear;
  if (money_ == before - order_.gifts[at].amount) {
    ledger_.Note(at, GiftState::kGiven);
    return MoneyRunEnd::kFinished;
  }
  if (money_ != before) return MoneyRunEnd::kUnclear;
  const std::u16string words = ledger_.Result().gifts[at].words;
  ledger_.Note(at, GiftState::kRefused, words.empty() ? std::u16string(kNothingSaid) : words);
  return MoneyRunEnd::kFinished;
}

void MoneyRun::GoBackTo(const ArticleReference& article) {
  if (article.board.empty() || article.code.empty()) {
    way_.Reach(Goal::kBoardList);
    return;
  }
  // The jump leaves prompts alone; the one of the money page is this run's own.
  way_.LeaveMoneyPage();
  if (JumpToArticle(waits_, article.board, article.code) == JumpResult::kFound)
    waits_.OpenArticleUnderCursor(ArticlePart::kTop);
}

}  // namespace

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
