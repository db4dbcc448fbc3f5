// Asks for the id of a user of the BBS. User-interface thread.
#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

namespace quillet {

class IdDlg : public QDialog {
  Q_OBJECT

 public:
  // `proposed` is what stands in the field at first.
  explicit IdDlg(const QString& proposed, QWidget* parent = nullptr);

  // Not empty once the dialog was accepted; fit for a line of the lists' file.
  QString Id() const { return field_->text(); }

 private:
  QLineEdit* field_;
  QPushButton* ok_;
};

}  // namespace quillet
