#include "app/dialogs/give_money_dlg.h"

#include <algorithm>
#include <utility>

#include <QAbstractTableModel>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include "settings/dialog/dialog_room.h"

namespace quillet {
namespace {

constexpr int kMostFloor = 99999;

QHBoxLayout* RowOf(std::initializer_list<QWidget*> widgets) {
  auto* const row = new QHBoxLayout;
  for (QWidget* const widget : widgets)
    row->addWidget(widget);
  row->addStretch();
  return row;
}

// The fields of all groups begin at one place.
void AlignFields(const QList<QFormLayout*>& forms) {
  QWidgetList labels;
  int widest = 0;
  for (QFormLayout* const form : forms)
    for (int row = 0; row < form->rowCount(); ++row)
      if (QLayoutItem* const item = form->itemAt(row, QFormLayout::LabelRole)) {
        labels << item->widget();
        widest = qMax(widest, item->sizeHint().width());
      }
  for (QWidget* const label : labels)
    label->setMinimumWidth(widest);
}

}  // namespace

// The gifts as rows: floor, id, amount.
class GiftTable : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  void Show(const std::vector<FloorGift>& gifts) {
    beginResetModel();
    gifts_ = gifts;
    endResetModel();
  }
  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(gifts_.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : kColumns; }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return AlignmentOf(section);
    if (role != Qt::DisplayRole) return {};
    const QStringList names{u"樓層"_qs, u"id"_qs, u"送出"_qs};
    return names.value(section);
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || index.row() >= rowCount()) return {};
    if (role == Qt::TextAlignmentRole) return AlignmentOf(index.column());
    if (role != Qt::DisplayRole) return {};
    const FloorGift& gift = gifts_[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
      case kFloor:
        return u"%1 樓"_qs.arg(gift.floor);
      case kId:
        return QString::fromStdU16String(gift.id);
      default:
        return u"$%1"_qs.arg(gift.amount);
    }
  }

  enum Column { kFloor, kId, kAmount, kColumns };

 private:
  static QVariant AlignmentOf(int column) {
    return QVariant((column == kId ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
  }

  std::vector<FloorGift> gifts_;
};

GiveMoneyDlg::GiveMoneyDlg(const MoneyChoices& choices, MoneyPeople people, std::mt19937::result_type lot,
                           QWidget* parent)
    : QDialog(parent), people_(std::move(people)), lot_(lot), table_(new GiftTable(this)) {
  setWindowTitle(u"自動發P幣"_qs);
  auto* const asked = new QWidget;
  auto* const left = new QVBoxLayout(asked);
  left->setContentsMargins(0, 0, 0, 0);
  left->addWidget(MakeReceivers(choices));
  left->addWidget(MakeAmount(choices));
  left->addStretch();
  auto* const columns = new QHBoxLayout;
  columns->addWidget(new ContentScroll(asked, Sideways::kNever));
  columns->addWidget(MakeList(), 1);
  note_ = new QLabel;
  note_->setObjectName("note");
  note_->setTextFormat(Qt::PlainText);
  // Its words come later, and are higher than the font's own letters: they must not take room from the rest.
  note_->setMinimumHeight(QLabel(u"推"_qs).sizeHint().height());
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(columns, 1);
  layout->addWidget(note_);
  layout->addLayout(MakeButtons());

  AlignFields(findChildren<QFormLayout*>());
  connect(random_, &QCheckBox::toggled, drawAgain_, &QPushButton::setEnabled);
  drawAgain_->setEnabled(random_->isChecked());
  connect(drawAgain_, &QPushButton::clicked, this, [this] {
    ++lot_;
    Review();
  });
  for (QCheckBox* const box : findChildren<QCheckBox*>())
    connect(box, &QCheckBox::toggled, this, &GiveMoneyDlg::Review);
  for (QSpinBox* const box : findChildren<QSpinBox*>())
    connect(box, &QSpinBox::valueChanged, this, &GiveMoneyDlg::Review);
  connect(contentInclude_, &QLineEdit::textChanged, this, &GiveMoneyDlg::Review);
  Review();
  FitToScreen(*this);
}

QSpinBox* GiveMoneyDlg::MakeNumber(const char* name, int least, int most, int value) {
  auto* const box = new QSpinBox;
  box->setObjectName(name);
  box->setRange(least, most);
  box->setValue(value);
  return box;
}

QCheckBox* GiveMoneyDlg::MakeCheck(const char* name, const QString& label, bool on) {
  auto* const box = new QCheckBox(label);
  box->setObjectName(name);
  box->setChecked(on);
  return box;
}

QWidget* GiveMoneyDlg::MakeReceivers(const MoneyChoices& choices) {
  push_ = MakeCheck("push", u"推"_qs, choices.push);
  boo_ = MakeCheck("boo", u"噓"_qs, choices.boo);
  arrow_ = MakeCheck("arrow", u"→"_qs, choices.arrow);
  fromFloor_ = MakeNumber("fromFloor", 1, kMostFloor, choices.fromFloor);
  toFloor_ = MakeNumber("toFloor", 1, kMostFloor, choices.toFloor);
  floorInterval_ = MakeNumber("floorInterval", 1, kMostFloor, choices.floorInterval);
  number_ = MakeNumber("number", 1, kMostFloor, choices.number);
  contentInclude_ = new QLineEdit(QString::fromStdU16String(choices.contentInclude));
  contentInclude_->setObjectName("contentInclude");
  contentInclude_->setPlaceholderText(u"不限"_qs);
  matchCase_ = MakeCheck("matchCase", u"大小寫須相符"_qs, choices.matchCase);
  noDupe_ = MakeCheck("noDupe", u"同一個id只發一次"_qs, choices.noDupe);
  noBlack_ = MakeCheck("noBlack", u"不發給黑名單"_qs, choices.noBlack);
  noSuperBlack_ = MakeCheck("noSuperBlack", u"不發給超黑名單"_qs, choices.noSuperBlack);
  random_ = MakeCheck("random", u"隨機抽選"_qs, choices.random);
  drawAgain_ = new QPushButton(u"重抽"_qs);
  drawAgain_->setObjectName("drawAgain");
  drawAgain_->setAutoDefault(false);

  auto* const group = new QGroupBox(u"發給哪些推文"_qs);
  auto* const form = new QFormLayout(group);
  form->addRow(u"種類"_qs, RowOf({push_, boo_, arrow_}));
  form->addRow(u"樓層"_qs, RowOf({fromFloor_, new QLabel(u"到"_qs), toFloor_}));
  form->addRow(u"每"_qs, RowOf({floorInterval_, new QLabel(u"樓發一份"_qs)}));
  form->addRow(u"內容包含"_qs, contentInclude_);
  form->addRow(QString(), matchCase_);
  form->addRow(u"最多"_qs, RowOf({number_, new QLabel(u"份"_qs), random_, drawAgain_}));
  form->addRow(QString(), noDupe_);
  form->addRow(QString(), noBlack_);
  form->addRow(QString(), noSuperBlack_);
  return group;
}

QWidget* GiveMoneyDlg::MakeAmount(const MoneyChoices& choices) {
  moneyForEach_ = MakeNumber("moneyForEach", 1, kMostMoney, choices.moneyForEach);
  moneyForEach_->setPrefix(u"$"_qs);
  afterTax_ = MakeCheck("afterTax", u"稅後實拿 (站台抽 %1% 的稅)"_qs.arg(kMoneyTaxPercent), choices.afterTax);
  tax_ = new QLabel;
  tax_->setObjectName("tax");
  auto* const group = new QGroupBox(u"發多少"_qs);
  auto* const form = new QFormLayout(group);
  form->addRow(u"每份"_qs, RowOf({moneyForEach_}));
  form->addRow(QString(), afterTax_);
  form->addRow(QString(), tax_);
  return group;
}

QWidget* GiveMoneyDlg::MakeList() {
  auto* const view = new QTableView;
  view->setObjectName("gifts");
  view->setModel(table_);
  view->setSelectionMode(QAbstractItemView::NoSelection);
  view->setFocusPolicy(Qt::NoFocus);
  view->setAlternatingRowColors(true);
  view->setShowGrid(false);
  view->verticalHeader()->hide();
  view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().lineSpacing() * 3 / 2);
  const auto width = [view](int letters) { return LettersWide(*view, letters); };
  view->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->horizontalHeader()->setSectionResizeMode(GiftTable::kId, QHeaderView::Stretch);
  view->setColumnWidth(GiftTable::kFloor, width(9));
  view->setColumnWidth(GiftTable::kAmount, width(12));
  view->setMinimumWidth(width(38));
  return view;
}

