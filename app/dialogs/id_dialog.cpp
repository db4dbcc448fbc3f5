#include "app/dialogs/id_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "settings/dialog/dialog_room.h"

namespace quillet {

IdDlg::IdDlg(const QString& proposed, QWidget* parent) : QDialog(parent), field_(new QLineEdit(proposed)) {
  setWindowTitle(u"加入名單"_qs);
  // What a line of the lists' file holds as an id, and longer than any BBS gives.
  field_->setValidator(new QRegularExpressionValidator(QRegularExpression("[^\\s=]{1,40}"), field_));
  field_->selectAll();
  auto* const form = new QFormLayout;
  form->addRow(u"使用者代號(&I)："_qs, field_);
  auto* const buttons = new QDialogButtonBox;
  ok_ = buttons->addButton(u"繼續"_qs, QDialogButtonBox::AcceptRole);
  buttons->addButton(u"取消"_qs, QDialogButtonBox::RejectRole);
  ok_->setDefault(true);
  ok_->setEnabled(field_->hasAcceptableInput());
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addStretch();
  layout->addWidget(buttons);
  setMinimumWidth(LettersWide(*this, 44));

  connect(field_, &QLineEdit::textChanged, this, [this] { ok_->setEnabled(field_->hasAcceptableInput()); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

}  // namespace quillet
