#include "core/session_link.h"

#include <cstdint>
#include <span>
#include <string>
#include <utility>

namespace quillet {

SessionLink::SessionLink(std::unique_ptr<Transport> way, std::size_t sendChunk)
    : queue(sendChunk), transport_(std::move(way)) {}

void SessionLink::RequestStop() {
  stop_.Set();
  std::lock_guard lock(transportLock_);
  if (transport_) transport_->Stop();
}

bool SessionLink::Queue(std::string_view bytes, SendQueue::Patience patience, Origin origin) {
  // Before they can be counted as unsent.
  return queue.Append(bytes, patience, [&] {
    if (origin == Origin::kTyped) typed_ += bytes.size();
  });
}

void SessionLink::Write(std::string_view bytes, Origin origin) {
  std::lock_guard lock(writeLock_);
  if (!transport_) return;
  if (origin == Origin::kTyped) typed_ += bytes.size();
  WriteAccepted(bytes);
}

void SessionLink::WriteAccepted(std::string_view bytes) {
  const std::size_t written =
      transport_->Write({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  unsent_ += bytes.size() - written;
}

void SessionLink::RunSender() {
  for (std::string chunk = queue.Take(); !chunk.empty(); chunk = queue.Take()) {
    std::lock_guard lock(writeLock_);
    WriteAccepted(chunk);
  }
}

void SessionLink::Settle() {
  std::lock_guard lock(settledLock_);
  settled_ = true;
  settledChanged_.notify_all();
}

bool SessionLink::WaitSettled(std::chrono::milliseconds patience) {
  std::unique_lock lock(settledLock_);
  return settledChanged_.wait_for(lock, patience, [this] { return settled_; });
}

void SessionLink::Finish() {
  unsent_ += queue.Close();
  transport_->Stop();
  if (sender.joinable()) sender.join();
  std::scoped_lock lock(writeLock_, transportLock_);
  transport_.reset();
}

}  // namespace quillet
