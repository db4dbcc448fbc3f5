// The help page: which key gives which command. User-interface thread.
#pragma once

#include <vector>

#include <QDialog>

#include "input/commands/command_help.h"

namespace quillet {

class KeysDlg : public QDialog {
  Q_OBJECT

 public:
  explicit KeysDlg(const std::vector<HelpGroup>& groups, QWidget* parent = nullptr);
};

}  // namespace quillet
