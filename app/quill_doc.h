// The document: owns the session with its classifier and driver, and the settings; opens and closes the
// connection without ever blocking the window. User-interface thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QObject>
#include <QString>

#include "app/message_target.h"
#include "app/session_driver.h"
#include "app/session_words.h"
#include "bbs/screen_classifier.h"
#include "core/term_session.h"
#include "settings/display_settings.h"

namespace quillet {

// Where to connect to.
struct Site {
  QString address;
  QString name;  // shown instead of the address when not empty
  // Makes the transport when the address does not: a recording, a test's script.
  std::function<std::unique_ptr<Transport>()> makeTransport;

  const QString& ShownName() const { return name.isEmpty() ? address : name; }
};

class CQuillDoc : public QObject {
  Q_OBJECT

 public:
  // The character tables must have been loaded. `signaller` outlives the document.
  CQuillDoc(Endpoints endpoints, Signaller& signaller);
  ~CQuillDoc() override;

  // Connects, and returns when the attempt has ended; events go on being handled meanwhile. Called again from
  // within, it ends the attempt and starts over with the new site.
  void Open(Site site);
  void Reconnect();
  // Ends the connection or the attempt to make one.
  void Disconnect();
  // The user has logged out: the connection will be closed after what was sent last has had time to leave.
  void DisconnectAfterSending();
  bool IsConnecting() const { return connecting_; }
  bool IsConnected() const { return session_.state == kStateConnected; }

  SessionFacts Facts() const;
  // "site - Quillet", with what the user should know of its state.
  QString Title() const;

  TermSession& Session() { return session_; }
  SessionDriver& Driver() { return driver_; }
  MessageTarget& Messages() { return messages_; }
  const PageTests& Pages() const { return classifier_.Pages(); }
  const DisplaySettings& Display() const { return display_; }
  const Endpoints& Hosts() const { return endpoints_; }

  // A screen with this reason has reached the view.
  void OnScreen(ScreenReason reason);

 signals:
  // State, status or title are different from before.
  void StatusChanged();

 private:
  void RunConnect();
  void NoteStatus();

  Endpoints endpoints_;
  DisplaySettings display_;
  SignalSettings signalSettings_;
  ScreenClassifier classifier_;
  // Before the session: its threads post here until it is gone.
  MessageTarget messages_;
  TermSession session_;
  SessionDriver driver_;
  Site site_;
  std::optional<Site> next_;
  bool connecting_ = false;
  bool giveUp_ = false;
  bool leaving_ = false;      // the user logged out: whoever hangs up first, he ended it
  unsigned connections_ = 0;  // made so far; tells a late timer that its connection is gone
};

}  // namespace quillet
