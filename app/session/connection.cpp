#include "app/session/connection.h"

#include <utility>

#include <QTimer>

#include "core/transport/ssh_transport.h"

namespace quillet {
namespace {

// Enough for the sender thread to hand a few bytes to the system, too short to be noticed.
constexpr int kFarewellMs = 100;

}  // namespace

Connection::Connection(TermSession& session, SessionDriver& driver, Naming nameOf)
    : session_(session), driver_(driver), nameOf_(std::move(nameOf)) {}

// ---- Beginning

void Connection::Open(Site site, LoginOrder login) {
  Attempt attempt{std::move(site), std::move(login)};
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
  seen_ = {};
  driver_.ForgetTyped();
}

void Connection::StartConnect(bool autoLogin) {
  const ConnectTraits traits{.isBbs = site_.isBbs, .autoLogin = autoLogin};
  if (site_.makeTransport)
    session_.StartConnectWith(site_.makeTransport(), traits);
  else
    session_.StartConnect(site_.address.toStdString(), traits);
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
  if (WasMade()) emit SiteReached();
  emit AttemptEnded(login);
}

bool Connection::WasMade() const {
  const EndReason end = session_.LastEnd().reason;
  return IsConnected() || end == EndReason::kClosedByPeer || end == EndReason::kReadFailed;
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
  if (leaving_ && end.reason == EndReason::kClosedByPeer) end.reason = EndReason::kClosedByUser;
  return {.state = connecting_ ? SessionState::kConnecting : session_.state.load(),
          .siteName = site_.ShownName(),
          .host = QString::fromStdString(session_.host),
          // The address's own port is none of SSH's.
          .port = session_.kind == TransportKind::kSsh ? QString::number(kSshPort)
                                                       : QString::fromStdString(session_.port),
          .isRecording = site_.makeTransport != nullptr,
          .end = std::move(end),
          .unsentBytes = session_.UnsentBytes()};
}

void Connection::OnScreen(ScreenReason reason, Sightings seen) {
  const bool another = reason != ScreenReason::kUpdated || seen.loginId != seen_.loginId;
  const std::vector<ArticleInfo> pushed = std::exchange(seen.pushed, {});
  seen_ = std::move(seen);
  Review();
  if (another) NoteStatus();
  for (const ArticleInfo& article : pushed)
    emit PushSeen(article);
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
