#include "app/message_target.h"

#include <utility>

#include <QCoreApplication>

#include "bbs/push_over_reader.h"

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
    waiting_.screen.reset(reinterpret_cast<ScreenSnapshot*>(second));
    MarkPushOverReader(lastFlags_, *waiting_.screen);
    lastFlags_ = waiting_.screen->pageFlags;
    const auto reason = static_cast<ScreenReason>(first);
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

MessageTarget::Messages MessageTarget::Take() {
  const std::lock_guard guard(lock_);
  wakeQueued_ = false;
  return std::exchange(waiting_, {});
}

}  // namespace quillet
