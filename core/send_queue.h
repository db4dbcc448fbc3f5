// The bytes that wait for a session's sender thread. Any thread appends; one thread takes. The queue belongs
// to one connection: it opens with the attempt, drains while connected, and tells at the end what was left.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

class SendQueue {
 public:
  // How long an appender waits for others' bytes to go out first; none means until drained or closed.
  // Patience that has run out is not spent again before the peer has taken something: keys typed at a stalled
  // peer cost the window one wait, not one each.
  using Patience = std::optional<std::chrono::milliseconds>;

  // A queue that holds more than `chunk` bytes is a long paste: appenders no longer wait for it, and Take
  // gives at most so many bytes.
  explicit SendQueue(std::size_t chunk) : chunk_(chunk) {}

  // From now on Take gives bytes and appenders wait.
  void Start();
  // Ends every wait, drops what is queued and returns how much that was. Nothing is accepted any more.
  std::size_t Close();

  // Called once the bytes are sure to be taken and before anybody can take them, or count what is left.
  using Accepted = std::function<void()>;
  // False when the queue is closed.
  bool Append(std::string_view bytes, Patience patience, const Accepted& accepted = {});
  // Waits until everything has been taken and written, the queue is closed, or patience ends.
  void WaitWritten(std::chrono::milliseconds patience);

  // Waits for bytes; empty when the queue is closed. The call after it says that they are written.
  std::string Take();

 private:
  std::size_t Size() const { return bytes_.size() - taken_; }
  template <typename Condition>
  void WaitPatiently(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds patience,
                     Condition condition) {
    if (!stalled_) stalled_ = !changed_.wait_for(lock, patience, condition);
  }

  const std::size_t chunk_;
  std::mutex lock_;
  std::condition_variable changed_;
  std::string bytes_;
  std::size_t taken_ = 0;  // of bytes_, not yet cut off its front
  bool started_ = false;
  bool closed_ = false;
  bool writing_ = false;
  bool stalled_ = false;  // somebody's patience ran out, and nothing was written since
};

}  // namespace quillet
