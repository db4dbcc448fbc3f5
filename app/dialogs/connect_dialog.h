// Asks for a site's address, offering the demo BBS and the sites that the user has named or been to. He can
// name them there, give them an account, add and remove some. User-interface thread.
#pragma once

#include <functional>
#include <vector>

#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

#include "settings/recent_sites.h"

namespace quillet {

class ConnectDlg : public QDialog {
  Q_OBJECT

 public:
  enum class Choice { kNone, kAddress, kDemo };

  // The user's sites, and what is done at once with what he changes, however the dialog ends.
  struct Sites {
    std::vector<RecentSite> listed;
    // As KeepSite.
    std::function<bool(const RecentSite& before, const RecentSite& site)> keep;
    std::function<void(const RecentSite& site)> remove;
  };
  // `address` is what stands in the field at first.
  explicit ConnectDlg(const QString& address, Sites sites = {}, QWidget* parent = nullptr);

  // kNone until the dialog was accepted.
  Choice Chosen() const { return choice_; }
  // Without blanks around it.
  QString Address() const;
  // The list's site whose address stands in the field; null where there is none.
  const RecentSite* Site() const;

 private:
  QWidget* MakeSites();
  QLayout* MakeSiteButtons();
  QTreeWidgetItem* List(std::size_t index);
  void Show(QTreeWidgetItem& item);
  std::size_t IndexOf(const QTreeWidgetItem& item) const;
  void TakeEdit(QTreeWidgetItem* item, int column);
  // Returns whether `site` is kept now.
  bool Keep(const RecentSite& before, const RecentSite& site);
  void AddSite();
  void EditSite();
  void RemoveSite();
  void ReviewButtons();
  // Says what is wrong with the address; an empty field is only not acceptable yet.
  void Check();

  QLineEdit* field_;
  QLabel* complaint_;
  QPushButton* connect_;
  Sites sites_;  // an item knows its number
  QTreeWidget* list_;
  QPushButton* add_;
  QPushButton* edit_;
  QPushButton* remove_;
  Choice choice_ = Choice::kNone;
};

}  // namespace quillet
