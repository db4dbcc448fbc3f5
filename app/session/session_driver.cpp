#include "app/session/session_driver.h"

#include <utility>

#include "platform/clock.h"

namespace quillet {

SessionDriver::SessionDriver(TermSession& session, const SignalSettings& settings, Signaller& signaller,
                             Clock clock)
    : session_(session),
      settings_(settings),
      signaller_(signaller),
      clock_(clock ? std::move(clock) : Clock(SteadyMilliseconds)) {}

void SessionDriver::OnBell(bool workerRunning) {
  if (workerRunning) return;
  {
    const std::lock_guard guard(session_.keyLogLock);
    if (!session_.keyLog.empty() && clock_() - session_.lastSendTick < kTypingMs) return;
  }
  Signal(SignalSound::kBeep);
}

void SessionDriver::Signal(SignalSound sound) {
  if (settings_.flash && settings_.flash()) signaller_.Flash();
  if (!settings_.playSound) return;
  if (sound == SignalSound::kUpdated)
    signaller_.PlayUpdatedSound();
  else
    signaller_.Beep();
}

void SessionDriver::SetAttention(bool on, SignalSound sound) {
  if (on && !attention_) Signal(sound);
  attention_ = on;
  UpdateStatus();
}

void SessionDriver::SetListHit(bool on) {
  listHit_ = on;
  UpdateStatus();
}

void SessionDriver::UpdateStatus() {
  if (session_.state != SessionState::kConnected)
    status_ = ConnectionStatus::kNotConnected;
  else
    status_ = attention_ || listHit_ ? ConnectionStatus::kSomethingNew : ConnectionStatus::kQuiet;
}

void SessionDriver::KeepAwake(std::string_view key) {
  if (key.empty() || session_.state != SessionState::kConnected || !pendingText.empty()) return;
  if (clock_() - session_.lastSendTick < kIdleMs) return;
  {
    const std::lock_guard guard(session_.keyLogLock);
    if (!session_.keyLog.empty()) return;
  }
  session_.SendBytes(key);
  session_.idleMark = 1;
}

void SessionDriver::Tick() {
  const std::int64_t sinceSend = clock_() - session_.lastSendTick;
  if (!pendingText.empty() && (session_.idleMark == 0 || sinceSend > kTypingMs))
    session_.SendText(std::exchange(pendingText, {}));
  if (clock_() - session_.lastSendTick > kTypingMs) {
    const std::lock_guard guard(session_.keyLogLock);
    session_.keyLog.clear();
  }
}

}  // namespace quillet
