// Where the session's threads leave their messages for the view. Keeps only the newest screen, so that a
// burst of updates costs one repaint, and wakes the view with one queued event. Every screen passes here,
// also those that the view never sees, so here each is told whether a push prompt lies over an open article.
// Post comes from any thread; everything else belongs to the user-interface thread.
#pragma once

#include <memory>
#include <mutex>

#include <QEvent>
#include <QObject>

#include "core/notify_target.h"
#include "core/screen_snapshot.h"
#include "core/screen_watcher.h"

namespace quillet {

class MessageTarget : public NotifyTarget {
 public:
  ~MessageTarget() override = default;

  // The event that tells the receiver to call Take.
  static QEvent::Type WakeEvent();

  // `receiver` gets the wake events until it detaches, which it does before it dies.
  void Attach(QObject* receiver);
  // What has not been taken is freed; from now on messages are refused and stay with their posters.
  void Detach();

  bool Post(unsigned message, std::uintptr_t first, std::uintptr_t second) override;

  // Everything that arrived since the last Take.
  struct Messages {
    std::unique_ptr<ScreenSnapshot> screen;  // the newest, null when there is none
    // The newest reason other than kUpdated, so that no connect or disconnect is lost between updates.
    ScreenReason reason = ScreenReason::kUpdated;
    bool bell = false;
  };
  Messages Take();

 private:
  std::mutex lock_;
  QObject* receiver_ = nullptr;  // guarded by lock_, like the rest
  Messages waiting_;
  std::uint32_t lastFlags_ = 0;  // of the screen that came last
  bool wakeQueued_ = false;
};

}  // namespace quillet
