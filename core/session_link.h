// One connection attempt of a session and what belongs to it alone: its transport, its queue, its two threads
// and the way to stop them. A late writer of an ended connection keeps its link alive, so that it can never
// write into the next one. Used by TermSession; any thread unless a member says otherwise.
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>

#include "core/send_queue.h"
#include "core/transport/transport.h"
#include "platform/socket.h"

namespace quillet {

class SessionLink {
 public:
  SessionLink(std::unique_ptr<Transport> way, std::size_t sendChunk);

  // The user wants this connection to end. More than once is fine.
  void RequestStop();
  bool StopRequested() const { return stop_.IsSet(); }
  // Sleeps; false when the stop was requested.
  bool Pause(int milliseconds) const { return !stop_.WaitFor(milliseconds); }

  // Bytes that somebody typed or sent, or keys that the session opens with by itself.
  enum class Origin { kTyped, kOpening };
  // Queues the bytes; false when nothing is accepted any more.
  bool Queue(std::string_view bytes, SendQueue::Patience patience, Origin origin);
  // Blocks until the transport has taken the bytes or is gone; what it did not take counts as unsent. Nothing
  // once the link has ended.
  void Write(std::string_view bytes, Origin origin);
  // How many typed ones were not taken: never more than there were, whatever opening keys are lost as well.
  std::size_t Unsent() const { return std::min(unsent_.load(), typed_.load()); }

  // Sender thread: writes what the queue gives until the queue is closed.
  void RunSender();

  // The attempt has become a connection, or has failed.
  void Settle();
  // Waits so long for that; true when it has come.
  bool WaitSettled(std::chrono::milliseconds patience);

  // Receive thread. `Finish` ends every write, waits for the sender thread, counts what was left in the queue
  // and gives the transport back to the system.
  Transport& Way() { return *transport_; }
  void Finish();

  SendQueue queue;
  std::atomic<bool> connected{false};
  // Started and joined by the session; the receive thread joins `sender` in Finish.
  std::thread receiver;
  std::thread sender;

 private:
  void WriteAccepted(std::string_view bytes);

  StopSignal stop_;
  std::mutex writeLock_;  // one writer at a time; taken before transportLock_
  std::mutex transportLock_;
  std::unique_ptr<Transport> transport_;
  std::atomic<std::size_t> unsent_{0};
  std::atomic<std::size_t> typed_{0};
  std::mutex settledLock_;
  std::condition_variable settledChanged_;
  bool settled_ = false;
};

}  // namespace quillet
