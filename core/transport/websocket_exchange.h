// What passes between the WebSocket library's threads and ours: messages, how the connection began and ended,
// what became of a send and of the goodbye. The library's side puts, the receive thread and the sender thread
// take; either may outlive the other, so both share it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

#include "core/transport/transport.h"

namespace quillet {

class WebSocketExchange {
 public:
  using Patience = std::chrono::milliseconds;

  // ---- The library's threads.
  void PutOpened();
  // In the order of arrival. Waits while much waits to be taken, so that a flood does not fill memory; drops
  // the bytes once stopped.
  void PutBytes(std::string bytes);
  // The peer has answered a ping, or sent one.
  void PutSignOfLife();
  // The first one counts. What has arrived before is still taken.
  void PutEnd(TransportEnd end);
  void PutSent(bool taken);
  // Connecting has come to its end, whichever.
  void PutConnectDone();
  void PutClosed();

  // ---- The receive thread.
  enum class Kind { kOpened, kBytes, kSignOfLife, kEnd, kStopped, kSilence };
  struct Item {
    Kind kind = Kind::kSilence;
    std::string bytes;
    TransportEnd end;
  };
  // The next thing that has come; kSilence when nothing does in time.
  Item Take(Patience patience);

  // ---- The sender thread: one send at a time.
  bool MaySend() const;  // opened, neither ended nor stopped
  // Whether the library has taken what it was given; false too when the connection ends first.
  bool WaitSent();

  // ---- Who takes the connection down.
  void WaitConnectDone();
  bool WaitClosed(Patience patience);

  // Nobody takes any more. Any thread, more than once.
  void Stop();
  bool Stopped() const;

 private:
  // As much as a fast peer sends while a screen is drawn.
  static constexpr std::size_t kMostWaiting = std::size_t{1} << 20;

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  bool opened_ = false;
  bool openedTaken_ = false;
  bool signOfLife_ = false;
  bool stopped_ = false;
  bool connectDone_ = false;
  bool closed_ = false;
  std::deque<std::string> messages_;
  std::size_t waiting_ = 0;  // bytes in messages_
  std::optional<TransportEnd> end_;
  std::optional<bool> sent_;
};

}  // namespace quillet
