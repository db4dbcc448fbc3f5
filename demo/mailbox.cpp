#include "demo/mailbox.h"

#include <utility>

namespace quillet::demo {

bool Mailbox::PutBytes(std::string_view bytes) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] {
    return waiting_.bytes.size() < kMostWaitingBytes || waiting_.close != CloseOrder::kNone;
  });
  if (waiting_.close != CloseOrder::kNone) return false;
  waiting_.bytes += bytes;
  changed_.notify_all();
  return true;
}

void Mailbox::PutMessage(InstantMessage message) {
  const std::lock_guard lock(mutex_);
  waiting_.messages.push_back(std::move(message));
  changed_.notify_all();
}

void Mailbox::RingBell() {
  const std::lock_guard lock(mutex_);
  waiting_.bell = true;
  changed_.notify_all();
}

void Mailbox::Close(CloseOrder order) {
  const std::lock_guard lock(mutex_);
  if (waiting_.close == CloseOrder::kNone) waiting_.close = order;
  changed_.notify_all();
}

Mailbox::Contents Mailbox::Take(std::optional<Clock::time_point> deadline) {
  std::unique_lock lock(mutex_);
  const auto something = [this] {
    return !waiting_.bytes.empty() || !waiting_.messages.empty() || waiting_.bell ||
           waiting_.close != CloseOrder::kNone;
  };
  if (deadline)
    changed_.wait_until(lock, *deadline, something);
  else
    changed_.wait(lock, something);
  Contents taken = std::exchange(waiting_, {});
  waiting_.close = taken.close;  // stays closed
  changed_.notify_all();
  return taken;
}

}  // namespace quillet::demo
