#include "core/send_queue.h"

#include <algorithm>

namespace quillet {

void SendQueue::Start() {
  std::lock_guard lock(lock_);
  started_ = true;
  changed_.notify_all();
}

std::size_t SendQueue::Close() {
  std::lock_guard lock(lock_);
  const std::size_t left = Size();
  closed_ = true;
  bytes_ = {};
  taken_ = 0;
  changed_.notify_all();
  return left;
}

bool SendQueue::Append(std::string_view bytes, Patience patience, const Accepted& accepted) {
  std::unique_lock lock(lock_);
  const auto mayAppend = [this] { return closed_ || !started_ || Size() == 0; };
  if (Size() <= chunk_) {
    if (patience)
      WaitPatiently(lock, *patience, mayAppend);
    else
      changed_.wait(lock, mayAppend);
  }
  if (closed_) return false;
  if (accepted) accepted();
  bytes_.append(bytes);
  changed_.notify_all();
  return true;
}

void SendQueue::WaitWritten(std::chrono::milliseconds patience) {
  std::unique_lock lock(lock_);
  WaitPatiently(lock, patience, [this] { return closed_ || (Size() == 0 && !writing_); });
}

std::string SendQueue::Take() {
  std::unique_lock lock(lock_);
  writing_ = false;
  stalled_ = false;
  changed_.notify_all();
  changed_.wait(lock, [this] { return closed_ || (started_ && Size() > 0); });
  if (closed_) return {};

  std::string chunk = bytes_.substr(taken_, chunk_);
  taken_ += chunk.size();
  // Cutting the front off at every chunk would move a long paste a thousand times.
  if (taken_ > bytes_.size() / 2) {
    bytes_.erase(0, taken_);
    taken_ = 0;
  }
  writing_ = true;
  changed_.notify_all();
  return chunk;
}

}  // namespace quillet
