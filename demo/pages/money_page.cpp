#include "demo/pages/money_page.h"

#include <cstdlib>

#include "core/charset.h"
#include "demo/big5_text.h"
#include "demo/pages/menu_page.h"
#include "demo/pages/prompts.h"

namespace quillet::demo {
namespace {

constexpr int kReceiverRow = 3;
constexpr int kAmountRow = 5;
constexpr int kAfterTaxRow = 6;
constexpr int kConfirmRow = 7;
constexpr int kAmountDigits = 8;
// Clients read the money of row 1 from here on: "$", the number, ")".
constexpr int kMoneyCol = 52;

}  // namespace

MoneyPage::MoneyPage(PageHost& host) : host_(host), receiver_(12), amount_(kAmountDigits), answer_(2) {}

void MoneyPage::Draw(Canvas& canvas) {
  DrawTitleBar(canvas, u"【送人文藝幣】");
  const auto user = host_.TheWorld().FindUser(host_.CurrentUser().id);
  canvas.Put(1, 0, u"文藝幣送出去就收不回來，請想清楚再按。");
  canvas.Put(1, kMoneyCol, ToBig5(u"(目前有 $") + std::to_string(user ? user->money : 0) + ")",
             Attr(kYellow, kBlack, Weight::kBold));
  DrawStatusBar(canvas, host_);
  receiver_.Draw(canvas, kReceiverRow, canvas.Put(kReceiverRow, 4, u"要送給誰: "));
  if (step_ == Step::kReceiver) return;
  amount_.Draw(canvas, kAmountRow, canvas.Put(kAmountRow, 4, u"送多少: "));
  if (step_ == Step::kAmount) return;
  canvas.Put(kAfterTaxRow, 4, ToBig5(u"扣稅後對方實收: ") + std::to_string(AfterTax(Amount())));
  answer_.Draw(canvas, kConfirmRow, canvas.Put(kConfirmRow, 4, u"確定要送嗎[y/N]: "));
}

void MoneyPage::OnKey(const Key& key) {
  if (key.Is(KeyKind::kEscape) || key.IsControl('C'))
    host_.CloseTop();
  else if (key.Is(KeyKind::kEnter))
    OnEnter();
  else
    (step_ == Step::kReceiver ? receiver_ : step_ == Step::kAmount ? amount_ : answer_).OnKey(key);
}

void MoneyPage::OnEnter() {
  if (step_ == Step::kReceiver) {
    step_ = Step::kAmount;
    if (Trimmed(receiver_.Text()).empty()) host_.CloseTop();
  } else if (step_ == Step::kAmount) {
    step_ = Step::kConfirm;
    if (Amount() < 1) host_.CloseTop();
  } else {
    host_.CloseTop();
    if (answer_.Text() == "y" || answer_.Text() == "Y") Give();
  }
}

long MoneyPage::Amount() const {
  return std::strtol(amount_.Text().c_str(), nullptr, 10);
}

void MoneyPage::Give() {
  const auto result = host_.TheWorld().Transfer(host_.CurrentUser().id, Trimmed(receiver_.Text()), Amount());
  const std::u16string_view words = result == TransferResult::kDone ? u"文藝幣已經送到對方手上"
                                    : result == TransferResult::kNotEnough ? u"您的文藝幣不夠"
                                                                           : u"沒有這個人，或不能送給他";
  host_.Open(std::make_unique<MessagePage>(host_, words));
}

}  // namespace quillet::demo
