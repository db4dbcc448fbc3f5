// The login form over the middle of the terminal: a part of the view, not a window of its own. Shows what it
// is filled with and says what the user wants; keeps nothing once it is gone. User-interface thread.
#pragma once

#include <vector>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include "app/dialogs/site_choice.h"
#include "app/messages/session_messages.h"
#include "app/overlay/form_style.h"

namespace quillet {

// What stands in the form, when it opens and when it is sent off.
struct LoginEntry {
  TransportKind kind = TransportKind::kTelnet;
  QString account;
  QString password;
  bool rememberAccount = false;
  bool rememberPassword = false;  // never without the account
  bool kickOthers = false;
};

// One of the sites to choose from.
struct OfferedSite {
  QString address;
  QString account;  // whose name it stands under; empty: whoever is remembered there
  QString name;     // empty: its address, behind the account
};

class LoginForm : public QWidget {
  Q_OBJECT

 public:
  // Where the form leads.
  struct Aim {
    LoginSites ways;
    // The name to show instead of an address; empty: the address itself.
    QString siteName;
    QString namedAddress;
  };
  struct Contents {
    Aim aim;
    LoginEntry entry;
    LoginComplaint complaint;
  };
  // In the usual colours; SetColours changes them.
  LoginForm(const Contents& contents, QWidget* parent);

  // Lays itself over the middle of its parent; `unit` is the height of the terminal's rows there, in widget
  // units.
  void Place(double unit);
  // The form looks like the panel of the window, which may be in disguise.
  void SetColours(const LoginFormColours& colours);
  void Complain(const LoginComplaint& complaint);
  // Leads elsewhere from now on; AimChanged is not emitted.
  void SetAim(const Aim& aim);
  // The first is the one that the form leads to. Nothing is shown where there is no other.
  void OfferSites(const std::vector<OfferedSite>& sites);
  // An account of the user's, and what is remembered of it.
  void ProposeAccount(const LoginEntry& entry);
  // A password that the user has not typed himself; it is never shown in clear.
  void ProposePassword(const QString& password);
  // The user has changed what was proposed.
  bool PasswordTouched() const { return passwordTouched_; }
  void RememberPassword(bool on) { rememberPassword_->setChecked(on); }

  LoginEntry Entry() const;
  const QString& Address() const;
  // The field that has the keyboard, or will have it.
  QWidget* FirstField() const;

 signals:
  void LoginRequested();
  void ConnectRequested();  // without a login
  void AddressRequested();
  void DemoRequested();
  void Dismissed();
  // Which site or account it is about to be has changed.
  void AimChanged();
  // By their place among those that are offered.
  void SiteChosen(int index);
  void SiteRemoved(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  void MakeControls(const Contents& contents);
  void FillTransports();
  void NameControls();
  void Arrange();
  void StyleControls();
  void Connect();
  void ShowSite();
  void Submit();
  void SetPasswordShown(bool shown);
  void ShowRecent(bool shown);

  Aim aim_;
  bool offersSites_ = false;
  bool passwordTouched_ = false;
  const LoginFormColours* colours_;
  double unit_ = 0;
  double accentHeight_ = 0;

  QLabel* title_;
  QLabel* site_;
  QLabel* complaint_;
  QLabel* detail_;
  QLabel* recentLabel_;
  QComboBox* recent_;
  QPushButton* removeSite_;
  QComboBox* transport_;
  QLineEdit* account_;
  QLineEdit* password_;
  QPushButton* showPassword_;
  QCheckBox* rememberAccount_;
  QCheckBox* rememberPassword_;
  QCheckBox* kickOthers_;
  QPushButton* logIn_;
  QPushButton* connect_;
  QPushButton* address_;
  QPushButton* demo_;
  std::vector<QWidget*> tabOrder_;
};

}  // namespace quillet
