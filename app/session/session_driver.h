// What the document adds to its session: when a bell is worth a signal, the connection status that the window
// shows, and text that waits for a quiet moment. Knows no toolkit: the signal itself is the Signaller's.
// User-interface thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "bbs/answer_wait.h"
#include "core/term_session.h"

namespace quillet {

// Gives the signals; the window's own or a test's.
class Signaller {
 public:
  Signaller() = default;
  Signaller(const Signaller&) = delete;
  Signaller& operator=(const Signaller&) = delete;
  virtual ~Signaller() = default;
  virtual void Flash() = 0;             // caption and taskbar button, once
  virtual void Beep() = 0;              // the system's default sound
  virtual void PlayUpdatedSound() = 0;  // Data/PushUpdated.wav, without waiting for its end
};

// Settings, section "Basic".
struct SignalSettings {
  std::function<bool()> flash;  // "Flash": asked at each signal, so that a change takes effect at once
  bool playSound = true;        // "PlaySound"
};

enum class ConnectionStatus { kQuiet = 0, kSomethingNew = 1, kNotConnected = 2 };
enum class SignalSound { kBeep, kUpdated };

class SessionDriver {
 public:
  // Milliseconds of the clock that TermSession::lastSendTick counts.
  using Clock = std::function<std::int64_t()>;

  // All references outlive the driver. An empty clock is the steady clock.
  SessionDriver(TermSession& session, const SignalSettings& settings, Signaller& signaller, Clock clock = {});

  // How long after a key of the user a bell is only its echo, and when the key log is emptied.
  static constexpr std::int64_t kTypingMs = 3000;
  // How long the site hears nothing before KeepAwake speaks.
  static constexpr std::int64_t kIdleMs = 180'000;

  // A bell rang. `workerRunning`: an automation of the view is at work, whose bells mean nothing to the user.
  void OnBell(bool workerRunning);
  void Signal(SignalSound sound);

  // Something is new for the user, who is elsewhere, or not any more. Signals on the rising edge only.
  void SetAttention(bool on, SignalSound sound = SignalSound::kBeep);
  bool HasAttention() const { return attention_; }
  void SetListHit(bool on);
  bool ListHit() const { return listHit_; }
  void UpdateStatus();
  ConnectionStatus Status() const { return status_; }

  // The user has typed something to the site; `received` is the session's count from before it went out, as
  // the answer may be here already. Whether that has been answered is told until a connection begins.
  void NoteTyped(unsigned received) { answers_.OnSent(clock_(), received); }
  void ForgetTyped() { answers_.Forget(); }
  AnswerWait::State Answer() const { return answers_.At(clock_(), session_.receivedCount); }

  // Sent by Tick when the session is not idling, or more than kTypingMs after the last send.
  std::u16string pendingText;
  // The view's periodic timer.
  void Tick();
  // With it: sends the site `key`, unless it is empty, once nothing has been sent for kIdleMs, so that it
  // does not take its user for gone. A text that waits is then still sent apart from the key.
  void KeepAwake(std::string_view key);

 private:
  TermSession& session_;
  const SignalSettings& settings_;
  Signaller& signaller_;
  Clock clock_;
  AnswerWait answers_;
  bool attention_ = false;
  bool listHit_ = false;
  ConnectionStatus status_ = ConnectionStatus::kNotConnected;
};

}  // namespace quillet
