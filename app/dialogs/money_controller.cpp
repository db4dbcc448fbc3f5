#include "app/dialogs/money_controller.h"

#include <random>
#include <utility>

namespace quillet {
namespace {

// Lines arrive while the dialog is open; nobody waits for its list more eagerly than this.
constexpr int kFollowMs = 100;

MoneyPeople PeopleOf(const CQuillDoc& doc, const NameList& names) {
  return {.self = doc.LoginId(), .standing = [&names](std::u16string_view id) {
            const ListEntry* const entry = names.Find(id);
            if (entry == nullptr) return IdStanding::kOrdinary;
            return entry->kind == ListKind::kBlack        ? IdStanding::kBlack
                   : entry->kind == ListKind::kSuperBlack ? IdStanding::kSuperBlack
                                                          : IdStanding::kOrdinary;
          }};
}

}  // namespace

MoneyController::MoneyController(CQuillDoc& doc, ArticleView& article, QWidget& view)
    : doc_(doc), article_(article), view_(view) {
  follow_.setInterval(kFollowMs);
  connect(&follow_, &QTimer::timeout, this, &MoneyController::Follow);
  connect(&doc_, &CQuillDoc::StatusChanged, this, &MoneyController::Follow);
  connect(&doc_, &CQuillDoc::MoneyEnded, this,
          [this](const MoneyRunResult& result) { emit Notice(DescribeMoneyEnd(result)); });
}

MoneyController::~MoneyController() {
  delete dialog_;
}

void MoneyController::Open() {
  if (dialog_ != nullptr) {
    dialog_->activateWindow();
    return;
  }
  if (!doc_.IsConnected()) return emit Notice(DescribeNoMoney(NoMoneyReason::kNotConnected));
  // The latter for a moment only: the article is being opened anew.
  if (doc_.IsAutomationBusy() || article_.Reading().MustWait())
    return emit Notice(DescribeNoMoney(NoMoneyReason::kBusy));
  if (!doc_.OpenArticle().IsArticle()) return emit Notice(DescribeNoMoney(NoMoneyReason::kNoArticle));
  doc_.RefreshSettings();
  asked_ = doc_.OpenArticle();
  dialog_ = new GiveMoneyDlg(MoneyChoicesOf(doc_.Fields()), PeopleOf(doc_, doc_.Store().Names()),
                             std::random_device{}(), &view_);
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog_, &QDialog::finished, this, &MoneyController::OnFinished);
  shown_.reset();
  Follow();
  dialog_->open();
  follow_.start();
}

void MoneyController::Follow() {
  if (dialog_ == nullptr) return;
  // The article has gone away under the dialog.
  if (!doc_.IsConnected() || !IsSameArticle(doc_.OpenArticle(), asked_)) return dialog_->reject();
  const ArticleLines& lines = article_.Reading().Lines();
  if (shown_ == lines.Version()) return;
  shown_ = lines.Version();
  if (lines.IsComplete()) return dialog_->SetFloors(ReadFloors(doc_.PageReader(), lines));
  const bool byHand = !doc_.Fields().webArticle;
  dialog_->SetFloorsUnknown(lines.Count(),
                            byHand ? u"請關閉這個視窗，把文章翻到最後一頁再試。"_qs : QString());
}

void MoneyController::OnFinished(int answer) {
  follow_.stop();
  // It lives on until the events of now have been handled.
  const GiveMoneyDlg* const dialog = std::exchange(dialog_, nullptr);
  if (dialog != nullptr && answer == QDialog::Accepted) Send(*dialog);
}

void MoneyController::Send(const GiveMoneyDlg& dialog) {
  MoneyOrder order{.article = {.board = asked_.board, .code = doc_.OpenArticle().code}, .gifts = {}};
  for (const FloorGift& gift : dialog.Gifts())
    order.gifts.push_back({gift.id, gift.amount});
  doc_.Set(ChangesFor(dialog.Choices()));
  article_.OnUserKey();
  if (!doc_.GiveMoney(std::move(order)))
    return emit Notice(
        DescribeNoMoney(doc_.IsConnected() ? NoMoneyReason::kBusy : NoMoneyReason::kNotConnected));
  article_.KeepPlace();
}

MoneyChoices MoneyChoicesOf(const Settings& settings) {
  return {.push = settings.autoGivePush,
          .boo = settings.autoGiveShi,
          .arrow = settings.autoGiveArrow,
          .fromFloor = settings.autoGiveFromFloor,
          .toFloor = settings.autoGiveToFloor,
          .floorInterval = settings.autoGiveFloorInterval,
          .number = settings.autoGiveNumber,
          .noDupe = settings.autoGiveNoDupe,
          .contentInclude = settings.autoGiveContentInclude,
          .matchCase = settings.autoGiveMatchCase,
          .noBlack = settings.autoGiveNoBlack,
          .noSuperBlack = settings.autoGiveNoSBlack,
          .random = settings.autoGiveRandom,
          .moneyForEach = settings.autoGiveMoneyForEach,
          .afterTax = settings.autoGiveAfterTax};
}

std::vector<SettingChange> ChangesFor(const MoneyChoices& choices) {
  return {{&Settings::autoGivePush, choices.push},
          {&Settings::autoGiveShi, choices.boo},
          {&Settings::autoGiveArrow, choices.arrow},
          {&Settings::autoGiveFromFloor, choices.fromFloor},
          {&Settings::autoGiveToFloor, choices.toFloor},
          {&Settings::autoGiveFloorInterval, choices.floorInterval},
          {&Settings::autoGiveNumber, choices.number},
          {&Settings::autoGiveNoDupe, choices.noDupe},
          {&Settings::autoGiveContentInclude, choices.contentInclude},
          {&Settings::autoGiveMatchCase, choices.matchCase},
          {&Settings::autoGiveNoBlack, choices.noBlack},
          {&Settings::autoGiveNoSBlack, choices.noSuperBlack},
          {&Settings::autoGiveRandom, choices.random},
          {&Settings::autoGiveMoneyForEach, choices.moneyForEach},
          {&Settings::autoGiveAfterTax, choices.afterTax}};
}

}  // namespace quillet
