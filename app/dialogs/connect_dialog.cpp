#include "app/dialogs/connect_dialog.h"

#include <utility>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "core/site_address.h"
#include "settings/dialog/dialog_room.h"

namespace quillet {
namespace {

enum Column { kName, kAddress, kAccount };

constexpr int kRowsInSight = 8;

// What stands for a name where none was given.
QString BareAddress(const QString& address) {
  return address.mid(address.indexOf("://") + 3);
}

QString ComplaintAbout(const QString& address) {
  switch (ParseSiteAddress(address.toStdString()).error) {
    case AddressError::kUnknownScheme:
      return u"位址的開頭要是 telnet://、ssh:// 或 wss://，也可以只寫主機名稱。"_qs;
    case AddressError::kTooLong:
      return u"位址太長了，最多 %1 個字元。"_qs.arg(kMaxAddressLength);
    case AddressError::kNone:
      break;
  }
  return {};
}

}  // namespace

ConnectDlg::ConnectDlg(const QString& address, Sites sites, QWidget* parent)
    : QDialog(parent), field_(new QLineEdit(address)), complaint_(new QLabel), sites_(std::move(sites)) {
  setWindowTitle(u"連線到站台"_qs);
  auto* const form = new QFormLayout;
  form->addRow(u"站台位址(&A)："_qs, field_);
  auto* const example = new QLabel(u"例如 telnet://bbs.example.org:23"_qs);
  // Quieter than the label, on any theme.
  QPalette quiet = example->palette();
  QColor text = quiet.color(QPalette::WindowText);
  text.setAlphaF(0.7F);
  quiet.setColor(QPalette::WindowText, text);
  example->setPalette(quiet);
  form->addRow(QString(), example);
  complaint_->setWordWrap(true);
  // Its room is kept, so that nothing jumps when there is something to complain about.
  complaint_->setMinimumHeight(2 * complaint_->fontMetrics().lineSpacing());
  complaint_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  form->addRow(QString(), complaint_);

  auto* const buttons = new QDialogButtonBox;
  connect_ = buttons->addButton(u"連線(&C)"_qs, QDialogButtonBox::AcceptRole);
  auto* const demo = buttons->addButton(u"示範站台(&D)"_qs, QDialogButtonBox::ActionRole);
  buttons->addButton(u"取消"_qs, QDialogButtonBox::RejectRole);
  connect_->setDefault(true);
  demo->setAutoDefault(false);

  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(MakeSites(), 1);
  layout->addWidget(buttons);
  setMinimumWidth(LettersWide(*this, 84));

  connect(field_, &QLineEdit::textChanged, this, &ConnectDlg::Check);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(buttons, &QDialogButtonBox::accepted, this, [this] {
    choice_ = Choice::kAddress;
    accept();
  });
  connect(demo, &QPushButton::clicked, this, [this] {
    choice_ = Choice::kDemo;
    accept();
  });
  field_->selectAll();
  Check();
}

QWidget* ConnectDlg::MakeSites() {
  list_ = new QTreeWidget;
  list_->setObjectName("recentSites");
  list_->setHeaderLabels({u"站台"_qs, u"位址"_qs, u"帳號"_qs});
  list_->setRootIsDecorated(false);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setColumnWidth(kName, LettersWide(*this, 22));
  list_->setColumnWidth(kAddress, LettersWide(*this, 28));
  for (std::size_t i = 0; i < sites_.listed.size(); ++i)
    List(i);
  list_->setMinimumHeight(list_->fontMetrics().height() * 3 / 2 * kRowsInSight +
                          list_->header()->sizeHint().height());
  connect(list_, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
    if (item != nullptr) field_->setText(item->text(kAddress));
    ReviewButtons();
  });
  connect(list_, &QTreeWidget::itemDoubleClicked, connect_, &QPushButton::click);
  connect(list_, &QTreeWidget::itemChanged, this, &ConnectDlg::TakeEdit);

  auto* const whole = new QWidget;
  auto* const row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(list_, 1);
  row->addLayout(MakeSiteButtons());
  ReviewButtons();
  return whole;
}