QLayout* GiveMoneyDlg::MakeButtons() {
  // Money that is sent does not come back: Enter in a field must not send it. A button box would make its
  // first button the default one.
  auto* const row = new QHBoxLayout;
  row->addStretch();
  send_ = new QPushButton;
  send_->setObjectName("send");
  auto* const cancel = new QPushButton(u"取消"_qs);
  for (QPushButton* const button : {send_, cancel}) {
    button->setAutoDefault(false);
    row->addWidget(button);
  }
  connect(send_, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  return row;
}

void GiveMoneyDlg::SetFloorsUnknown(int known, const QString& hint) {
  complete_ = false;
  floors_.clear();
  unknownNote_ = u"文章還沒有讀完（已讀 %1 行），讀完才能發送。%2"_qs.arg(known).arg(hint);
  Review();
}

void GiveMoneyDlg::SetFloors(std::vector<PushFloor> floors) {
  complete_ = true;
  floors_ = std::move(floors);
  Review();
}

MoneyChoices GiveMoneyDlg::Choices() const {
  return {.push = push_->isChecked(),
          .boo = boo_->isChecked(),
          .arrow = arrow_->isChecked(),
          .fromFloor = fromFloor_->value(),
          .toFloor = toFloor_->value(),
          .floorInterval = floorInterval_->value(),
          .number = number_->value(),
          .noDupe = noDupe_->isChecked(),
          .contentInclude = contentInclude_->text().trimmed().toStdU16String(),
          .matchCase = matchCase_->isChecked(),
          .noBlack = noBlack_->isChecked(),
          .noSuperBlack = noSuperBlack_->isChecked(),
          .random = random_->isChecked(),
          .moneyForEach = moneyForEach_->value(),
          .afterTax = afterTax_->isChecked()};
}

void GiveMoneyDlg::Review() {
  const MoneyChoices choices = Choices();
  // Made anew each time, so that a draw stays the same while other things are chosen.
  std::mt19937 random(lot_);
  gifts_ = ChooseReceivers(floors_, choices, people_, random);
  table_->Show(gifts_);
  const std::int32_t amount = AmountToSend(choices.moneyForEach, choices.afterTax);
  const std::int32_t arrives = std::min(choices.moneyForEach, LeastThatArrives(amount));
  tax_->setText(choices.afterTax ? u"每份送出 $%1，對方拿到 $%2"_qs.arg(amount).arg(arrives)
                                 : u"每份送出 $%1，站台再從中抽稅"_qs.arg(amount));
  send_->setText(u"送出 %1 份，共 $%2"_qs.arg(gifts_.size()).arg(TotalOf(gifts_)));
  send_->setEnabled(complete_ && !gifts_.empty());
  note_->setText(NoteFor(choices));
}

QString GiveMoneyDlg::NoteFor(const MoneyChoices& choices) const {
  if (!complete_) return unknownNote_;
  if (floors_.empty()) return u"這篇文章沒有推文。"_qs;
  if (choices.fromFloor > choices.toFloor) return u"起始樓層在結束樓層之後。"_qs;
  if (gifts_.empty()) return u"沒有符合條件的推文。"_qs;
  return u"共 %1 樓推文；送出去的錢收不回來，請看清楚名單。"_qs.arg(floors_.size());
}

void GiveMoneyDlg::accept() {
  if (send_->isEnabled()) QDialog::accept();
}

}  // namespace quillet
