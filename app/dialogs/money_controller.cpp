#include "app/dialogs/money_controller.h"

#include <random>
#include <utility>

namespace quillet {
namespace {

// Lines arrive while the dialog is open; nobody waits for its list more eagerly than this.
constexpr int kFollowMs = 100;

MoneyPeople PeopleOf(const std::u16string& self, const NameList& names) {
  return {.self = self, .standing = [&names](std::u16string_view id) {
            const ListEntry* const entry = names.Find(id);
            if (entry == nullptr) return IdStanding::kOrdinary;
            return entry->kind == ListKind::kBlack        ? IdStanding::kBlack
                   : entry->kind == ListKind::kSuperBlack ? IdStanding::kSuperBlack
                                                          : IdStanding::kOrdinary;
          }};
}

}  // namespace

MoneyController::MoneyController(const Parts& parts) : parts_(parts) {
  follow_.setInterval(kFollowMs);
  connect(&follow_, &QTimer::timeout, this, &MoneyController::Follow);
  connect(&parts_.connection, &Connection::StatusChanged, this, &MoneyController::Follow);
  connect(&parts_.automations, &Automations::MoneyEnded, this,
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
  if (!parts_.connection.IsConnected()) return emit Notice(DescribeNoMoney(NoMoneyReason::kNotConnected));
  // The latter for a moment only: the article is being opened anew.
  if (parts_.automations.IsBusy() || parts_.article.Reading().MustWait())
    return emit Notice(DescribeNoMoney(NoMoneyReason::kBusy));
  if (!OpenArticle().IsArticle()) return emit Notice(DescribeNoMoney(NoMoneyReason::kNoArticle));
  parts_.settings.Refresh();
  asked_ = OpenArticle();
  dialog_ = new GiveMoneyDlg(MoneyChoicesOf(parts_.settings.Fields()),
                             PeopleOf(parts_.connection.Seen().loginId, parts_.settings.Store().Names()),
                             std::random_device{}(), &parts_.view);
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
  if (!parts_.connection.IsConnected() || !IsSameArticle(OpenArticle(), asked_)) return dialog_->reject();
  const ArticleLines& lines = parts_.article.Reading().Lines();
  if (shown_ == lines.Version()) return;
  shown_ = lines.Version();
  if (lines.IsComplete()) return dialog_->SetFloors(ReadFloors(lines));
  const bool byHand = !parts_.settings.Fields().webArticle;
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
  MoneyOrder order{.article = {.board = asked_.board, .code = OpenArticle().code}, .gifts = {}};
  for (const FloorGift& gift : dialog.Gifts())
    order.gifts.push_back({gift.id, gift.amount});
  parts_.settings.Set(ChangesFor(dialog.Choices()));
  parts_.article.OnUserKey();
  if (!parts_.automations.GiveMoney(std::move(order)))
    return emit Notice(DescribeNoMoney(parts_.connection.IsConnected() ? NoMoneyReason::kBusy
                                                                       : NoMoneyReason::kNotConnected));
  parts_.article.KeepPlace();
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
