// Asks for a site's address, or offers the demo BBS. User-interface thread.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quillet {

class ConnectDlg : public QDialog {
  Q_OBJECT

 public:
  enum class Choice { kNone, kAddress, kDemo };

  // `address` is what stands in the field at first.
  explicit ConnectDlg(const QString& address, QWidget* parent = nullptr);

  // kNone until the dialog was accepted.
  Choice Chosen() const { return choice_; }
  // Without blanks around it.
  QString Address() const;

 private:
  // Says what is wrong with the address; an empty field is only not acceptable yet.
  void Check();

  QLineEdit* field_;
  QLabel* complaint_;
  QPushButton* connect_;
  Choice choice_ = Choice::kNone;
};

}  // namespace quillet
