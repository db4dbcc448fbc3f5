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

void SessionLink::Write(std::string_view bytes) {
  std::lock_guard lock(writeLock_);
  std::size_t written = 0;
  if (transport_)
    written = transport_->Write({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  unsent_ += bytes.size() - written;
}

void SessionLink::RunSender() {
  for (std::string chunk = queue.Take(); !chunk.empty(); chunk = queue.Take())
    Write(chunk);
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
