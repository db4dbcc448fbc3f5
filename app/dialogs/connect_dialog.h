// Asks for a site's address, offering the sites that the user has been to, which he can name and remove
// there, or the demo BBS. User-interface thread.
#pragma once

#include <vector>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

#include "settings/recent_sites.h"

namespace quillet {

class ConnectDlg : public QDialog {
  Q_OBJECT

 public:
  enum class Choice { kNone, kAddress, kDemo };

  // `address` is what stands in the field at first.
  explicit ConnectDlg(const QString& address, const std::vector<RecentSite>& recent = {},
                      QWidget* parent = nullptr);

  // kNone until the dialog was accepted.
  Choice Chosen() const { return choice_; }
  // Without blanks around it.
  QString Address() const;

 signals:
  // At once, however the dialog ends; the name may be empty.
  void SiteNamed(const QString& address, const QString& name);
  void SiteRemoved(const QString& address);

 private:
  QWidget* MakeRecent(const std::vector<RecentSite>& recent);
  void RemoveSite();
  void ReviewButtons();
  // Says what is wrong with the address; an empty field is only not acceptable yet.
  void Check();

  QLineEdit* field_;
  QLabel* complaint_;
  QPushButton* connect_;
  QTreeWidget* recent_ = nullptr;  // null where there are none
  QPushButton* name_ = nullptr;
  QPushButton* remove_ = nullptr;
  Choice choice_ = Choice::kNone;
};

}  // namespace quillet
