// The help page: every command with its keys, and what keys do on the pages, found by typing. User-interface
// thread.
#pragma once

#include <vector>

#include <QDialog>
#include <QLineEdit>
#include <QTextBrowser>

#include "input/commands/command_help.h"

namespace quillet {

class KeysDlg : public QDialog {
  Q_OBJECT

 public:
  explicit KeysDlg(std::vector<HelpGroup> groups, QWidget* parent = nullptr);

 protected:
  // The keyboard is the field's; what moves through a page moves through the page.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Show(const QString& wanted);

  const std::vector<HelpGroup> groups_;
  QLineEdit* wanted_;
  QTextBrowser* text_;
};

}  // namespace quillet
