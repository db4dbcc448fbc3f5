// A site that does what a test says while it goes on: connects or keeps the caller waiting, delivers bytes,
// takes or stalls what is written, ends when told.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

#include "tests/support/scripted_transport.h"

namespace quillet {

class Script : public TransportScript {
 public:
  Script() {
    run = [this](TransportEvents& events, const StopSignal& stop) {
      while (!connects_)
        if (HasEnded() || stop.WaitFor(1)) return TransportEnd{end_, {}};
      if (HasEnded()) return TransportEnd{end_, {}};
      events.OnConnected({});
      while (true) {
        const std::string bytes = Undelivered();
        if (!bytes.empty())
          events.OnReceived({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
        else if (HasEnded() || stop.WaitFor(1))
          return TransportEnd{end_, {}};
      }
    };
    write = [this](std::span<const std::uint8_t> bytes, const StopSignal& stop) {
      while (stalled_)
        if (HasEnded() || stop.WaitFor(1)) return std::size_t{0};
      return bytes.size();
    };
  }

  void NeverConnect() { connects_ = false; }
  void Deliver(std::string_view bytes) {
    const std::lock_guard guard(lock);
    toDeliver_ += bytes;
  }
  void StallWrites() { stalled_ = true; }
  void End(EndReason reason) { end_ = reason; }

 private:
  bool HasEnded() const { return end_ != EndReason::kNone; }
  std::string Undelivered() {
    const std::lock_guard guard(lock);
    return std::exchange(toDeliver_, {});
  }

  std::atomic<bool> connects_{true};
  std::atomic<bool> stalled_{false};
  std::atomic<EndReason> end_{EndReason::kNone};
  std::string toDeliver_;  // guarded by lock
};

}  // namespace quillet
