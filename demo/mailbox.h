// What reaches one client's thread from elsewhere: bytes from its connection, messages of other users, the
// order to close. Written by its receive thread and by other clients' threads, read by its own.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::demo {

struct InstantMessage {
  std::string from;  // a user id
  std::string text;  // Big5
};

enum class CloseOrder { kNone, kConnectionLost, kKickedOut };

class Mailbox {
 public:
  using Clock = std::chrono::steady_clock;

  // Waits while the client has not taken what came before; returns false once the mailbox is closed.
  bool PutBytes(std::string_view bytes);
  void PutMessage(InstantMessage message);
  void RingBell();
  void Close(CloseOrder order);

  struct Contents {
    std::string bytes;
    std::vector<InstantMessage> messages;
    bool bell = false;
    CloseOrder close = CloseOrder::kNone;
  };
  // Takes everything; waits for something to come, at most until `deadline`.
  Contents Take(std::optional<Clock::time_point> deadline);

 private:
  // A client that types faster than its pages are drawn is held up by its own connection.
  static constexpr std::size_t kMostWaitingBytes = 1 << 16;

  std::mutex mutex_;
  std::condition_variable changed_;
  Contents waiting_;
};

}  // namespace quillet::demo
