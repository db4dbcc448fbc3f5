// The login form's other side: fills it from what the user keeps for the site, sends the document to log in,
// remembers what he wants remembered once that has succeeded, and brings the form back with the reason when
// it came to nothing. The view owns it. User-interface thread.
#pragma once

#include <memory>

#include <QObject>
#include <QPointer>

#include "app/dialogs/leave_question.h"
#include "app/dialogs/login_form.h"
#include "app/document/user_settings.h"
#include "app/overlay/overlay.h"
#include "app/session/automations.h"
#include "app/session/connection.h"
#include "settings/account_store.h"

namespace quillet {

class LoginController : public QObject, public Overlay {
  Q_OBJECT

 public:
  // All outlive the object; the form lies over `view`.
  struct Parts {
    Connection& connection;
    const Automations& automations;
    UserSettings& settings;
    AccountStore& account;
    const Endpoints& hosts;
    LeaveQuestion& leaving;
    QWidget& view;
  };
  explicit LoginController(const Parts& parts);
  ~LoginController() override;

  // Opens the form, or leaves it as it is when it is open. It has the keyboard then.
  void Show();
  // The same for one of the user's sites, with the account that it has.
  void ShowFor(const RecentSite& site);
  // Gives the keyboard back to the view.
  void Close();
  bool IsOpen() const { return form_ != nullptr; }
  // Open, and nothing lies before it.
  bool IsShown() const { return form_ != nullptr && !covered_; }
  LoginForm* Form() const { return form_; }

  // A notice lies before the form until it is dismissed.
  void SetCovered(bool covered);
  void Place(const OverlayPlace& place) override;
  bool KeepsMouse() const override { return IsShown(); }
  // The terminal around the form is dimmed.
  QRectF Bounds(const OverlayPlace& place) const override;
  void Paint(QPainter& painter, const OverlayPlace& place) override;

 signals:
  // It was opened, closed, covered or uncovered.
  void Changed();
  // What is remembered has been written or removed, if the registry took it.
  void AccountWritten();
  void AddressRequested();
  // With a login, or null.
  void DemoRequested(const quillet::LoginOrder& login, quillet::TransportKind way);

 private:
  void Open(const LoginEntry& entry, const LoginComplaint& complaint);
  // With what is remembered for it.
  void OpenAtAim();
  // In the colours of the settings.
  void ApplyColours();
  void Discard();
  void GiveKeyboard();

  Site SiteAt(const QString& address) const;
  LoginForm::Aim WaysTo(const Site& site) const;
  // By what name the account of a site is kept: the one that was chosen with it, else the site's own.
  std::u16string KeyOf(const Site& site) const;
  // The password that is kept for an account of that key's site.
  QString PasswordOf(const std::u16string& key, const QString& account);
  // That of the site that the form leads to now.
  std::u16string AimKey() const { return KeyOf(SiteAt(form_->Address())); }

  // What is remembered for a site.
  LoginEntry Remembered(const std::u16string& key);
  // Another account or site has been chosen in the form.
  void OnAimChanged();
  void ReviewPassword();
  void ChooseSite(int index);
  void AimAt(const OfferedSite& site);
  void RemoveSite(int index);
  void OfferSites();
  // What the user no longer wants remembered is forgotten when he is done with the form, whatever comes.
  void NoteUnticking();
  void Remember(const LoginEntry& entry, const std::u16string& key);

  // Notes what a login at the site of that key is sent off with; null when its password cannot be remembered.
  LoginOrder MakeOrder(const std::u16string& key, const LoginEntry& entry);
  void LogIn();
  void ConnectOnly();
  void GoToDemo();
  // A login there has come to nothing.
  void AimAtCurrentSite();
  void OnLoginEnded(const LoginEnd& end);

  const Parts parts_;
  QPointer<LoginForm> form_;
  bool covered_ = false;
  double unit_ = 0;
  Site aim_;  // where the form leads when its transport is left alone
  // Whose login that is, where an account was chosen with the site; its host's other ways are for it too.
  QString account_;
  std::vector<OfferedSite> offered_;
  // What was proposed, for which site: the difference to what is in the form is the user's doing.
  LoginEntry proposed_;
  std::u16string proposedFor_;
  // What was sent off, and for which site, until the login has ended; its password is kept no longer.
  LoginEntry pending_;
  std::u16string pendingFor_;
  std::weak_ptr<const LoginRequest> sent_;
};

}  // namespace quillet
