#include "app/dialogs/connect_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QShortcut>
#include <QVBoxLayout>

#include "core/site_address.h"
#include "settings/dialog/dialog_room.h"

namespace quillet {
namespace {

enum Column { kName, kAddress };  // of the recent sites

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

ConnectDlg::ConnectDlg(const QString& address, const std::vector<RecentSite>& recent, QWidget* parent)
    : QDialog(parent), field_(new QLineEdit(address)), complaint_(new QLabel) {
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
  if (!recent.empty()) layout->addWidget(MakeRecent(recent), 1);
  layout->addStretch();
  layout->addWidget(buttons);
  setMinimumWidth(LettersWide(*this, 70));

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

QWidget* ConnectDlg::MakeRecent(const std::vector<RecentSite>& recent) {
  recent_ = new QTreeWidget;
  recent_->setObjectName("recentSites");
  recent_->setHeaderLabels({u"最近的站台"_qs, u"位址"_qs});
  recent_->setRootIsDecorated(false);
  recent_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  for (const RecentSite& site : recent) {
    const QString address = QString::fromStdU16String(site.address);
    const QString name = QString::fromStdU16String(site.name);
    auto* const item = new QTreeWidgetItem(recent_, {name.isEmpty() ? BareAddress(address) : name, address});
    item->setFlags(item->flags() | Qt::ItemIsEditable);
  }
  recent_->setColumnWidth(kName, LettersWide(*this, 28));
  recent_->setMinimumHeight(recent_->sizeHintForRow(0) * static_cast<int>(kMostRecentSites) +
                            recent_->header()->sizeHint().height() + 2 * recent_->frameWidth());
  connect(recent_, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
    if (item != nullptr) field_->setText(item->text(kAddress));
    ReviewButtons();
  });
  connect(recent_, &QTreeWidget::itemDoubleClicked, connect_, &QPushButton::click);
  connect(recent_, &QTreeWidget::itemChanged, this, [this](const QTreeWidgetItem* item) {
    const QString name = item->text(kName).trimmed();
    emit SiteNamed(item->text(kAddress), name == BareAddress(item->text(kAddress)) ? QString() : name);
  });

  name_ = new QPushButton(u"命名(&N)"_qs);
  name_->setObjectName("nameSite");
  remove_ = new QPushButton(u"移除(&R)"_qs);
  remove_->setObjectName("removeSite");
  const auto nameSite = [this] {
    if (recent_->currentItem() != nullptr) recent_->editItem(recent_->currentItem(), kName);
  };
  connect(name_, &QPushButton::clicked, this, nameSite);
  connect(remove_, &QPushButton::clicked, this, &ConnectDlg::RemoveSite);
  const auto onKey = [this](int key, const auto& action) {
    connect(new QShortcut(key, recent_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
            action);
  };
  onKey(Qt::Key_F2, nameSite);
  onKey(Qt::Key_Delete, [this] { RemoveSite(); });

  auto* const buttons = new QVBoxLayout;
  for (QPushButton* button : {name_, remove_}) {
    button->setAutoDefault(false);
    buttons->addWidget(button);
  }
  buttons->addStretch();
  auto* const whole = new QWidget;
  auto* const row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(recent_, 1);
  row->addLayout(buttons);
  ReviewButtons();
  return whole;
}

void ConnectDlg::RemoveSite() {
  const QTreeWidgetItem* const item = recent_->currentItem();
  if (item == nullptr) return;
  const QString address = item->text(kAddress);
  delete item;
  emit SiteRemoved(address);
  ReviewButtons();
}

void ConnectDlg::ReviewButtons() {
  for (QPushButton* button : {name_, remove_})
    button->setEnabled(recent_->currentItem() != nullptr);
}

QString ConnectDlg::Address() const {
  return field_->text().trimmed();
}

void ConnectDlg::Check() {
  const QString complaint = ComplaintAbout(Address());
  complaint_->setText(complaint);
  connect_->setEnabled(complaint.isEmpty() && !Address().isEmpty());
}

}  // namespace quillet
