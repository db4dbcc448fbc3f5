// Makes a lost connection anew: when the user says so, and by itself after a pause where he has asked for
// that. Either way the site is entered with the login that was given for it while the program runs. The
// document owns it. User-interface thread.
#pragma once

#include <cstddef>
#include <functional>

#include <QObject>
#include <QTimer>

#include "app/session/automations.h"
#include "app/session/connection.h"
#include "app/session/reconnect_plan.h"
#include "app/session/session_driver.h"

namespace quillet {

class Reconnector : public QObject {
  Q_OBJECT

 public:
  struct Parts {
    Connection& connection;
    const Automations& automations;
    std::function<bool()> isWanted;  // by itself: asked at each moment at which it matters
    SessionDriver::Clock clock{};    // empty: the steady clock
  };
  // What the parts refer to outlives the object.
  explicit Reconnector(Parts parts);

  enum class Told {
    kYes,  // the user has read on the panel what was not sent
    kNo
  };
  // The user wants it, now.
  void Reconnect(Told unsent);
  // The same, with a login that is to be used whatever has been forgotten meanwhile; null: with none.
  void ReconnectWith(LoginOrder login, Told unsent);
  // The user does not want it by itself, or is about to go elsewhere.
  void Stop();

  // Until it is made anew by itself, rounded up; 0: it is not.
  int SecondsLeft() const;

 signals:
  // SecondsLeft is different from before.
  void Changed();
  // The connection is there again, and so many bytes that were typed before it was lost have not been sent,
  // which nobody has told the user yet.
  void UnsentLost(std::size_t bytes);

 private:
  void Make(LoginOrder login);
  void OnTick();
  void OnAttemptEnded();
  void OnEnded(ConnectionEnd end);
  // Follows the plan.
  void Review();

  const Parts parts_;
  ReconnectPlan plan_;
  QTimer tick_;
  Told unsent_ = Told::kNo;
  bool isMaking_ = false;     // what begins now is ours
  bool loginBroken_ = false;  // of this connection
  int secondsTold_ = 0;
};

}  // namespace quillet
