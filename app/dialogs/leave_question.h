// Stands before everything that gives up a login, or the texts that go with the program: asks, logs out
// properly if so wished, and then lets it happen. The view owns it; the frame and the login form come to it
// with what they are about to do. User-interface thread.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <QObject>
#include <QTimer>

#include "app/document/user_settings.h"
#include "app/messages/leave_messages.h"
#include "app/session/automations.h"
#include "app/session/connection.h"

namespace quillet {

enum class LeavePlan { kGo, kLogOutFirst, kAsk };

// What could be lost is asked about whatever the mode.
LeavePlan PlanLeaving(LeaveFor purpose, const LeaveFacts& facts, LeaveMode mode);

class LeaveQuestion : public QObject {
 public:
  // Longer than leaving a few nested pages takes over a slow line, short enough to wait for.
  static constexpr std::chrono::milliseconds kPatience{6000};

  // All outlive the object.
  struct Parts {
    const Connection& connection;
    Automations& automations;
    UserSettings& settings;
    QWidget& window;
  };
  // The question lies over `window`'s window; `facts` tells what the moment is like. A log-out that has not
  // come about after `patience` is waited for no longer.
  LeaveQuestion(const Parts& parts, std::function<LeaveFacts()> facts,
                std::chrono::milliseconds patience = kPatience);

  // Nothing stands in the way: nobody is logged in, or he is on his way out, and no text is lost that he has
  // not given up.
  bool IsFree(LeaveFor purpose) const;
  // Calls `then`: at once, or after a log-out, or not at all.
  void Before(LeaveFor purpose, std::function<void()> then);

 private:
  bool KeepsLogin() const;
  bool LosesDraft(LeaveFor purpose) const;
  // Nothing when he stays.
  std::optional<LeavePlan> Ask(LeaveFor purpose, const LeaveFacts& facts);
  void OnLogOutEnded(LogOutEnd end);
  void GoOn();

  const Parts parts_;
  std::function<LeaveFacts()> facts_;
  bool isAsking_ = false;
  bool givesUpDraft_ = false;
  std::function<void()> then_;  // after the log-out
  QTimer patience_;
};

}  // namespace quillet
