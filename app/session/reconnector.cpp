#include "app/session/reconnector.h"

#include <algorithm>
#include <utility>

#include "platform/clock.h"

namespace quillet {
namespace {

// The seconds turn when they turn, as far as one can see.
constexpr int kTickMs = 100;
constexpr std::int64_t kSecondMs = 1000;

Reconnector::Parts WithClock(Reconnector::Parts parts) {
  if (!parts.clock) parts.clock = SteadyMilliseconds;
  return parts;
}

}  // namespace

Reconnector::Reconnector(Parts parts) : parts_(WithClock(std::move(parts))) {
  tick_.setInterval(kTickMs);
  connect(&tick_, &QTimer::timeout, this, &Reconnector::OnTick);
  // Whatever else ends a connection or begins one is the user's doing.
  connect(&parts_.connection, &Connection::AboutToEnd, this, [this] {
    if (!isMaking_) Stop();
  });
  connect(&parts_.connection, &Connection::ConnectionBegins, this, [this] { loginBroken_ = false; });
  connect(&parts_.connection, &Connection::AttemptEnded, this, &Reconnector::OnAttemptEnded);
  connect(&parts_.connection, &Connection::Ended, this, &Reconnector::OnEnded);
  connect(&parts_.automations, &Automations::LoginEnded, this, [this](const LoginEnd& end) {
    loginBroken_ = end.how == LoginEnd::How::kNotConnected;
    if (end.how == LoginEnd::How::kRefused) Stop();
  });
}

// ---- Made anew

void Reconnector::Reconnect(Told unsent) {
  ReconnectWith(parts_.connection.LoginAgain(), unsent);
}

void Reconnector::ReconnectWith(LoginOrder login, Told unsent) {
  unsent_ = unsent;
  plan_.SkipPause();
  Make(std::move(login));
}

void Reconnector::Make(LoginOrder login) {
  isMaking_ = true;
  parts_.connection.Reconnect(std::move(login));
  isMaking_ = false;
  Review();
}

void Reconnector::OnTick() {
  if (!parts_.isWanted()) return Stop();
  if (!plan_.TakeDue(parts_.clock())) return Review();
  unsent_ = Told::kNo;
  const LoginOrder login = parts_.connection.LoginAgain();
  Make(plan_.MayEndOtherLogins() ? login : WithoutEndingOthers(login));
}

void Reconnector::OnAttemptEnded() {
  if (!parts_.connection.IsConnected()) return;
  plan_.OnConnected(parts_.clock());
  const std::size_t lost = parts_.connection.TakeUnsentBefore();
  if (lost > 0 && unsent_ == Told::kNo) emit UnsentLost(lost);
}

// ---- Ended

void Reconnector::OnEnded(ConnectionEnd end) {
  const bool isLoginOn = loginBroken_ || parts_.automations.Current() == Activity::kLogin;
  // One that has succeeded before may be given again. Any other is the form's, which says what became of it.
  end.isLoginOpen = isLoginOn && parts_.connection.LoginKept() == nullptr;
  plan_.OnEnded(end, parts_.clock());
  if (!parts_.isWanted()) plan_.Stop();
  Review();
}

void Reconnector::Stop() {
  plan_.Stop();
  Review();
}

void Reconnector::Review() {
  const int seconds = SecondsLeft();
  if (seconds > 0 && !tick_.isActive()) tick_.start();
  if (seconds == 0) tick_.stop();
  if (std::exchange(secondsTold_, seconds) != seconds) emit Changed();
}

int Reconnector::SecondsLeft() const {
  const std::optional<std::int64_t> left = plan_.Left(parts_.clock());
  // The last moment counts, so that what is waited for shows until it comes.
  return left ? std::max(1, static_cast<int>((*left + kSecondMs - 1) / kSecondMs)) : 0;
}

}  // namespace quillet
