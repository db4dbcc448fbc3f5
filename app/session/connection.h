// The connection to a site as the program uses it: opens it, ends it, remembers where it leads and what has
// been seen on it, and tells whenever that is different. Waits for nothing: an attempt goes on with the
// screens that the session posts, which the view passes on. The document owns it. User-interface thread.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include <QObject>
#include <QString>

#include "app/session/kept_login.h"
#include "app/session/screen_witness.h"
#include "app/session/session_driver.h"
#include "app/session/session_facts.h"
#include "app/session/site.h"
#include "app/session/wiped_text.h"
#include "core/term_session.h"

namespace quillet {

class Connection : public QObject {
  Q_OBJECT

 public:
  // What the user calls the site of an address; may be empty.
  using Naming = std::function<QString(const QString& address)>;

  // What tells whether two sites are the same: SiteKey.
  using Keying = std::function<std::u16string(const Site& site)>;
  // What a host with a key is asked when an attempt begins; may be empty.
  using HostAsking = std::function<HostKeyQuestion(const std::string& host)>;

  // Both references outlive the object.
  Connection(TermSession& session, SessionDriver& driver, Naming nameOf, Keying keyOf,
             HostAsking askHost = {});

  // Begins to connect; AttemptEnded follows with `login` (null: none), or LoginDropped when another site is
  // wanted before that. An attempt that goes on is ended first.
  void Open(Site site, LoginOrder login = nullptr);
  // To the same site. The bytes that the connection before this one has not sent are not forgotten.
  void Reconnect(LoginOrder login);
  // Ends the connection, or asks the attempt to make one to end.
  void Disconnect();
  // The user has logged out: the connection will be closed after what was sent last has had time to leave.
  void DisconnectAfterSending();
  // The user is on his way out, or not any more: whoever hangs up first meanwhile, he has ended it.
  void NoteLeaving() { leaving_ = true; }
  void NoteStaying() { leaving_ = false; }

  bool IsConnecting() const { return connecting_; }
  // The attempt that is wanted is for a login.
  bool WillLogIn() const { return WantedLogin() != nullptr; }
  const LoginOrder& WantedLogin() const { return next_ ? next_->login : login_; }
  // The attempt is over, and has made it.
  bool IsConnected() const { return !connecting_ && session_.state == SessionState::kConnected; }
  // There was one, and it has ended.
  bool IsClosed() const { return !connecting_ && session_.state == SessionState::kClosed; }
  // The last one given to Open.
  const Site& CurrentSite() const { return site_; }
  SessionFacts Facts() const;
  // Up to the screen that the view took last.
  const Sightings& Seen() const { return seen_; }
  // What to send with, and what crosses the threads.
  TermSession& Session() { return session_; }
  const TermSession& Session() const { return session_; }

  // A screen with this reason has reached the view, and what has been seen up to it.
  void OnScreen(ScreenReason reason, Sightings seen);
  // The login has succeeded, or has at least typed its id.
  void KeepLogin(const LoginOrder& login);
  // The site refuses it.
  void ForgetLogin() { kept_.Forget(); }
  // Whatever has become of the one that AttemptEnded told of.
  void NoteLoginOver() { underWay_.reset(); }
  // What has succeeded at this site since the user left it last; null when there is none.
  LoginOrder LoginKept() const;
  // What he would log in with here once more: what is on its way, else what is kept.
  LoginOrder LoginAgain() const;
  // It is known without a screen who is logged in.
  void NoteLogin(const std::u16string& id);
  // The bytes that lost connections before this one have not sent, which are counted no longer.
  std::size_t TakeUnsentBefore() { return std::exchange(unsentBefore_, 0); }
  // Whether something that the user follows is new.
  void NoteNews(bool news);
  // Something has happened that the user, who is elsewhere, should know of: each is signalled.
  void CallUser(SignalSound sound);
  // He is here.
  void NoteUserHere();

 signals:
  // Before the connection is ended by the user, or replaced: nothing may go on using it.
  void AboutToEnd();
  // A connection is about to be made: nothing of the one before counts any more.
  void ConnectionBegins();
  // The site was reached, even if it is gone again. Before AttemptEnded.
  void SiteReached();
  // Connected or not.
  void AttemptEnded(const LoginOrder& login);
  // The connection, or the attempt to make one, has ended: once for each, after AttemptEnded.
  void Ended(const ConnectionEnd& end);
  // The user wants another site than the one that this was for.
  void LoginDropped(const LoginOrder& login);
  // State, status or title are different from before.
  void StatusChanged();
  // The user has pushed the article.
  void PushSeen(const ArticleInfo& article);

 private:
  struct Attempt {
    Site site;
    LoginOrder login;
    bool again = false;  // in place of the connection before
  };
  void Request(Attempt attempt);
  void Begin(Attempt attempt);
  // Whatever belongs to one connection and not to the next.
  void Reset();
  void StartConnect(bool autoLogin);
  void StopAttempt();
  // Goes on when the attempt has ended.
  void Review();
  bool WasMade() const;
  // The user has ended it, whoever hung up.
  bool HasLeft() const;
  void TellEnd();
  void NoteStatus();

  TermSession& session_;
  SessionDriver& driver_;
  const Naming nameOf_;
  const Keying keyOf_;
  const HostAsking askHost_;
  Site site_;
  LoginOrder login_;             // of the attempt that goes on; null: none
  LoginOrder underWay_;          // of the connection that is there, until it is over
  std::optional<Attempt> next_;  // once that has ended
  Sightings seen_;
  KeptLogin kept_;
  std::size_t unsentBefore_ = 0;
  bool connecting_ = false;
  bool stopping_ = false;  // the attempt has been told to end
  bool leaving_ = false;
  bool endTold_ = true;
};

}  // namespace quillet
