// The login form's other side: fills it from what the user keeps, remembers what he wants remembered, sends
// the document to log in, and brings the form back with the reason when that came to nothing. The view owns
// it. User-interface thread.
#pragma once

#include <QObject>
#include <QPointer>

#include "app/login_form.h"
#include "app/quill_doc.h"

namespace quillet {

class LoginDesk : public QObject {
  Q_OBJECT

 public:
  // Both outlive the desk; the form lies over `view`.
  LoginDesk(CQuillDoc& doc, QWidget& view);
  ~LoginDesk() override;

  // Opens the form, or leaves it as it is when it is open. It has the keyboard then.
  void Show();
  // Gives the keyboard back to the view.
  void Close();
  bool IsOpen() const { return form_ != nullptr; }
  // Open, and nothing lies before it.
  bool IsShown() const { return form_ != nullptr && !covered_; }
  LoginForm* Form() const { return form_; }

  // A notice lies before the form until it is dismissed.
  void SetCovered(bool covered);
  // The view's size or the height of its rows, in widget units, is another.
  void Place(double unit);

 signals:
  // It was opened, closed, covered or uncovered.
  void Changed();
  void AddressRequested();
  void DemoRequested();

 private:
  void Open(const LoginEntry& entry, const LoginComplaint& complaint);
  // In the colours of the settings.
  void Dress();
  void Discard();
  void GiveKeyboard();

  // The site that the form leads to now.
  Site Aim() const;
  // What may be told to that site.
  QString KnownPassword() const;
  void ReviewPassword();
  // False when the password cannot be remembered; everything else is.
  bool Remember(const LoginEntry& entry);
  void KeepChosenSite(TransportKind kind);
  void WipePending();

  void LogIn();
  void ConnectOnly();
  void OnLoginEnded(const LoginEnd& end);

  CQuillDoc& doc_;
  QWidget& view_;
  QPointer<LoginForm> form_;
  bool covered_ = false;
  double unit_ = 0;
  Site aim_;  // where the form leads when its transport is left alone
  TransportKind proposed_ = TransportKind::kTelnet;
  // What was sent off, until the login has ended; its password is kept no longer.
  LoginEntry pending_;
};

}  // namespace quillet
