#include "app/session/connection.h"

#include <utility>

#include <QTimer>

#include "core/transport/ssh_transport.h"

namespace quillet {
namespace {

// Enough for the sender thread to hand a few bytes to the system, too short to be noticed.
constexpr int kFarewellMs = 100;

}  // namespace

Connection::Connection(TermSession& session, SessionDriver& driver, Naming nameOf, Keying keyOf,
                       HostAsking askHost)
    : session_(session),
      driver_(driver),
      nameOf_(std::move(nameOf)),
      keyOf_(std::move(keyOf)),
      askHost_(std::move(askHost)) {}

// ---- Beginning

void Connection::Open(Site site, LoginOrder login) {
  kept_.OnSite(keyOf_(site));
  // Of somebody who is about to be known better.
  if (login) kept_.Forget();
  Request({.site = std::move(site), .login = std::move(login)});
}

void Connection::Reconnect(LoginOrder login) {
  Request({.site = next_ ? next_->site : site_, .login = std::move(login), .again = true});
}

void Connection::Request(Attempt attempt) {
  if (HasLeft()) kept_.Forget();
  if (!connecting_) return Begin(std::move(attempt));
  const LoginOrder dropped = std::exchange(next_ ? next_->login : login_, nullptr);
  next_ = std::move(attempt);
  if (dropped) emit LoginDropped(dropped);
  StopAttempt();
}

void Connection::Begin(Attempt attempt) {
  connecting_ = true;
  login_ = std::move(attempt.login);
  emit AboutToEnd();
  // Only what has ended knows how much it has not sent.
  session_.Disconnect();
  unsentBefore_ = attempt.again ? unsentBefore_ + session_.UnsentBytes() : 0;
  Reset();
  site_ = std::move(attempt.site);
  if (site_.name.isEmpty()) site_.name = nameOf_(site_.address);
  emit ConnectionBegins();
  StartConnect(login_ != nullptr);
  NoteStatus();
}

void Connection::Reset() {
  stopping_ = false;
  leaving_ = false;
  endTold_ = false;
  seen_ = {};
  driver_.ForgetTyped();
}

void Connection::StartConnect(bool autoLogin) {
  ConnectTraits traits{.isBbs = site_.isBbs, .autoLogin = autoLogin};
  if (site_.makeTransport) return session_.StartConnectWith(site_.makeTransport(), traits);
  const std::string address = site_.address.toStdString();
  const SiteAddress host = ParseSiteAddress(address).address;
  if (askHost_ && host.kind == TransportKind::kSsh)
    traits.hostKey = askHost_(std::string(HostForLookup(host.host)));
  session_.StartConnect(address, traits);
}

// Until the session says that it has ended, all of the attempt's screens may still be on their way.
void Connection::StopAttempt() {
  stopping_ = true;
  session_.RequestDisconnect(session_.connectionNumber);
  QMetaObject::invokeMethod(this, &Connection::Review, Qt::QueuedConnection);
}

void Connection::Review() {
  const bool goesOn =
      stopping_ ? session_.state != SessionState::kClosed : session_.state == SessionState::kConnecting;
  if (!connecting_ || goesOn) return;
  if (next_) return Begin(*std::exchange(next_, std::nullopt));
  connecting_ = false;
  stopping_ = false;
  const LoginOrder login = std::exchange(login_, nullptr);
  NoteStatus();
  underWay_ = login;
  if (WasMade()) emit SiteReached();
  emit AttemptEnded(login);
  if (IsClosed()) TellEnd();
}

bool Connection::WasMade() const {
  return IsConnected() || (session_.WasConnected() && session_.LastEnd().reason != EndReason::kClosedByUser);
}

// ---- Ending

void Connection::Disconnect() {
  if (const auto dropped = std::exchange(next_, std::nullopt); dropped && dropped->login)
    emit LoginDropped(dropped->login);
  emit AboutToEnd();
  if (connecting_)
    StopAttempt();
  else
    session_.Disconnect();
  NoteStatus();
}

void Connection::DisconnectAfterSending() {
  leaving_ = true;
  QTimer::singleShot(kFarewellMs, this, [this, connection = session_.connectionNumber.load()] {
    if (connection == session_.connectionNumber && !connecting_) Disconnect();
  });
}

// ---- What is known of it

SessionFacts Connection::Facts() const {
  TransportEnd end = session_.LastEnd();
  if (HasLeft() && end.reason == EndReason::kClosedByPeer) end.reason = EndReason::kClosedByUser;
  return {.state = connecting_ ? SessionState::kConnecting : session_.state.load(),
          .siteName = site_.ShownName(),
          .host = QString::fromStdString(session_.host),
          // The address's own port is none of SSH's.
          .port = session_.kind == TransportKind::kSsh ? QString::number(kSshPort)
                                                       : QString::fromStdString(session_.port),
          .isRecording = site_.isRecording,
          .end = std::move(end),
          .farewell = seen_.farewell,
          .unsentBytes = session_.UnsentBytes() + unsentBefore_};
}

void Connection::OnScreen(ScreenReason reason, Sightings seen) {
  const bool another = reason != ScreenReason::kUpdated || seen.loginId != seen_.loginId;
  kept_.OnUser(seen.loginId);
  const std::vector<ArticleInfo> pushed = std::exchange(seen.pushed, {});
  seen_ = std::move(seen);
  Review();
  if (reason == ScreenReason::kDisconnected && IsClosed()) TellEnd();
  if (another) NoteStatus();
  for (const ArticleInfo& article : pushed)
    emit PushSeen(article);
}

bool Connection::HasLeft() const {
  return leaving_ || (seen_.farewell == Farewell::kLoggedOut && session_.state == SessionState::kClosed);
}

void Connection::TellEnd() {
  if (std::exchange(endTold_, true)) return;
  if (HasLeft()) kept_.Forget();
  emit Ended({.reason = session_.LastEnd().reason,
              .farewell = seen_.farewell,
              .wasMade = WasMade(),
              .isWished = HasLeft()});
}

// ---- Who is logged in

void Connection::KeepLogin(const LoginOrder& login) {
  kept_.Keep(login, keyOf_(site_));
}

LoginOrder Connection::LoginAgain() const {
  if (const LoginOrder& wanted = WantedLogin()) return wanted;
  return underWay_ ? underWay_ : LoginKept();
}

LoginOrder Connection::LoginKept() const {
  return HasLeft() ? nullptr : kept_.For(keyOf_(next_ ? next_->site : site_));
}

void Connection::NoteLogin(const std::u16string& id) {
  seen_.loginId = id;
  NoteStatus();
}

void Connection::NoteNews(bool news) {
  if (driver_.ListHit() == news) return;
  driver_.SetListHit(news);
  NoteStatus();
}

void Connection::CallUser(SignalSound sound) {
  if (driver_.HasAttention()) return driver_.Signal(sound);
  driver_.SetAttention(true, sound);
  NoteStatus();
}

void Connection::NoteUserHere() {
  if (!driver_.HasAttention()) return;
  driver_.SetAttention(false);
  NoteStatus();
}

void Connection::NoteStatus() {
  driver_.UpdateStatus();
  emit StatusChanged();
}

}  // namespace quillet
