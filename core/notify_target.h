// Where the session's threads leave messages for the window. The view's own target turns them into queued
// events; tests give one that records. Called from receive threads, so every implementation must be
// thread-safe.
#pragma once

#include <cstdint>

namespace quillet {

// Private window messages count from 0x8000, the first number that the system leaves to programs.
inline constexpr unsigned kMessageScreen = 0x8001;  // first: reason, second: an owned ScreenSnapshot*
inline constexpr unsigned kMessageBell = 32779;     // 0x800B; both parameters 0

class NotifyTarget {
 public:
  NotifyTarget() = default;
  NotifyTarget(const NotifyTarget&) = delete;
  NotifyTarget& operator=(const NotifyTarget&) = delete;
  virtual ~NotifyTarget() = default;

  // Queues a message without waiting for it to be handled. Returns false when it was not taken; the poster
  // then still owns whatever `second` points to.
  virtual bool Post(unsigned message, std::uintptr_t first, std::uintptr_t second) = 0;
};

}  // namespace quillet
