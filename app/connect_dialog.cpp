#include "app/connect_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QVBoxLayout>

#include "core/site_address.h"
#include "settings/dialog/dialog_room.h"

namespace quillet {
namespace {

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

ConnectDlg::ConnectDlg(const QString& address, QWidget* parent)
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

QString ConnectDlg::Address() const {
  return field_->text().trimmed();
}

void ConnectDlg::Check() {
  const QString complaint = ComplaintAbout(Address());
  complaint_->setText(complaint);
  connect_->setEnabled(complaint.isEmpty() && !Address().isEmpty());
}

}  // namespace quillet
