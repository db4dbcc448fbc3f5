// Where the session's threads leave their messages for the view. Keeps only the newest screen, so that a
// burst of updates costs one repaint, and wakes the view with one queued event. Every screen passes here,
// also those that the view never sees, so here is where the witness looks at each; what stands on the newest
// and what all of them have told goes with it. Post comes from any thread; everything else belongs to the
// user-interface thread.
#pragma once

#include <functional>
#include <memory>
#include <mutex>

#include <QEvent>
#include <QObject>

#include "app/session/screen_witness.h"
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

  // Everything that arrived since the last Take from the connection of that TermSession::connectionNumber.
  // What is left of an older one is dropped: it is no news of the site that shows now.
  struct Posted {
    std::unique_ptr<ScreenSnapshot> screen;  // the newest, null when there is none
    // The newest reason other than kUpdated, so that no connect or disconnect is lost between updates.
    ScreenReason reason = ScreenReason::kUpdated;
    bool bell = false;
  };
  struct Messages : Posted {
    // With the screen: what stands on it, and what those up to it have told.
    UnderstoodPage page{};
    Sightings seen{};
  };
  Messages Take(unsigned connection);

  // Tells the witness what no screen does.
  void Tell(const std::function<void(ScreenWitness&)>& tell);

 private:
  std::mutex lock_;
  QObject* receiver_ = nullptr;  // guarded by lock_, like the rest
  Posted waiting_;
  ScreenWitness witness_;
  std::uint32_t connection_ = 0;  // of the screen that came last
  bool wakeQueued_ = false;
};

}  // namespace quillet