QLayout* ConnectDlg::MakeSiteButtons() {
  auto* const buttons = new QVBoxLayout;
  const auto make = [&](const QString& text, const char* name, void (ConnectDlg::*action)()) {
    auto* const button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, action);
    buttons->addWidget(button);
    return button;
  };
  add_ = make(u"新增(&N)"_qs, "addSite", &ConnectDlg::AddSite);
  add_->setToolTip(u"把上面的位址列入，並取個名字"_qs);
  edit_ = make(u"編輯(&E)"_qs, "editSite", &ConnectDlg::EditSite);
  edit_->setToolTip(u"改名稱、位址或帳號：先點要改的那一格。有名稱或帳號的站台會一直留著"_qs);
  remove_ = make(u"移除(&R)"_qs, "removeSite", &ConnectDlg::RemoveSite);
  buttons->addStretch();
  const auto onKey = [this](int key, void (ConnectDlg::*action)()) {
    connect(new QShortcut(key, list_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
            action);
  };
  onKey(Qt::Key_F2, &ConnectDlg::EditSite);
  onKey(Qt::Key_Delete, &ConnectDlg::RemoveSite);
  return buttons;
}

QTreeWidgetItem* ConnectDlg::List(std::size_t index) {
  auto* const item = new QTreeWidgetItem;
  item->setData(kName, Qt::UserRole, QVariant::fromValue(index));
  item->setFlags(item->flags() | Qt::ItemIsEditable);
  Show(*item);
  list_->addTopLevelItem(item);
  return item;
}

// In words that are never taken for an edit.
void ConnectDlg::Show(QTreeWidgetItem& item) {
  const QSignalBlocker quiet(list_);
  const RecentSite& site = sites_.listed[IndexOf(item)];
  const QString address = QString::fromStdU16String(site.address);
  item.setText(kName, site.name.empty() ? BareAddress(address) : QString::fromStdU16String(site.name));
  item.setText(kAddress, address);
  item.setText(kAccount, QString::fromStdU16String(site.account));
}

std::size_t ConnectDlg::IndexOf(const QTreeWidgetItem& item) const {
  return item.data(kName, Qt::UserRole).value<std::size_t>();
}

void ConnectDlg::TakeEdit(QTreeWidgetItem* item, int column) {
  RecentSite& site = sites_.listed[IndexOf(*item)];
  RecentSite wanted = site;
  const QString text = item->text(column).trimmed();
  if (column == kName) wanted.name = text.toStdU16String();
  if (column == kAccount) wanted.account = text.toStdU16String();
  if (column == kAddress && !text.isEmpty() && ComplaintAbout(text).isEmpty())
    wanted.address = PlainAddress(text.toStdU16String());
  if (wanted != site && Keep(site, wanted)) site = wanted;
  Show(*item);
  if (item == list_->currentItem() && column == kAddress) field_->setText(item->text(kAddress));
}

bool ConnectDlg::Keep(const RecentSite& before, const RecentSite& site) {
  const bool isKept = sites_.keep && sites_.keep(before, site);
  if (!isKept)
    complaint_->setText(
        u"這樣記不下來：帳號和位址裡不能有空白或「=」，最多記 %1 個有名稱的站台。"_qs.arg(kMostNamedSites));
  return isKept;
}

// Under its address first, so that it stays where the user gives no other name.
void ConnectDlg::AddSite() {
  const QString address = QString::fromStdU16String(PlainAddress(Address().toStdU16String()));
  const RecentSite site{
      .address = address.toStdU16String(), .account = {}, .name = BareAddress(address).toStdU16String()};
  if (!Keep({}, site)) return;
  sites_.listed.push_back(site);
  QTreeWidgetItem* const item = List(sites_.listed.size() - 1);
  list_->setCurrentItem(item, kName);
  list_->editItem(item, kName);
}

void ConnectDlg::EditSite() {
  if (list_->currentItem() != nullptr) list_->editItem(list_->currentItem(), list_->currentColumn());
}

void ConnectDlg::RemoveSite() {
  const QTreeWidgetItem* const item = list_->currentItem();
  if (item == nullptr) return;
  const RecentSite site = sites_.listed[IndexOf(*item)];
  delete item;
  if (sites_.remove) sites_.remove(site);
  ReviewButtons();
}

void ConnectDlg::ReviewButtons() {
  for (QPushButton* button : {edit_, remove_})
    button->setEnabled(list_->currentItem() != nullptr);
}

const RecentSite* ConnectDlg::Site() const {
  const QTreeWidgetItem* const item = list_->currentItem();
  return item != nullptr && item->text(kAddress) == Address() ? &sites_.listed[IndexOf(*item)] : nullptr;
}

QString ConnectDlg::Address() const {
  return field_->text().trimmed();
}

void ConnectDlg::Check() {
  const QString complaint = ComplaintAbout(Address());
  complaint_->setText(complaint);
  const bool isAddress = complaint.isEmpty() && !Address().isEmpty();
  connect_->setEnabled(isAddress);
  add_->setEnabled(isAddress);
}

}  // namespace quillet
