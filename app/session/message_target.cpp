#include "app/session/message_target.h"

#include <utility>

#include <QCoreApplication>

#include "platform/clock.h"

namespace quillet {

QEvent::Type MessageTarget::WakeEvent() {
  static const int type = QEvent::registerEventType();
  return static_cast<QEvent::Type>(type);
}

void MessageTarget::Attach(QObject* receiver) {
  const std::lock_guard guard(lock_);
  receiver_ = receiver;
  wakeQueued_ = false;
}

void MessageTarget::Detach() {
  const std::lock_guard guard(lock_);
  receiver_ = nullptr;
  waiting_ = {};
}

bool MessageTarget::Post(unsigned message, std::uintptr_t first, std::uintptr_t second) {
  const std::lock_guard guard(lock_);
  if (receiver_ == nullptr) return false;
  if (message == kMessageScreen) {
    std::unique_ptr<ScreenSnapshot> screen(reinterpret_cast<ScreenSnapshot*>(second));
    const auto reason = static_cast<ScreenReason>(first);
    if (std::exchange(connection_, screen->connection) != screen->connection) waiting_ = {};
    witness_.Look(*screen, reason, SecondsNow());
    waiting_.screen = std::move(screen);
    if (reason != ScreenReason::kUpdated) waiting_.reason = reason;
  } else if (message == kMessageBell) {
    waiting_.bell = true;
  } else {
    return false;
  }
  // Under the lock: the receiver cannot detach and die between the test above and the posting.
  if (!std::exchange(wakeQueued_, true)) QCoreApplication::postEvent(receiver_, new QEvent(WakeEvent()));
  return true;
}

MessageTarget::Messages MessageTarget::Take(unsigned connection) {
  const std::lock_guard guard(lock_);
  wakeQueued_ = false;
  Posted posted = std::exchange(waiting_, {});
  if (connection != connection_) return {};
  if (!posted.screen) return {std::move(posted)};
  return {std::move(posted), witness_.Page(), witness_.Take()};
}

void MessageTarget::Tell(const std::function<void(ScreenWitness&)>& tell) {
  const std::lock_guard guard(lock_);
  tell(witness_);
}

}  // namespace quillet
